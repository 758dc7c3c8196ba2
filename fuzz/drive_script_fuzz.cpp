// Any bytes as a script for the preferences with the built plug-in: words come apart as they were put together, every
// command has one answer, a JSON object, and nothing is written outside of the home.
//
// Commands whose words could lead out of the process's own folder, in which it runs, are left out. So paths on the
// command line must be absolute.
#include "fuzz/fuzzing.h"
#include "host/library.h"
#include "host/object.h"
#include "script/run.h"
#include "script/words.h"

#include <nlohmann/json.hpp>

#include <sstream>
#include <stdexcept>
#include <vector>

namespace {

using Fuzzing::demand;

std::string quoted(const std::string& word) {
  std::string result = "\"";
  for (const char unit : word) {
    if (unit == '"' || unit == '\\') result += '\\';
    result += unit;
  }
  return result + '"';
}

// Whether the line may be run.
bool isHarmless(const std::string& line) {
  try {
    const auto words = Script::splitWords(line);
    std::string again;
    for (const std::string& word : words) again += quoted(word) + ' ';
    demand(Script::splitWords(again) == words);
    return std::none_of(words.begin(), words.end(), [](const std::string& word) {
      return word.find('/') != word.npos || word.find("..") != word.npos;
    });
  } catch (const std::runtime_error&) {
    return true;  // which is answered
  }
}

Script::Request request() {
  static Fuzzing::GuardedDisk disk;
  Script::Request made;
  made.preferences.plugin = PLUGIN_FILE;
  made.preferences.resources = RESOURCES_FOLDER;
  made.preferences.disk = &disk;
  made.preferences.fonts = [] { return std::vector<std::u16string>{u"Arial", u"DejaVu Sans"}; };
  return made;
}

// Whether the answer says that all is well.
bool isOk(const std::string& answer) {
  // The library takes no unpaired surrogates.
  if (answer.find("\\ud") != answer.npos) return answer.starts_with("{\"ok\":true");
  const auto json = nlohmann::json::parse(answer);
  const bool ok = json.at("ok").get<bool>();
  demand(ok || !json.at("error").get<std::string>().empty());
  return ok;
}

void check(std::string_view bytes) {
  constexpr std::size_t mostLines = 25;
  std::istringstream lines{std::string(bytes)};
  std::string script;
  std::size_t commands = 0;
  for (std::string line; commands < mostLines && std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!isHarmless(line)) continue;
    script += line + "\n";
    if (!Script::isComment(line)) ++commands;
  }
  std::istringstream input(script);
  std::ostringstream output;
  const int status = Script::run(request(), input, output);

  std::istringstream answers(output.str());
  std::size_t count = 0;
  bool allOk = true;
  for (std::string answer; std::getline(answers, answer); ++count) allOk = isOk(answer) && allOk;
  demand(count == commands && (status == 0) == allOk);
  demand(std::filesystem::is_empty(Fuzzing::folder() / "tmp"));
}

}  // namespace

// The plug-in stays loaded, since the fuzzer keeps the counters of its code.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  static const auto& library = *new auto(Refhost::make<Refhost::Library>(std::filesystem::path(PLUGIN_FILE)));
  static_cast<void>(library);
  std::filesystem::current_path(Fuzzing::folder());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check(Fuzzing::text(data, size));
  return 0;
}
