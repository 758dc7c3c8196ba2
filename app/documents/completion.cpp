#include "app/documents/completion.h"

#include "app/documents/values.h"
#include "formats/printable.h"

#include <algorithm>
#include <stdexcept>

namespace App {
namespace {

bool isShown(const CLI::Option* option) { return !option->get_group().empty(); }

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

const CLI::App* partCalled(const CLI::App& command, const std::string& word) {
  const auto found = command.get_subcommands([&](const CLI::App* each) { return each->get_name() == word; });
  return found.empty() ? nullptr : found.front();
}

const CLI::Option* optionCalled(const CLI::App& command, const std::string& word) {
  for (const CLI::Option* option : command.get_options(isShown))
    if (!option->get_positional() && option->check_name(word)) return option;
  return nullptr;
}

// Where the words in front of the last one have led.
struct Place {
  const CLI::App* command;
  const CLI::Option* waiting = nullptr;  // the option whose value is next
  std::size_t positionals = 0;
  GivenOptions given;

  explicit Place(const CLI::App& kiln) : command(&kiln) {}

  void take(const std::string& word) {
    if (waiting != nullptr) {
      given.emplace_back(waiting->get_name(), word);
      waiting = nullptr;
    } else if (word.starts_with('-') && word != "-") {
      const std::size_t equals = std::min(word.find('='), word.size());
      const CLI::Option* const option = optionCalled(*command, word.substr(0, equals));
      if (option == nullptr || !takesValue(*option)) return;
      if (equals == word.size())
        waiting = option;
      else
        given.emplace_back(option->get_name(), word.substr(equals + 1));
    } else if (const CLI::App* const part = partCalled(*command, word); part != nullptr && positionals == 0) {
      command = part;
    } else {
      ++positionals;
    }
  }
};

class Answer {
 public:
  void add(const std::string& start, const Values& values) {
    for (const Value& value : values.words) add(start + value.word, value.meaning);
    if (values.files == Values::Files::folders) files = ":folders";
    if (values.files != Values::Files::some) return;
    files = ":files";
    for (const std::string& ending : values.endings) files += ' ' + ending;
  }

  void add(const std::string& word, const std::string& meaning) {
    // A name that cannot stand on a line is not offered.
    if (Formats::printable(word) != word) return;
    lines += word + (meaning.empty() ? "" : '\t' + Formats::printable(meaning)) + '\n';
  }

  std::string text() const { return files + '\n' + lines; }

 private:
  std::string files = ":";
  std::string lines;
};

void addOptions(Answer& answer, const CLI::App& command) {
  for (const CLI::Option* option : command.get_options(isShown))
    for (const std::string& name : option->get_lnames()) answer.add("--" + name, option->get_description());
}

void addCommands(Answer& answer, const CLI::App& command) {
  for (const CLI::App* part : command.get_subcommands([](const CLI::App*) { return true; }))
    answer.add(part->get_name(), part->get_description());
}

void addPositional(Answer& answer, const CLI::App& kiln, const Place& place) {
  std::size_t index = 0;
  for (const CLI::Option* option : place.command->get_options(isShown)) {
    if (!option->get_positional() || index++ != place.positionals) continue;
    if (option->get_name() == "COMMAND")
      addCommands(answer, kiln);
    else
      answer.add("", valuesOf(*place.command, *option, place.given));
  }
}

}  // namespace

std::string completions(const CLI::App& kiln, const std::vector<std::string>& words) {
  const std::string last = words.empty() ? "" : words.back();
  Place place(kiln);
  for (std::size_t i = 0; i + 1 < words.size(); ++i) place.take(words[i]);
  const std::size_t equals = last.starts_with("--") ? last.find('=') : last.npos;
  Answer answer;
  if (place.waiting != nullptr) {
    answer.add("", valuesOf(*place.command, *place.waiting, place.given));
  } else if (equals != last.npos) {
    const CLI::Option* const option = optionCalled(*place.command, last.substr(0, equals));
    if (option != nullptr && takesValue(*option))
      answer.add(last.substr(0, equals + 1), valuesOf(*place.command, *option, place.given));
  } else if (last.starts_with('-')) {
    addOptions(answer, *place.command);
  } else {
    if (place.positionals == 0) addCommands(answer, *place.command);
    addPositional(answer, kiln, place);
  }
  return answer.text();
}

}  // namespace App
