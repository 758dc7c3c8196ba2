#include "app/documents/roff.h"

namespace App {
namespace {

// In capitals, as headings are: those of ASCII, and those of Latin-1 in UTF-8.
std::string inCapitals(std::string_view words) {
  std::string capitals;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const auto byte = static_cast<unsigned char>(words[i]);
    const bool isAfterC3 = i > 0 && words[i - 1] == '\xC3';
    const bool isSmall = (byte >= 'a' && byte <= 'z') || (isAfterC3 && byte >= 0xA0 && byte <= 0xBE && byte != 0xB7);
    capitals += static_cast<char>(isSmall ? byte - 0x20 : byte);
  }
  return capitals;
}

// What the language takes for something else.
std::string_view escaped(char unit) {
  switch (unit) {
    case '\\': return "\\e";
    case '-': return "\\-";
    case '\'': return "\\(aq";
    case '`': return "\\(ga";
    case '^': return "\\(ha";
    case '~': return "\\(ti";
    default: return {};
  }
}

}  // namespace

Roff::Roff(std::string_view name, std::string_view date, std::string_view source) {
  // Neither adjusted, which languages without spaces cannot be, nor hyphenated, since many words are to be typed.
  page = ".TH " + text(inCapitals(name)) + " 1 \"" + std::string(date) + "\" \"" + std::string(source) +
         "\"\n.ad l\n.nh\n";
}

std::string Roff::text(std::string_view plain) {
  std::string parts;
  for (const char unit : plain) {
    const std::string_view instead = escaped(unit);
    if (unit == '\n')
      parts += ' ';
    else if (instead.empty())
      parts += unit;
    else
      parts += instead;
  }
  return parts;
}

std::string Roff::bold(std::string_view plain) { return "\\fB" + text(plain) + "\\fR"; }

void Roff::section(std::string_view heading) {
  page += ".SH " + text(inCapitals(heading)) + '\n';
  isBelowHeading = true;
}

void Roff::subsection(std::string_view heading) {
  page += ".SS " + text(heading) + '\n';
  isBelowHeading = true;
}

// A heading begins a paragraph by itself.
void Roff::paragraph() {
  if (!isBelowHeading) page += ".PP\n";
}

void Roff::beginLines() {
  paragraph();
  page += ".in +4n\n.nf\n";
}

// A full stop, or an apostrophe, at the start of a line begins a request.
void Roff::line(std::string_view parts) {
  if (parts.starts_with('.') || parts.starts_with('\'')) page += "\\&";
  page.append(parts) += '\n';
  isBelowHeading = false;
}

void Roff::item(std::string_view parts, std::string_view plain) {
  page += ".TP\n";
  line(parts);
  line(text(plain));
}

}  // namespace App
