// The scripts in scripts/: a line "# -> {...}" after a command lists required members of its answer; without such a
// line the answer must be "ok". For traces these are the preview events.
#include "script/run.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>
#include <string>

namespace {

using nlohmann::json;

constexpr std::string_view mark = "# -> ";

struct Step {
  std::string command;
  json expected;  // the members that the answer must have
};

std::vector<Step> stepsOf(const std::string& name) {
  std::ifstream script(std::string(SOURCE_FOLDER) + "/tests/editor/scripts/" + name + ".drive");
  std::vector<Step> steps;
  for (std::string line; std::getline(script, line);) {
    if (line.starts_with(mark))
      steps.back().expected.update(json::parse(line.substr(mark.size())));
    else if (!line.empty() && line.front() != '#')
      steps.push_back({line, {{"ok", true}}});
  }
  return steps;
}

json previewOf(const json& events) {
  json told = json::array();
  for (const json& event : events)
    if (event["op"] == "preview") told.push_back({event["set"], event["value"]});
  return told;
}

class EditorScript : public testing::TestWithParam<const char*> {};

TEST_P(EditorScript, IsAnsweredAsItSays) {
  const auto steps = stepsOf(GetParam());
  ASSERT_FALSE(steps.empty());
  std::stringstream commands;
  for (const Step& step : steps) commands << step.command << "\n";
  std::stringstream answers;
  Script::Request request{Testing::builtOptions(), {}, {}};
  request.preferences.fonts = [] { return std::vector<std::u16string>{u"Arial", u"Zeta"}; };
  if (GetParam() == std::string("names"))
    request.preferences.settings = {{u"kilnworks.watermark.stylename.support", u"True"}};
  Script::run(request, commands, answers);

  for (const Step& step : steps) {
    std::string line;
    ASSERT_TRUE(std::getline(answers, line)) << step.command;
    json answer = json::parse(line);
    if (answer.contains("events")) answer["preview"] = previewOf(answer["events"]);
    for (const auto& [name, value] : step.expected.items()) EXPECT_EQ(answer[name], value) << step.command;
  }
}

INSTANTIATE_TEST_SUITE_P(Of, EditorScript, testing::Values("editing", "names", "colours"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
