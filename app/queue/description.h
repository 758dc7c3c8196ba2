// The effects of a queue in its printer's description (PPD): one block of lines at the end, which names the filter and
// has the options that print dialogs show. Nothing else of the description is changed.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace App {

// A text for people, in UTF-8, by locale ("de-DE").
using TextsByLocale = std::map<std::string, std::string>;

struct QueueChoice {
  std::string keyword;
  TextsByLocale texts;
};

// An option that dialogs show: a check box, with the choices "False" and "True", or a list.
struct QueueOption {
  std::string keyword;
  TextsByLocale texts;
  bool isCheckBox = false;
  std::string defaultChoice;
  std::vector<QueueChoice> choices;
};

// A choice of an effect that does not go together with a choice of the printer's own options.
struct QueueConstraint {
  std::string option;
  std::string choice;
  std::string otherOption;
  std::string otherChoice;
};

struct QueueEffects {
  TextsByLocale title;
  std::vector<QueueOption> options;
  std::vector<QueueConstraint> constraints;
};

// What all keywords of the options begin with.
inline constexpr std::string_view optionPrefix = "kiln";

// The description with the block; it has none yet. Throws std::runtime_error, one sentence, when another filter has the
// place of this one.
std::string withEffects(const std::string& description, const QueueEffects& effects);

// The description without the block, byte by byte; nothing when it has none. Throws std::runtime_error, one sentence,
// when only a part of the block is left.
std::optional<std::string> withoutEffects(const std::string& description);

// The default choices of the options in the block, by their keywords.
std::map<std::string, std::string> effectDefaults(std::string_view description);

// The default choice of an option; empty when there is no such option.
std::string defaultChoice(std::string_view description, std::string_view option);

// The choices of an option of the description, in order.
std::vector<std::string> choicesOf(std::string_view description, std::string_view option);

// The papers of the description, in points: width and height, by the choice of PageSize.
std::map<std::string, std::pair<double, double>> papersOf(std::string_view description);

}  // namespace App
