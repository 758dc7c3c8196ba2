#include "press/error.h"

namespace Press {

std::string utf8(const std::filesystem::path& path) {
  const auto text = path.u8string();
  return {text.begin(), text.end()};
}

std::string quoted(const std::filesystem::path& path) { return "\"" + utf8(path) + "\""; }

}  // namespace Press
