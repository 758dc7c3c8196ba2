#include "host/library.h"

#include "files/path_text.h"

#include <stdexcept>
#include <string>

namespace Refhost {

Library::Library(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error))
    throw std::runtime_error("There is no plug-in library " + Files::shownPath(file) + ".");
  try {
    module.emplace(file);
  } catch (const std::runtime_error& problem) {
    throw std::runtime_error("The plug-in library " + Files::shownPath(file) + " cannot be loaded: " + problem.what() +
                             ".");
  }
  factory = module->function<Kiln::CreatePlugin>("createPlugin");
  if (factory == nullptr)
    throw std::runtime_error("The library " + Files::shownPath(file) + " is no plug-in: it exports no createPlugin.");
}

std::string defaultPluginName() { return std::string("Zorvueffect") + Files::moduleEnding; }

}  // namespace Refhost
