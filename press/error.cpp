#include "press/error.h"

#include "formats/sentences.h"
#include "formats/text.h"

namespace Press {

std::string utf8(const std::filesystem::path& path) {
  const auto text = path.u8string();
  return {text.begin(), text.end()};
}

std::string quoted(const std::filesystem::path& path) { return Formats::quoted(utf8(path)); }

std::string excerpt(std::string_view text, std::size_t most) {
  constexpr std::size_t longestCharacter = 4;
  std::string shown;
  for (const char32_t character : Formats::toUtf32(text.substr(0, most + longestCharacter))) {
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    const std::string piece = isControl ? "?" : Formats::toUtf8(character);
    if (shown.size() + piece.size() > most) return shown + "...";
    shown += piece;
  }
  return shown;
}

}  // namespace Press
