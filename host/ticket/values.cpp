#include "host/ticket/values.h"

#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace Refhost {
namespace {

constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();

bool isSpace(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n'; }
bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

std::u16string_view trimmed(std::u16string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

// An xsd:integer, clamped to 64 bits. Nothing for invalid text.
std::optional<std::int64_t> integerOf(std::u16string_view text) {
  text = trimmed(text);
  const bool isNegative = text.starts_with(u'-');
  if (isNegative || text.starts_with(u'+')) text.remove_prefix(1);
  if (text.empty() || !std::all_of(text.begin(), text.end(), isDigit)) return {};
  std::int64_t number = 0;
  for (const char16_t digit : text) {
    const int units = digit - u'0';
    number = number > (greatest - units) / 10 ? greatest : number * 10 + units;
  }
  return isNegative ? -number : number;
}

std::u16string textOf(std::int64_t number) { return Formats::toUtf16(std::to_string(number)); }

int hexDigit(char16_t unit) {
  if (isDigit(unit)) return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return -1;
}

bool isColour(std::u16string_view text) {
  return text.size() == 9 && text[0] == u'#' &&
         std::all_of(text.begin() + 1, text.end(), [](char16_t unit) { return hexDigit(unit) >= 0; });
}

// Converts between the colour forms: inverts the first component, opacity or transparency.
std::u16string otherColourForm(std::u16string_view colour) {
  constexpr std::u16string_view digits = u"0123456789ABCDEF";
  const auto opposite = [&](char16_t unit) { return digits[static_cast<std::size_t>(15 - hexDigit(unit))]; };
  std::u16string turned(colour);
  turned[1] = opposite(turned[1]);
  turned[2] = opposite(turned[2]);
  return turned;
}

bool isCarriedByXml(char32_t codePoint) {
  if (codePoint < 0x20) return codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
  const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  return !isSurrogate && codePoint != 0xFFFE && codePoint != 0xFFFF;
}

std::string textFault(const ValueType& type, std::u16string_view text) {
  std::int64_t characters = 0;
  for (std::size_t i = 0; i < text.size(); ++characters) {
    const char32_t codePoint = Formats::nextCodePoint(text, i);
    if (isCarriedByXml(codePoint)) continue;
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(codePoint));
    return Formats::sentence("has {1} as its character {2}, which XML cannot carry.", std::string(name),
                             characters + 1);
  }
  if (characters >= type.least && characters <= type.most) return {};
  return Formats::sentence("has {1} characters, not {2} to {3}.", characters, type.least, type.most);
}

std::string integerFault(const ValueType& type, std::u16string_view text) {
  const auto number = integerOf(text);
  if (!number) return Formats::sentence("is {1}, which is no whole number.", inQuotes(text));
  if (*number >= type.least && *number <= type.most) return {};
  return Formats::sentence("is {1}, not {2} to {3}.", inQuotes(trimmed(text)), type.least, type.most);
}

std::int64_t broughtIn(const ValueType& type, OutOfRange outOfRange, std::int64_t number) {
  if (outOfRange == OutOfRange::clamped) return std::clamp(number, type.least, type.most);
  const std::int64_t span = type.most - type.least + 1;
  const std::int64_t above = (number % span - type.least % span) % span;
  return type.least + (above < 0 ? above + span : above);
}

}  // namespace

std::string faultOf(const ValueType& type, std::u16string_view ticketText) {
  switch (type.form) {
    case ValueForm::text: return textFault(type, ticketText);
    case ValueForm::integer: return integerFault(type, ticketText);
    case ValueForm::colour: break;
  }
  return isColour(ticketText)
             ? ""
             : Formats::sentence("is {1}, which is no colour such as \"#FF808080\".", inQuotes(ticketText));
}

std::optional<std::u16string> ticketForm(const ValueType& type, OutOfRange outOfRange, std::u16string_view value) {
  if (type.form == ValueForm::colour) {
    if (!isColour(value)) return {};
    return otherColourForm(value);
  }
  if (type.form == ValueForm::integer && outOfRange != OutOfRange::refused)
    if (const auto number = integerOf(value)) return textOf(broughtIn(type, outOfRange, *number));
  if (!faultOf(type, value).empty()) return {};
  return type.form == ValueForm::integer ? textOf(*integerOf(value)) : std::u16string(value);
}

std::u16string propertyForm(const ValueType& type, std::u16string_view ticketText) {
  switch (type.form) {
    case ValueForm::integer: return textOf(*integerOf(ticketText));
    case ValueForm::colour: return otherColourForm(ticketText);
    case ValueForm::text: break;
  }
  return std::u16string(ticketText);
}

std::string inQuotes(std::u16string_view text) {
  constexpr std::size_t longest = 40;  // characters
  std::string shown;
  std::size_t i = 0;
  for (std::size_t characters = 0; i < text.size() && characters < longest; ++characters) {
    const char32_t codePoint = Formats::nextCodePoint(text, i);
    Formats::appendUtf8(shown, isCarriedByXml(codePoint) && codePoint >= 0x20 ? codePoint : 0xFFFD);
  }
  return Formats::quoted(i < text.size() ? shown + "..." : shown);
}

}  // namespace Refhost
