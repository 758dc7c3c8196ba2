#include "app/queue/offers.h"

#include "app/choices.h"
#include "app/queue/constraints.h"
#include "app/queue/effects.h"
#include "app/queue/marks.h"
#include "app/shown_items.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/chrome/help.h"
#include "host/chrome/strings.h"
#include "host/gui.h"

#include <algorithm>
#include <stdexcept>

namespace App {
namespace {

constexpr const char* yes = "True";
constexpr const char* no = "False";

std::vector<OfferedEffect> offeredAmong(SilentRun& run, const std::vector<std::string>& allowed) {
  std::vector<OfferedEffect> offered;
  for (const OfferedEffect& effect : offeredEffects())
    if (std::ranges::find(allowed, Formats::toUtf8(effect.property)) != allowed.end() &&
        run.preferences().model().allows(effect.property, effect.on))
      offered.push_back(effect);
  return offered;
}

// The texts of all languages.
class Texts {
 public:
  explicit Texts(const Refhost::ChromeFolders& chrome) {
    for (const std::string& locale : chrome.locales("effect")) tables.emplace_back(chrome, locale);
  }

  TextsByLocale of(std::u16string_view reference, std::u16string_view group = {}) const {
    TextsByLocale texts;
    for (const Refhost::StringTables& table : tables) {
      const std::string text = shown(table, reference);
      texts[table.locale()] = group.empty() ? text : text + " (" + shown(table, group) + ')';
    }
    return texts;
  }

  // The same text in each language.
  TextsByLocale same(const std::string& text) const {
    TextsByLocale texts;
    for (const Refhost::StringTables& table : tables) texts[table.locale()] = text;
    return texts;
  }

 private:
  static std::string shown(const Refhost::StringTables& table, std::u16string_view reference) {
    return Formats::toUtf8(Refhost::labelAsText(table.resolve(reference)));
  }

  std::vector<Refhost::StringTables> tables;
};

std::u16string labelOf(SilentRun& run, Formats::Name widget) {
  return widget.empty() ? std::u16string()
                        : demandWidget<Refhost::WidgetNode>(*run.preferences().gui(), widget).label();
}

// Several overlays are on, too, by another value.
bool isOn(SilentRun& run, const OfferedEffect& effect) {
  const auto value = run.preferences().model().value(effect.property);
  return effect.list.empty() ? value == std::u16string(effect.on) : value != std::u16string(Formats::Value::none);
}

QueueOption checkBox(bool isOnByDefault, const Texts& texts) {
  QueueOption option;
  option.isCheckBox = true;
  option.defaultChoice = isOnByDefault ? yes : no;
  option.choices = {{no, texts.of(u"$IDS_NO;")}, {yes, texts.of(u"$IDS_YES;")}};
  return option;
}

// What the setting is called that is not in the list: by its text, or as several overlays.
TextsByLocale nameOfSetting(SilentRun& run, const OfferedEffect& effect, const Texts& texts) {
  const auto name = run.preferences().model().value(effect.text).value_or(u"");
  return name.empty() ? texts.of(Formats::Token::multipleOverlays) : texts.same(Formats::toUtf8(name));
}

// Whether choosing the mark is what the settings are.
bool isAsInList(SilentRun& run, const OfferedEffect& effect, const Mark& mark) {
  const auto before = run.printedValues();
  chooseMark(run, effect, mark);
  return run.printedValues() == before;
}

QueueOption list(SilentRun& run, const OfferedEffect& effect, const Texts& texts) {
  QueueOption option;
  option.defaultChoice = noMark;
  option.choices.push_back({noMark, texts.of(Formats::Token::none)});
  const std::vector<Mark> marks = marksOf(run, effect);
  for (const Mark& mark : marks) option.choices.push_back({mark.keyword, texts.same(mark.name)});
  if (!isOn(run, effect)) return option;
  const TextsByLocale ofSetting = nameOfSetting(run, effect, texts);
  const auto selected = std::ranges::find(marks, run.preferences().model().value(effect.selection),
                                          [](const Mark& mark) { return std::optional(mark.value); });
  if (selected != marks.end() && isAsInList(run, effect, *selected)) {
    option.defaultChoice = selected->keyword;
  } else {
    option.defaultChoice = markOfTicket;
    option.choices.push_back({markOfTicket, ofSetting});
  }
  return option;
}

// Whether a job can change something by the option: there is more than one choice, and the mark that it belongs to can
// be chosen, or is printed by default.
bool hasEffect(const QueueOption& option, const OfferedEffect& effect, const std::vector<QueueOption>& before,
               const std::map<Formats::Name, bool>& isOnByDefault) {
  if (option.choices.size() < 2) return false;
  return effect.of.empty() || isOnByDefault.at(effect.of) ||
         std::ranges::find(before, optionOf(effect.of), &QueueOption::keyword) != before.end();
}

std::u16string offValue(const Refhost::PropertyModel& model, const OfferedEffect& effect) {
  for (const Refhost::PropertyDescription& property : model.description().properties)
    if (property.name == effect.property)
      for (const std::u16string& option : property.options)
        if (option != effect.on) return option;
  return {};
}

[[noreturn]] void refuse(const std::string& option, const std::string& choice) {
  throw std::runtime_error(
      Formats::sentence("This queue does not offer {1} to jobs: choose again, or ask its administrator.",
                        inQuotes(option + '=' + choice)));
}

void choose(SilentRun& run, const OfferedEffect& effect, const std::string& option, const std::string& choice) {
  if (effect.list.empty()) {
    if (!isSameChoice(choice, yes) && !isSameChoice(choice, no)) refuse(option, choice);
    const bool isOn = isSameChoice(choice, yes);
    return run.choose({{std::u16string(effect.property),
                        isOn ? std::u16string(effect.on) : offValue(run.preferences().model(), effect)}});
  }
  if (isSameChoice(choice, noMark)) return chooseNoMark(run, effect);
  for (const Mark& mark : marksOf(run, effect))
    if (isSameChoice(choice, mark.keyword)) return chooseMark(run, effect, mark);
  refuse(option, choice);
}

}  // namespace

void demandAllowable(const std::string& property, const Refhost::PropertyModel& model) {
  const std::u16string name = Formats::toUtf16(property);
  demandSettable(model, name);
  const auto known = std::ranges::find(model.description().properties, name, &Refhost::PropertyDescription::name);
  if (known->options.empty())
    throw std::runtime_error(Formats::sentence(
        "The property {1} takes any text and so cannot be allowed to jobs: take it from the options of kiln.",
        Formats::quoted(property)));
}

std::vector<std::string> offeredProperties(SilentRun& run) {
  std::vector<std::string> properties;
  for (const OfferedEffect& effect : offeredEffects())
    if (run.preferences().model().allows(effect.property, effect.on))
      properties.push_back(Formats::toUtf8(effect.property));
  return properties;
}

QueueEffects offer(SilentRun& run, const std::vector<std::string>& allowed, const std::string& description) {
  const Texts texts(run.preferences().chrome());
  QueueEffects effects;
  effects.title = texts.of(run.preferences().gui()->tabs().back().root->WidgetNode::label());
  const std::vector<OfferedEffect> offered = offeredAmong(run, allowed);
  std::map<Formats::Name, bool> isOnByDefault;  // before marks are tried
  for (const OfferedEffect& effect : offeredEffects()) isOnByDefault[effect.property] = isOn(run, effect);
  for (const OfferedEffect& effect : offered) {
    QueueOption option =
        effect.list.empty() ? checkBox(isOnByDefault[effect.property], texts) : list(run, effect, texts);
    option.keyword = optionOf(effect.property);
    option.texts = texts.of(labelOf(run, effect.widget), labelOf(run, effect.group));
    if (hasEffect(option, effect, effects.options, isOnByDefault)) effects.options.push_back(std::move(option));
  }
  effects.constraints = constraintsOf(effects.options, run.preferences().model().description(), description);
  return effects;
}

OptionChoices offeredChoices(const std::vector<std::pair<std::string, std::string>>& jobOptions) {
  constexpr std::string_view negation = "no";
  OptionChoices choices;
  for (const auto& [name, value] : jobOptions) {
    const bool isNegated = value.empty() && name.starts_with(std::string(negation) + std::string(optionPrefix));
    const std::string option = isNegated ? name.substr(negation.size()) : name;
    // "kiln-NAME" is an option of the other kind, with a property's value.
    if (!option.starts_with(optionPrefix) || option.substr(optionPrefix.size()).starts_with('-')) continue;
    choices[option] = isNegated ? no : value.empty() ? yes : value;
  }
  return choices;
}

void chooseOffered(SilentRun& run, const std::vector<std::string>& allowed, const OptionChoices& defaults,
                   const OptionChoices& choices) {
  OptionChoices left = choices;
  for (const OfferedEffect& effect : offeredAmong(run, allowed)) {
    const std::string option = optionOf(effect.property);
    const auto choice = left.find(option);
    if (choice == left.end()) continue;
    const auto byDefault = defaults.find(option);
    if (byDefault == defaults.end() || !isSameChoice(byDefault->second, choice->second))
      choose(run, effect, option, choice->second);
    left.erase(choice);
  }
  if (!left.empty()) refuse(left.begin()->first, left.begin()->second);
}

}  // namespace App
