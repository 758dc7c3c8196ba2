#include "script/report.h"

#include "formats/names.h"
#include "formats/printable.h"
#include "formats/text.h"
#include "script/placeholders.h"
#include "script/portable_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>

namespace Script {
namespace {

namespace Prop = Formats::Prop;
using Formats::toUtf8;

// Properties whose values are choices or numbers, although their models list none.
constexpr std::array choices = {Prop::watermarkLayering,
                                Prop::watermarkTextAngle,
                                Prop::watermarkTextColour,
                                Prop::watermarkTextFont,
                                Prop::watermarkTextFontSize,
                                Prop::watermarkTextHeight,
                                Prop::watermarkTextWidth,
                                Prop::watermarkTextOutline,
                                Prop::watermarkTextScale,
                                Prop::watermarkTextStyle,
                                Prop::watermarkTextTransparency,
                                Prop::modelNumber,
                                Prop::modelSelection,
                                Prop::product,
                                Prop::outputPDL,
                                Prop::driverTech,
                                Prop::printJob};

bool isShortNumber(const std::string& text) {
  return text.size() <= 3 && std::ranges::all_of(text, [](unsigned char unit) { return std::isdigit(unit) != 0; });
}

class Report {
 public:
  Report(const Recording& recorded, const Refhost::PropertyModel& settingsNow, UserTexts userTexts)
      : recording(recorded),
        model(settingsNow),
        replaces(userTexts == UserTexts::replaced) {
    for (const auto& property : model.description().properties)
      for (const std::u16string& option : property.options) known.insert(toUtf8(option));
  }

  std::string write() {
    Facts facts = recording.facts();
    for (const auto& [name, value] : facts)
      if (name == "fonts") takeFonts(value);
    for (Fact& fact : facts) change(fact);
    std::string text = toLines(facts);
    if (!recording.isWhole()) text += "# The beginning of the session is not kept: this does not replay.\n";
    for (RecordedAction each : recording.actions()) {
      if (replaces) change(each);
      text += toLines(each);
    }
    return text + settings();
  }

 private:
  void takeFonts(const std::string& list) {
    for (std::size_t start = 0; start < list.size();) {
      const std::size_t end = std::min(list.find(',', start), list.size());
      known.insert(list.substr(start, end - start));
      start = end + 1;
    }
  }

  std::string settings() {
    std::string text = "# The settings now:\n";
    for (const auto& [name, value] : model.values())
      text += "#   " + toUtf8(name) + '=' +
              Formats::printable(withoutHome(valueOf(toUtf8(name), toUtf8(value)), recording.home())) + '\n';
    return text;
  }

  // A value of a property, or what stands for it.
  std::string valueOf(const std::string& name, const std::string& value) {
    if (!replaces || known.contains(value) || isMadeName(value) || isChoice(name)) return value;
    const auto& all = model.description().properties;
    const auto property = std::ranges::find_if(all, [&](const auto& each) { return toUtf8(each.name) == name; });
    const bool isDefault = property != all.end() && toUtf8(property->defaultValue) == value;
    return isDefault ? value : texts.of(value);
  }

  static bool isChoice(const std::string& name) {
    return std::ranges::any_of(choices, [&](Formats::Name each) { return Formats::isName(name, each); });
  }

  std::string pairOf(const std::string& pair) {
    const std::size_t equals = pair.find('=');
    if (equals == pair.npos) return pair;
    return pair.substr(0, equals + 1) + valueOf(pair.substr(0, equals), pair.substr(equals + 1));
  }

  void change(Fact& fact) {
    if (!replaces) return;
    if (fact.name == "property" || fact.name == "config" || fact.name == "customise") fact.value = pairOf(fact.value);
    if (fact.name == "model") fact.value = modelOf(fact.value);
  }

  // A model by its path is the user's.
  std::string modelOf(const std::string& name) {
    return name.find_first_of("/\\") == name.npos ? name : texts.of(name);
  }

  void change(RecordedAction& recorded) {
    auto& [command, arguments, ownText] = recorded.action;
    const auto replace = [&](std::size_t index, const auto& changed) {
      if (index < arguments.size()) arguments[index] = Formats::toUtf16(changed(toUtf8(arguments[index])));
    };
    const auto item = [this](const std::string& value) {
      return known.contains(value) || isMadeName(value) || isShortNumber(value) || isColour(value) ? value
                                                                                                   : texts.of(value);
    };
    if (ownText == Refhost::OwnText::argument)
      replace(arguments.size() - 1, [this](const std::string& text) { return texts.of(text); });
    if (command == "select" || command == "drop") replace(1, item);
    if (command == "set")
      replace(1, [&, name = toUtf8(arguments[0])](const auto& value) { return valueOf(name, value); });
    if (command == "reopen") {
      replace(0, [this](const std::string& name) { return modelOf(name); });
      for (std::size_t i = 2; i < arguments.size(); ++i) replace(i, [this](const auto& pair) { return pairOf(pair); });
    }
    if (!recorded.answer) return;
    change(*recorded.answer, ownText);
    if (command != "get") return;
    for (auto& [name, value] : recorded.answer->members)
      if (auto* text = std::get_if<std::u16string>(&value))
        *text = Formats::toUtf16(valueOf(toUtf8(arguments[0]), toUtf8(*text)));
  }

  static bool isColour(const std::string& value) {
    return value.size() == 7 && value.front() == '#' &&
           value.find_first_not_of("0123456789ABCDEFabcdef", 1) == value.npos;
  }

  void change(Refhost::ActionAnswer& answer, Refhost::OwnText ownText) {
    answer.failure = texts.inSentence(answer.failure);
    if (ownText == Refhost::OwnText::none) return;
    for (auto& [name, value] : answer.members)
      if (auto* text = std::get_if<std::u16string>(&value); text != nullptr && name != "modal")
        *text = Formats::toUtf16(texts.of(toUtf8(*text)));
  }

  const Recording& recording;
  const Refhost::PropertyModel& model;
  bool replaces;
  std::set<std::string> known;  // what everybody can choose
  Placeholders texts;
};

}  // namespace

std::string reportOf(const Recording& recording, const Refhost::PropertyModel& settings, UserTexts texts) {
  return Report(recording, settings, texts).write();
}

}  // namespace Script
