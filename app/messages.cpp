#include "app/messages.h"

#include <algorithm>
#include <iostream>

namespace App {

const char* messageStart(Message kind) {
  switch (kind) {
    case Message::error: return "ERROR: ";
    case Message::warning: return "WARNING: ";
    case Message::info: return "INFO: ";
    case Message::debug: return "DEBUG: ";
    case Message::page: return "PAGE: ";
  }
  return "";
}

void message(Message kind, std::string text) {
  std::ranges::replace_if(text, [](char unit) { return unit >= 0 && unit < ' '; }, ' ');
  std::cerr << messageStart(kind) + text + '\n';
}

}  // namespace App
