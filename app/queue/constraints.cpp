#include "app/queue/constraints.h"

#include "app/queue/marks.h"
#include "formats/papers.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace App {
namespace {

using Refhost::ModelDescription;
using Refhost::RuleDescription;

// A choice of an option, by their keywords.
using Choice = std::pair<std::string, std::string>;

std::u16string_view factOf(const ModelDescription& model, const std::u16string& name, bool& isFact) {
  const auto property = std::ranges::find(model.properties, name, &Refhost::PropertyDescription::name);
  isFact = property != model.properties.end() && property->isContext;
  return isFact ? std::u16string_view(property->defaultValue) : std::u16string_view();
}

bool isOfPaper(const std::pair<double, double>& size, const Formats::Paper& paper) {
  constexpr double tolerance = 3;  // points: descriptions round
  const auto isNear = [](double one, double other) { return std::abs(one - other) <= tolerance; };
  return (isNear(size.first, paper.width) && isNear(size.second, paper.height)) ||
         (isNear(size.first, paper.height) && isNear(size.second, paper.width));
}

std::vector<Choice> papersLike(const std::u16string& value, const std::string& description) {
  std::vector<Choice> choices;
  for (const auto& [name, size] : papersOf(description))
    if (isOfPaper(size, Formats::paperOf(value))) choices.emplace_back("PageSize", name);
  return choices;
}

std::vector<Choice> coloursLike(const std::u16string& value, const std::string& description) {
  constexpr std::string_view withoutColours[] = {"Gray", "Grayscale", "KGray", "FastGray", "CMYGray", "Black", "Mono"};
  std::vector<Choice> choices;
  for (const std::string& choice : choicesOf(description, "ColorModel")) {
    const bool isMonochrome = std::ranges::find(withoutColours, choice) != std::end(withoutColours);
    if (isMonochrome == (value == u"Monochrome")) choices.emplace_back("ColorModel", choice);
  }
  return choices;
}

// The choices for which the condition holds.
std::vector<Choice> choicesFor(const RuleDescription::Condition& condition, const std::vector<QueueOption>& options,
                               const std::string& description) {
  if (condition.property == Formats::Prop::paperSize) return papersLike(condition.value, description);
  if (condition.property == u"ColourMode") return coloursLike(condition.value, description);
  for (const OfferedEffect& effect : offeredEffects()) {
    const std::string keyword = optionOf(effect.property);
    const bool isOffered = std::ranges::find(options, keyword, &QueueOption::keyword) != options.end();
    if (effect.property == condition.property && isOffered && effect.list.empty())
      return {{keyword, condition.value == effect.on ? "True" : "False"}};
  }
  return {};
}

// The choices that a rule forbids its effect with; none when it never applies.
std::vector<Choice> forbiddenBy(const RuleDescription& rule, const std::vector<QueueOption>& options,
                                const ModelDescription& model, const std::string& description) {
  std::vector<Choice> choices;
  int conditions = 0;
  for (const RuleDescription::Condition& condition : rule.conditions) {
    bool isFact = false;
    const std::u16string_view fact = factOf(model, condition.property, isFact);
    if (isFact && fact != condition.value) return {};
    if (isFact) continue;
    choices = choicesFor(condition, options, description);
    ++conditions;
  }
  return conditions == 1 ? choices : std::vector<Choice>();
}

std::string chosenAtFirst(const std::string& option, const std::vector<QueueOption>& options,
                          const std::string& description) {
  const auto own = std::ranges::find(options, option, &QueueOption::keyword);
  return own == options.end() ? defaultChoice(description, option) : own->defaultChoice;
}

}  // namespace

std::vector<QueueConstraint> constraintsOf(const std::vector<QueueOption>& options, const ModelDescription& model,
                                           const std::string& description) {
  std::vector<QueueConstraint> constraints;
  for (const OfferedEffect& effect : offeredEffects()) {
    const auto option = std::ranges::find(options, optionOf(effect.property), &QueueOption::keyword);
    if (option == options.end()) continue;
    for (const RuleDescription& rule : model.rules) {
      if (rule.property != effect.property || rule.option != effect.on) continue;
      for (const auto& [other, otherChoice] : forbiddenBy(rule, options, model, description))
        for (const QueueChoice& choice : option->choices)
          if (choice.keyword != noMark && choice.keyword != "False" &&
              !(choice.keyword == option->defaultChoice && chosenAtFirst(other, options, description) == otherChoice))
            constraints.push_back({option->keyword, choice.keyword, other, otherChoice});
    }
  }
  return constraints;
}

}  // namespace App
