#include "app/documents/manual.h"

#include "app/documents/roff.h"
#include "files/disk.h"
#include "files/whole_file.h"
#include "formats/sentences.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace App {
namespace {

const auto all = [](const auto*) { return true; };

bool isShown(const CLI::Option* option) { return !option->get_group().empty(); }

// "kiln-watermark" for the command of that name.
std::string pageName(const CLI::App& kiln, const CLI::App& command) {
  return &kiln == &command ? kiln.get_name() : kiln.get_name() + '-' + command.get_name();
}

// The name in front of the value's, which is empty for a flag: "--set", or "-h, --help".
std::string namesOf(const CLI::Option& option) {
  std::string names;
  for (const std::string& name : option.get_snames()) names += (names.empty() ? "-" : ", -") + name;
  for (const std::string& name : option.get_lnames()) names += (names.empty() ? "--" : ", --") + name;
  return names;
}

// A description, which has no full stop of its own but in kiln's.
std::string inSentence(const std::string& description) {
  const bool isEnded = description.ends_with('.') || description.ends_with("。");
  return Roff::text(isEnded ? description : Formats::sentence("{1}.", description));
}

void synopsis(Roff& roff, const std::string& words, const CLI::App& command) {
  std::string rest = " [" + Formats::sentence("OPTIONS") + "]";
  for (const CLI::Option* option : command.get_options(isShown)) {
    if (!option->get_positional()) continue;
    const std::string name = option->get_name();
    rest += option->get_required() ? ' ' + name : " [" + name + ']';
  }
  if (!command.get_subcommands(all).empty()) {
    const std::string name = Formats::sentence("SUBCOMMAND");
    rest += command.get_require_subcommand_min() > 0 ? ' ' + name : " [" + name + ']';
  }
  roff.line(Roff::bold(words) + Roff::text(rest));
}

// Positional arguments, or options.
void optionList(Roff& roff, const CLI::App& command, bool isPositional) {
  const auto formatter = command.get_formatter();
  const auto* const style = dynamic_cast<const CLI::Formatter*>(formatter.get());
  for (const CLI::Option* option : command.get_options(isShown)) {
    if (option->get_positional() != isPositional) continue;
    const std::string value = style == nullptr ? "" : style->make_option_opts(option);
    const std::string name = isPositional ? option->get_name() : namesOf(*option);
    roff.item(Roff::bold(name) + Roff::text(value),
              style == nullptr ? option->get_description() : style->make_option_desc(option));
  }
}

bool hasOptions(const CLI::App& command, bool isPositional) {
  for (const CLI::Option* option : command.get_options(isShown))
    if (option->get_positional() == isPositional) return true;
  return false;
}

// What stands below the options in the help: paragraphs, some of which begin with the words of a section.
class Footer {
 public:
  explicit Footer(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
      const std::size_t end = std::min(text.find('\n', start), text.size());
      const std::string line = text.substr(start, end - start);
      if (line.empty() && !lines.empty()) paragraphs.push_back(std::exchange(lines, {}));
      if (!line.empty()) lines.push_back(line);
      start = end + 1;
    }
    if (!lines.empty()) paragraphs.push_back(lines);
  }

  void writeDescription(Roff& roff) const {
    for (const auto& paragraph : paragraphs) {
      if (paragraph.front().starts_with(examples()) || paragraph.front().starts_with(status())) continue;
      roff.paragraph();
      write(roff, paragraph);
    }
  }

  void writeSections(Roff& roff) const {
    for (const std::string& start : {examples(), status()})
      for (const auto& paragraph : paragraphs) {
        if (!paragraph.front().starts_with(start)) continue;
        roff.section(withoutColon(start));
        std::vector<std::string> rest = paragraph;
        rest.front().erase(0, start.size());
        if (rest.front().empty()) rest.erase(rest.begin());
        write(roff, rest);
      }
  }

 private:
  static std::string examples() { return Formats::sentence("Examples:"); }
  static std::string status() { return Formats::sentence("Exit status:"); }

  static std::string_view withoutColon(std::string_view words) {
    for (const std::string_view end : {":", "：", " "})
      if (words.ends_with(end)) words.remove_suffix(end.size());
    return words;
  }

  // Indented lines stay as they are.
  static void write(Roff& roff, const std::vector<std::string>& lines) {
    bool isAsItIs = false;
    for (const std::string& line : lines) {
      const bool isIndented = line.starts_with("  ");
      if (isIndented && !isAsItIs) roff.beginLines();
      if (!isIndented && isAsItIs) roff.endLines();
      isAsItIs = isIndented;
      roff.line(Roff::text(line.substr(line.find_first_not_of(' '))));
    }
    if (isAsItIs) roff.endLines();
  }

  std::vector<std::vector<std::string>> paragraphs;
};

void commandList(Roff& roff, const CLI::App& kiln) {
  for (const CLI::App* command : kiln.get_subcommands(all))
    roff.item(Roff::bold(command->get_name()), command->get_description());
}

// The parts of a command, `kiln watermark add` for example, each with its options.
void partList(Roff& roff, const CLI::App& kiln, const CLI::App& command) {
  for (const CLI::App* part : command.get_subcommands(all)) {
    const std::string words = kiln.get_name() + ' ' + command.get_name() + ' ' + part->get_name();
    roff.subsection(words);
    synopsis(roff, words, *part);
    roff.paragraph();
    roff.line(inSentence(part->get_description()));
    optionList(roff, *part, true);
    optionList(roff, *part, false);
  }
}

void seeAlso(Roff& roff, const CLI::App& kiln, const CLI::App& command) {
  roff.section(Formats::sentence("SEE ALSO"));
  std::string pages;
  const auto add = [&pages](const std::string& name) {
    pages += (pages.empty() ? "" : ", ") + Roff::bold(name) + Roff::text("(1)");
  };
  if (&kiln != &command) add(kiln.get_name());
  if (&kiln == &command)
    for (const CLI::App* each : kiln.get_subcommands(all)) add(pageName(kiln, *each));
  roff.line(pages);
}

std::string page(const CLI::App& kiln, const CLI::App& command) {
  const bool isKiln = &kiln == &command;
  const Footer footer(command.get_footer());
  Roff roff(pageName(kiln, command), KILN_RELEASED, "kiln " KILN_VERSION);
  roff.section(Formats::sentence("NAME"));
  roff.line(Roff::text(pageName(kiln, command)) + " \\- " + Roff::text(command.get_description()));
  roff.section(Formats::sentence("SYNOPSIS"));
  synopsis(roff, isKiln ? kiln.get_name() : kiln.get_name() + ' ' + command.get_name(), command);
  roff.section(Formats::sentence("DESCRIPTION"));
  roff.line(inSentence(command.get_description()));
  footer.writeDescription(roff);
  if (hasOptions(command, true)) {
    roff.section(Formats::sentence("ARGUMENTS"));
    optionList(roff, command, true);
  }
  roff.section(Formats::sentence("OPTIONS"));
  optionList(roff, command, false);
  if (!command.get_subcommands(all).empty()) {
    roff.section(Formats::sentence("COMMANDS"));
    isKiln ? commandList(roff, kiln) : partList(roff, kiln, command);
  }
  footer.writeSections(roff);
  seeAlso(roff, kiln, command);
  return roff.finished();
}

}  // namespace

void writeManual(const CLI::App& kiln, const std::filesystem::path& folder) {
  std::vector<const CLI::App*> commands = kiln.get_subcommands(all);
  commands.push_back(&kiln);
  for (const CLI::App* command : commands)
    Files::replaceWhole(Files::realDisk(), folder / (pageName(kiln, *command) + ".1"), page(kiln, *command));
}

}  // namespace App
