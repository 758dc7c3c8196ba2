#include "host/documents/escaping.h"

#include "formats/text.h"

#include <algorithm>
#include <iterator>

namespace Refhost {
namespace {

constexpr std::size_t escapeUnits = 7;  // _xHHHH_
constexpr std::u16string_view emptyName = u"_x_";

constexpr bool isLetter(char32_t c) { return (c >= U'A' && c <= U'Z') || (c >= U'a' && c <= U'z'); }
constexpr bool isDigit(char32_t c) { return c >= U'0' && c <= U'9'; }

// The characters that a name may start with and contain, in ASCII.
constexpr bool beginsName(char32_t c) { return isLetter(c) || c == U'_'; }
constexpr bool continuesName(char32_t c) { return beginsName(c) || isDigit(c) || c == U'.' || c == U'-'; }

void appendEscape(std::u16string& to, char16_t unit) {
  constexpr std::u16string_view digits = u"0123456789ABCDEF";
  to += u"_x";
  for (int shift = 12; shift >= 0; shift -= 4) to += digits[(unit >> shift) & 0xF];
  to += u'_';
}

bool readsAsEscape(std::u16string_view text, std::size_t index) { return text.substr(index).starts_with(u"_x"); }

int hexValue(char16_t unit) {
  if (isDigit(unit)) return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return -1;
}

// The unit escaped at the start of `text`; -1 when there is no escape.
int escapedUnit(std::u16string_view text) {
  if (text.size() < escapeUnits || !text.starts_with(u"_x") || text[escapeUnits - 1] != u'_') return -1;
  int unit = 0;
  for (std::size_t i = 2; i < escapeUnits - 1; ++i) {
    const int value = hexValue(text[i]);
    if (value < 0) return -1;
    unit = unit * 16 + value;
  }
  return unit;
}

// Whether a name may start with the character: XML's name start characters outside ASCII.
bool beginsForeignName(char32_t c) {
  struct Range {
    char32_t first;
    char32_t last;
  };
  constexpr Range ranges[] = {{0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
                              {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
                              {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [c](const Range& range) { return c >= range.first && c <= range.last; });
}

}  // namespace

bool isForbidden(char32_t c) {
  if (c < 0x20) return c != U'\t' && c != U'\n' && c != U'\r';
  return (c >= 0xD800 && c <= 0xDFFF) || c == 0xFFFE || c == 0xFFFF;
}

bool isPlainName(std::u16string_view name) {
  for (std::size_t i = 0; i < name.size();) {
    const bool first = i == 0;
    const char32_t c = Formats::nextCodePoint(name, i);
    if (beginsName(c) || beginsForeignName(c)) continue;
    if (first || !(continuesName(c) || c == 0xB7 || (c >= 0x300 && c <= 0x36F) || c == 0x203F || c == 0x2040))
      return false;
  }
  return !name.empty();
}

std::string escapedName(std::u16string_view name) {
  std::u16string escaped;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool allowed = i == 0 ? beginsName(name[i]) : continuesName(name[i]);
    if (allowed && !readsAsEscape(name, i))
      escaped += name[i];
    else
      appendEscape(escaped, name[i]);
  }
  return Formats::toUtf8(name.empty() ? emptyName : escaped);
}

std::u16string escapedText(std::u16string_view text, bool edges) {
  const auto firstInner = std::min(text.find_first_not_of(wideXmlSpace), text.size());
  const auto lastInner = text.find_last_not_of(wideXmlSpace);
  const auto onEdge = [&](std::size_t i) { return edges && (i < firstInner || i > lastInner); };

  std::u16string escaped;
  escaped.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t at = i;
    const char32_t c = Formats::nextCodePoint(text, i);
    if (isForbidden(c) || readsAsEscape(text, at) || onEdge(at))
      appendEscape(escaped, text[at]);
    else
      escaped += text.substr(at, i - at);
  }
  return escaped;
}

std::u16string unescapedName(std::u16string_view name) {
  return name == emptyName ? std::u16string() : unescapedText(name);
}

std::u16string unescapedText(std::u16string_view text) {
  std::u16string plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const int unit = escapedUnit(text.substr(i));
    plain += unit < 0 ? text[i] : static_cast<char16_t>(unit);
    i += unit < 0 ? 1 : escapeUnits;
  }
  return plain;
}

}  // namespace Refhost
