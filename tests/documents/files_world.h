// A private home, and the recorded trace.
#pragma once

#include "formats/text.h"
#include "host/documents/path.h"
#include "kiln/exception.h"
#include "tests/files/scratch.h"

#include <string>
#include <vector>

struct FilesWorld {
  explicit FilesWorld(Files::Disk& disk = Files::realDisk()) : files{disk, trace, scratch.folder} {
    trace.listen([this](const Refhost::TraceEvent& event) { events.push_back(told(event)); });
  }

  Kiln::SmartPtr<Kiln::Services::Path> path(std::u16string_view name) const {
    return Refhost::makePath(files, scratch.folder)->join(name);
  }

  Scratch scratch;
  Refhost::Trace trace;
  Refhost::FileWorld files;
  std::vector<std::string> events;  // "write path=user/marks.xml bytes=12"

 private:
  static std::string told(const Refhost::TraceEvent& event) {
    std::string line = event.op;
    for (const auto& [name, value] : event.members) {
      line += " " + name + "=";
      if (const auto* text = std::get_if<std::u16string>(&value)) line += Formats::toUtf8(*text);
      if (const auto* number = std::get_if<double>(&value)) line += std::to_string(static_cast<long>(*number));
    }
    return line;
  }
};

// The text of a path joined with a name.
inline std::u16string joined(const char* path, std::u16string_view name) {
  const FilesWorld world;
  return Refhost::makePath(world.files, path)->join(name)->text().str();
}

inline std::vector<std::u16string> textsOf(const Kiln::SmartPtr<Kiln::Services::TextList>& list) {
  std::vector<std::u16string> texts;
  for (std::int32_t i = 0; i < list->count(); ++i) texts.push_back(list->at(i).str());
  return texts;
}
