// The names of a user's overlays: which ones can be given, and giving another one.
#pragma once

#include "host/preferences.h"
#include "host/widgets/list.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// The tab's list of overlays; null when these preferences have none.
SelectorNode* overlayList(Preferences& preferences);

// Whether an item of it is an overlay, and not the entry for none or for several.
bool isOverlay(Kiln::XUL::ListItem& item);

// The names that no overlay may have, in any case: what the list calls no overlay and several ones, in every language.
std::vector<std::u16string> reservedOverlayNames(const ChromeFolders& chrome);

// What is wrong with a name for an overlay.
enum class NameProblem { none, missing, reserved, taken };

// `taken` are the names of other overlays. Spaces around a name do not count.
NameProblem problemOf(std::u16string_view name, const std::vector<std::u16string>& reserved,
                      const std::vector<std::u16string>& taken);

// Whether a name is one of them. And why it is refused then.
bool isReserved(std::u16string_view name, const std::vector<std::u16string>& reserved);
std::string reservedNameSentence(std::u16string_view name);

// The names in the list of those overlays that are the user's own, besides the item at `except`.
std::vector<std::u16string> overlayNames(SelectorNode& list, std::int32_t except = -1);

// Renames the overlay at that index of the list, as one user action; what refers to it keeps referring to it. Throws
// std::runtime_error, one sentence, when its name cannot be changed to that one: then nothing is changed.
void renameOverlay(Preferences& preferences, std::int32_t index, const std::u16string& name);

}  // namespace Refhost
