#include "effect/overlay/page_rules.h"

namespace Effect {
namespace {

// Empty for a rule other than even or odd.
Name oppositeOf(std::u16string_view rule) {
  if (rule == Value::evenPages) return Value::oddPages;
  if (rule == Value::oddPages) return Value::evenPages;
  return {};
}

}  // namespace

Name firstRule(std::size_t slot) {
  constexpr Name rules[masterSlots] = {Value::allPages, Value::evenPages};
  return slot < masterSlots ? rules[slot] : Name();
}

bool isPageList(std::u16string_view text) { return text.find_first_not_of(u"0123456789,-") == text.npos; }

std::u16string_view ruleBeside(std::u16string_view first, std::u16string_view second, bool areBothOccupied) {
  const Name opposite = oppositeOf(first);
  return (areBothOccupied || first == second) && !opposite.empty() ? opposite : second;
}

}  // namespace Effect
