#include "app/messages.h"

#include "formats/printable.h"
#include "formats/sentences.h"

#include <iostream>

namespace App {
namespace {

constexpr std::string_view startOf(Message kind) {
  switch (kind) {
    case Message::error: return "ERROR: ";
    case Message::warning: return "WARNING: ";
    case Message::info: return "INFO: ";
    case Message::debug: return "DEBUG: ";
    case Message::page: return "PAGE: ";
  }
  return "";
}

void write(std::string_view start, std::string_view text) {
  std::string line(start);
  line += text;
  line += '\n';
  std::cerr << line;
}

// The start of a text in UTF-8, of at most so many bytes and whole characters.
std::string startOfText(const std::string& text, std::size_t most) {
  if (text.size() <= most) return text;
  constexpr std::string_view more = "...";
  std::size_t end = most - more.size();
  while ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end) + std::string(more);
}

}  // namespace

void tell(std::string_view sentence) { write("kiln: ", Formats::printable(sentence)); }

std::string inQuotes(const std::string& name) { return Formats::quoted(name); }

std::string withoutStop(std::string sentence) {
  for (const std::string_view stop : {".", "\u3002"}) {
    if (!sentence.ends_with(stop)) continue;
    sentence.erase(sentence.size() - stop.size());
    return sentence;
  }
  return sentence;
}

void message(Message kind, std::string_view text) {
  const std::string_view start = startOf(kind);
  write(start, startOfText(Formats::printable(text), longestMessage - start.size()));
}

}  // namespace App
