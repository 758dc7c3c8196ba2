// The preferences' widgets and displayed list items, for commands that act like a user.
#pragma once

#include "formats/names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/widgets/list.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace App {

// A list item as displayed.
struct ShownItem {
  std::string name;
  std::u16string value;
  std::int32_t index = 0;
};

std::vector<ShownItem> shownItems(Refhost::SelectorNode& list);

// The name that a word of a command line means: the word itself where there is such a name, else the only name that is
// listed as the word (see Formats::printable), else the word. Throws std::runtime_error, one sentence, when several
// names are listed so.
std::string nameMeant(const std::vector<std::string>& names, const std::string& word);

// "A", "B" ...: quoted names separated by commas.
std::string listed(const std::vector<std::string>& names);

// The widget with that id and type in a GUI or a layout. Throws std::runtime_error, one sentence, when there is none.
template <class Kind, class Widgets>
Kind& demandWidget(const Widgets& widgets, Formats::Name id) {
  auto* const widget = dynamic_cast<Kind*>(widgets.find(id));
  if (widget == nullptr)
    throw std::runtime_error(Formats::sentence("These preferences have no {1}.", Formats::quoted(Formats::toUtf8(id))));
  return *widget;
}

}  // namespace App
