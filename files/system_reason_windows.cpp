#include "files/system_reason.h"

#include "formats/sentences.h"
#include "formats/text.h"

#include <windows.h>

#include <array>

namespace Files {

// The standard library asks the system for narrow text, which is not UTF-8.
std::string systemReason(std::error_code code) {
  if (code.category() != std::system_category()) return code.message();
  std::array<wchar_t, 512> words{};
  const DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  const DWORD length = FormatMessageW(flags, nullptr, static_cast<DWORD>(code.value()), 0, words.data(),
                                      static_cast<DWORD>(words.size()), nullptr);
  std::u16string text(words.begin(), words.begin() + length);
  while (!text.empty() && (text.back() == u' ' || text.back() == u'.')) text.pop_back();
  return text.empty() ? Formats::sentence("system error {1}", code.value()) : Formats::toUtf8(text);
}

}  // namespace Files
