// The format of a catalogue of translated sentences: a PO file, as translators' tools read and write it.
//
//   # A comment.
//   msgid "There is no library {1}."
//   msgstr ""
//   "Es gibt keine "
//   "Bibliothek {1}."
//
// The entry with the empty msgid is the head, which says nothing here. Contexts, plurals and obsolete entries ("#~")
// are not used.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace Formats {

// English templates and their translations.
using Catalogue = std::map<std::string, std::string, std::less<>>;

// The number of the placeholder that the text begins with, 1 for "{1}", from 1 to 9; 0 for none.
constexpr std::size_t placeholderAt(std::string_view text) {
  if (text.size() < 3 || text[0] != '{' || text[1] < '1' || text[1] > '9' || text[2] != '}') return 0;
  return static_cast<std::size_t>(text[1] - '0');
}

inline std::set<std::size_t> placeholdersOf(std::string_view text) {
  std::set<std::size_t> numbers;
  for (; !text.empty(); text.remove_prefix(1))
    if (const std::size_t number = placeholderAt(text); number != 0) numbers.insert(number);
  return numbers;
}

// Reads one catalogue.
class CatalogueReader {
 public:
  // Nothing for a file that is not of the format, has a template twice, or a translation with other placeholders.
  static std::optional<Catalogue> read(std::string_view file) {
    CatalogueReader reader;
    while (!file.empty()) {
      const std::string_view line = file.substr(0, file.find('\n'));
      file.remove_prefix(line.size() < file.size() ? line.size() + 1 : line.size());
      if (!reader.take(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line)) return std::nullopt;
    }
    if (!reader.endEntry()) return std::nullopt;
    return std::move(reader.catalogue);
  }

 private:
  static constexpr std::string_view idWord = "msgid ";
  static constexpr std::string_view textWord = "msgstr ";

  bool take(std::string_view line) {
    if (line.empty() || line.front() == '#') return true;
    if (line.starts_with(idWord)) {
      if (!endEntry()) return false;
      return append(id.emplace(), line.substr(idWord.size()));
    }
    if (line.starts_with(textWord)) return id && !text && append(text.emplace(), line.substr(textWord.size()));
    if (!id) return false;
    return append(text ? *text : *id, line);
  }

  // Appends what stands in quotation marks.
  static bool append(std::string& target, std::string_view quoted) {
    if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"') return false;
    quoted = quoted.substr(1, quoted.size() - 2);
    for (std::size_t i = 0; i < quoted.size(); ++i) {
      if (quoted[i] == '"') return false;
      if (quoted[i] != '\\') {
        target += quoted[i];
        continue;
      }
      if (++i == quoted.size()) return false;
      if (quoted[i] != '"' && quoted[i] != '\\' && quoted[i] != 'n') return false;
      target += quoted[i] == 'n' ? '\n' : quoted[i];
    }
    return true;
  }

  bool endEntry() {
    if (!id) return true;
    if (!text) return false;
    const bool isHead = id->empty();
    if (!isHead && !text->empty() && placeholdersOf(*id) != placeholdersOf(*text)) return false;
    const bool isNew = isHead || text->empty() || catalogue.emplace(*id, *text).second;
    id.reset();
    text.reset();
    return isNew;
  }

  Catalogue catalogue;
  std::optional<std::string> id;
  std::optional<std::string> text;
};

}  // namespace Formats
