#include "tests/support/world.h"

#include "formats/text.h"

#include <fstream>
#include <random>

namespace Testing {
namespace {

struct ToText {
  std::string operator()(const std::u16string& text) const { return Formats::toUtf8(text); }
  std::string operator()(bool flag) const { return flag ? "true" : "false"; }
  std::string operator()(double number) const { return std::to_string(static_cast<long>(number)); }
  std::string operator()(const Refhost::TracePairs& pairs) const {
    std::string text;
    for (const auto& [name, value] : pairs)
      text += (text.empty() ? "" : ",") + Formats::toUtf8(name) + "=" + Formats::toUtf8(value);
    return text;
  }
};

std::vector<std::string> joined(const std::vector<Refhost::TraceEvent>& events, const std::string& op,
                                const std::vector<std::string>& members) {
  std::vector<std::string> lines;
  for (const auto& event : events) {
    if (event.op != op) continue;
    std::string line;
    for (const std::string& name : members) {
      const std::string part = member(event, name);
      if (!part.empty()) line += (line.empty() ? "" : " ") + part;
    }
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

Refhost::Options builtOptions() {
  Refhost::Options options;
  options.plugin = PLUGIN_FILE;
  options.resources = RESOURCES_FOLDER;
  return options;
}

World::World(Refhost::Options options) : preferences(std::move(options), face) {
  preferences.trace().listen([this](const Refhost::TraceEvent& event) { events.push_back(event); });
  preferences.open();
}

std::vector<Refhost::TraceEvent> World::take() { return std::exchange(events, {}); }

std::string member(const Refhost::TraceEvent& event, const std::string& name) {
  for (const auto& [key, value] : event.members)
    if (key == name) return std::visit(ToText(), value);
  return "";
}

std::vector<std::string> connections(const std::vector<Refhost::TraceEvent>& events) {
  return joined(events, "connect", {"signal", "of"});
}

std::vector<std::string> widgetOperations(const std::vector<Refhost::TraceEvent>& events) {
  return joined(events, "widget", {"id", "do", "value"});
}

std::vector<std::string> transitions(const std::vector<Refhost::TraceEvent>& events) {
  return joined(events, "transition", {"pairs"});
}

TemporaryFolder::TemporaryFolder()
    : path(std::filesystem::temp_directory_path() / ("kiln-test-" + std::to_string(std::random_device()()))) {
  std::filesystem::create_directories(path);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  std::filesystem::remove_all(path, error);
}

void writeFile(const std::filesystem::path& file, std::string_view bytes) {
  if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << bytes;
  stream.close();
  if (!stream) throw std::runtime_error("a test cannot write " + file.string());
}

void copyResources(const std::filesystem::path& to) {
  std::filesystem::copy(RESOURCES_FOLDER, to, std::filesystem::copy_options::recursive);
}

}  // namespace Testing
