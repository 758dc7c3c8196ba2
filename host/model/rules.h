// The rules of a model: which options are unavailable while other properties have certain values.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// Makes an option unavailable while all conditions hold.
struct RuleDescription {
  struct Condition {
    std::u16string property;
    std::u16string value;
  };
  std::u16string property;
  std::u16string option;
  std::vector<Condition> conditions;
};

// Whether all conditions of the rule hold; `valueOf` gives a property's value.
bool holds(const RuleDescription& rule, const std::function<std::u16string_view(std::u16string_view)>& valueOf);

}  // namespace Refhost
