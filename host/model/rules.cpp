#include "host/model/rules.h"

#include <algorithm>

namespace Refhost {

bool holds(const RuleDescription& rule, const std::function<std::u16string_view(std::u16string_view)>& valueOf) {
  return std::ranges::all_of(rule.conditions, [&valueOf](const RuleDescription::Condition& condition) {
    return valueOf(condition.property) == condition.value;
  });
}

}  // namespace Refhost
