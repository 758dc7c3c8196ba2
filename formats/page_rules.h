// The pages that the overlay of a slot is printed on. Slot indexes start at 0; the user interface counts from 1.
//
// The first two slots are the masters: the first applies to all, the even or the odd pages, the second to the even or
// the odd ones. The others have a list that the user types, such as 1,3,5-9.
#pragma once

#include "formats/names.h"

#include <cstddef>
#include <string_view>

namespace Formats {

inline constexpr std::size_t slotCount = 8;
inline constexpr std::size_t masterSlots = 2;

// A radio button of the dialog, and the rule that it gives a master.
struct MasterRule {
  Name button;
  std::size_t slot;
  Name rule;
};

inline constexpr MasterRule masterRules[] = {
    {WidgetId::firstMasterAll, 0, Value::allPages},  {WidgetId::firstMasterEven, 0, Value::evenPages},
    {WidgetId::firstMasterOdd, 0, Value::oddPages},  {WidgetId::secondMasterEven, 1, Value::evenPages},
    {WidgetId::secondMasterOdd, 1, Value::oddPages},
};

// Empty for a rule other than even or odd.
inline Name oppositeOf(std::u16string_view rule) {
  if (rule == Value::evenPages) return Value::oddPages;
  if (rule == Value::oddPages) return Value::evenPages;
  return {};
}

// The initial rule of an overlay that is added to a free slot; empty for slots with a list.
inline Name firstRule(std::size_t slot) {
  constexpr Name rules[masterSlots] = {Value::allPages, Value::evenPages};
  return slot < masterSlots ? rules[slot] : Name();
}

// Whether the text consists of digits, commas and hyphens. The print side interprets it.
inline bool isPageList(std::u16string_view text) { return text.find_first_not_of(u"0123456789,-") == text.npos; }

// Whether an item of such a list names pages: a number, or a range that may be open at one end.
inline bool isPageItem(std::string_view item) {
  return !item.empty() && item != "-" && item.find('-') == item.rfind('-');
}

// The rule of the second master, given the first one's: the opposite of an even or odd `first` when both slots are
// occupied, so that no page gets both, or when the two rules are equal; otherwise `second`.
inline std::u16string_view ruleBeside(std::u16string_view first, std::u16string_view second, bool areBothOccupied) {
  const Name opposite = oppositeOf(first);
  return (areBothOccupied || first == second) && !opposite.empty() ? opposite : second;
}

}  // namespace Formats
