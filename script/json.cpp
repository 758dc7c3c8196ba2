#include "script/json.h"

#include "formats/text.h"

#include <utility>

namespace Script {
namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

void appendEscape(std::string& line, char32_t unit) {
  line += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) line += hexDigits[(unit >> shift) & 0xF];
}

void appendCharacter(std::string& line, char32_t character) {
  switch (character) {
    case U'"': line += "\\\""; return;
    case U'\\': line += "\\\\"; return;
    case U'\b': line += "\\b"; return;
    case U'\f': line += "\\f"; return;
    case U'\n': line += "\\n"; return;
    case U'\r': line += "\\r"; return;
    case U'\t': line += "\\t"; return;
    default: break;
  }
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < 0x20 || isSurrogate)
    appendEscape(line, character);
  else
    Formats::appendUtf8(line, character);
}

void appendText(std::string& line, const std::string& narrow) {
  const std::u16string wide = Formats::toUtf16(narrow);
  line += '"';
  for (std::size_t i = 0; i < wide.size();) appendCharacter(line, Formats::nextCodePoint(wide, i));
  line += '"';
}

// The library's writer rejects unpaired surrogates, so it is used only for numbers and literals.
void append(std::string& line, const Json& value) {
  const char* separator = "";
  if (value.is_object()) {
    line += '{';
    for (const auto& member : value.items()) {
      line += std::exchange(separator, ",");
      appendText(line, member.key());
      line += ':';
      append(line, member.value());
    }
    line += '}';
  } else if (value.is_array()) {
    line += '[';
    for (const Json& element : value) {
      line += std::exchange(separator, ",");
      append(line, element);
    }
    line += ']';
  } else if (value.is_string()) {
    appendText(line, value.get_ref<const std::string&>());
  } else {
    line += value.dump();
  }
}

}  // namespace

Json text(std::u16string_view wide) { return Formats::toUtf8(wide); }

std::string toLine(const Json& value) {
  std::string line;
  append(line, value);
  return line;
}

}  // namespace Script
