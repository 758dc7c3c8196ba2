#include "script/replay.h"

#include "files/temporary_folder.h"
#include "formats/text.h"
#include "host/home.h"
#include "script/portable_text.h"
#include "script/session.h"
#include "script/words.h"

#include <algorithm>
#include <array>
#include <istream>
#include <iterator>
#include <ostream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace Script {
namespace {

using nlohmann::json;

[[noreturn]] void refuse(const RecordedScript& script, std::size_t line, const std::string& problem) {
  throw std::runtime_error(script.name + ':' + std::to_string(line) + ": " + problem);
}

void takeFact(RecordedScript& script, std::size_t line, const std::string& words) {
  std::vector<std::string> parts;
  try {
    parts = splitWords(words);
  } catch (const std::runtime_error& error) {
    refuse(script, line, error.what());
  }
  if (parts.empty() || parts.size() > 2) refuse(script, line, "A fact is a name and a value.");
  script.facts.push_back({parts[0], parts.size() > 1 ? parts[1] : ""});
}

// The JSON text with U+FFFD for each unpaired surrogate, which the library's reader rejects.
std::string withoutHalves(const std::string& text) {
  static const std::regex escape(
      "(\\\\u[dD][89abAB][0-9a-fA-F]{2}\\\\u[dD][c-fC-F][0-9a-fA-F]{2})|\\\\u[dD][89a-fA-F][0-9a-fA-F]{2}");
  std::string result;
  auto from = text.cbegin();
  for (std::sregex_iterator each(text.begin(), text.end(), escape), end; each != end; ++each) {
    result.append(from, (*each)[0].first);
    result += (*each)[1].matched ? each->str() : "\\ufffd";
    from = (*each)[0].second;
  }
  return result.append(from, text.cend());
}

void takeAnswer(RecordedScript& script, std::size_t line, const std::string& text) {
  if (script.steps.empty() || script.steps.back().expected) refuse(script, line, "The answer belongs to no command.");
  json answer = json::parse(withoutHalves(text), nullptr, false);
  if (!answer.is_object()) refuse(script, line, "The answer is not a JSON object.");
  script.steps.back().expected = std::move(answer);
}

// Members that tell what became of a command: they are absent otherwise.
constexpr std::array<const char*, 4> outcome = {"ok", "error", "modal", "vetoed"};

// The members to compare: those that tell what became of the command, and others that the recording has.
json comparable(const json& got, const json& expected) {
  json members = json::object();
  for (const auto& [name, value] : got.items())
    if (expected.contains(name) || std::ranges::find(outcome, name) != outcome.end()) members[name] = value;
  return members;
}

// Without the sizes of written files in traces: made-up names in them have different lengths.
json withoutSizes(json value) {
  if (value.is_object() && value.contains("op") && value["op"] == "write") value.erase("bytes");
  if (value.is_structured())
    for (auto& element : value) element = withoutSizes(element);
  return value;
}

class Comparison {
 public:
  Comparison(const RecordedScript& recordedScript, std::filesystem::path replayHome, std::ostream& toTell)
      : script(recordedScript),
        home(std::move(replayHome)),
        out(toTell) {}

  // Compares the next answer; false when it differs.
  bool take(const Json& answer) {
    const Step& step = script.steps.at(next++);
    if (!step.expected) return true;
    ++compared;
    const json got = portable(comparable(answer, *step.expected), gotNames);
    const json expected = portable(*step.expected, expectedNames);
    isEqual = got == expected;
    if (isEqual) return true;
    out << script.name << ':' << step.line << ": " << step.command << "\nexpected: " << toLine(expected)
        << "\ngot:      " << toLine(got) << '\n';
    return false;
  }

  bool areAllEqual() const { return isEqual; }
  std::size_t count() const { return compared; }

 private:
  json portable(json value, MadeNames& names) const {
    return changeTexts(withoutSizes(std::move(value)), [&](const std::string& text) {
      return names.numbered(withoutHome(Formats::toValidUtf8(Formats::toUtf16(text)), home));
    });
  }

  const RecordedScript& script;
  std::filesystem::path home;
  std::ostream& out;
  MadeNames gotNames;
  MadeNames expectedNames;
  std::size_t next = 0;
  std::size_t compared = 0;
  bool isEqual = true;
};

}  // namespace

std::vector<std::string> RecordedScript::valuesOf(const std::string& fact) const {
  std::vector<std::string> values;
  for (const auto& [factName, value] : facts)
    if (factName == fact) values.push_back(value);
  return values;
}

RecordedScript readRecording(std::istream& lines, const std::string& name) {
  RecordedScript script{name, {}, {}, {}};
  std::size_t number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (line.ends_with('\r')) line.pop_back();
    script.text += line + '\n';
    if (line.starts_with(factMark))
      takeFact(script, number, line.substr(factMark.size()));
    else if (line.starts_with(answerMark))
      takeAnswer(script, number, line.substr(answerMark.size()));
    else if (!isComment(line))
      script.steps.push_back({number, line});
  }
  if (lines.bad()) throw std::runtime_error(name + " cannot be read to its end.");
  if (std::ranges::none_of(script.steps, [](const Step& step) { return step.expected.has_value(); }))
    throw std::runtime_error(name +
                             " has no answers to compare with; recordings have them in lines that begin with \"" +
                             std::string(answerMark) + "\".");
  return script;
}

int replay(const Request& request, const RecordedScript& script, std::ostream& out) {
  Request own = request;
  std::optional<Files::TemporaryFolder> temporaryHome;
  std::filesystem::path& home = own.preferences.home;
  const bool isHomeGiven = !home.empty();
  if (!isHomeGiven) home = temporaryHome.emplace().path();
  home = Refhost::homePath(home);
  for (auto& [name, value] : own.preferences.properties)
    value = Formats::toUtf16(withHome(Formats::toUtf8(value), home));

  Comparison comparison(script, home, out);
  std::istringstream commands(script.text);
  Session(own, commands, [&comparison](const Json& answer) { return comparison.take(answer); }).run();
  if (comparison.areAllEqual()) {
    out << (comparison.count() == 1 ? "The answer is" : "All " + std::to_string(comparison.count()) + " answers are")
        << " as recorded.\n";
    return 0;
  }
  const auto held = script.valuesOf("home-held");
  if (!isHomeGiven && !held.empty())
    out << "The home of the recording had " << held.front() << ": replay it with a copy of that home, by --home.\n";
  return 1;
}

}  // namespace Script
