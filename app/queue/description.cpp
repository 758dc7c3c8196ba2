#include "app/queue/description.h"

#include "formats/sentences.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <functional>
#include <set>
#include <stdexcept>

namespace App {
namespace {

constexpr std::string_view blockStart = "*% Effects of kiln: begin";
constexpr std::string_view blockStartAfterOpenLine = "*% Effects of kiln: begin (the line before had no end)";
constexpr std::string_view blockEnd = "*% Effects of kiln: end";

// In front of a line of the description that is out of force.
constexpr std::string_view outOfForce = "*% kiln: ";

constexpr const char* baseLocale = "en-US";

// The longest text that the print service keeps, in bytes.
constexpr std::size_t longestText = 80;

void forEachLine(std::string_view text, const std::function<void(std::string_view)>& visit) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    visit(line);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
}

// What follows the keyword on a line of the form "KEYWORD..."; nothing on other lines.
std::optional<std::string_view> after(std::string_view line, std::string_view keyword) {
  if (!line.starts_with(keyword)) return {};
  return line.substr(keyword.size());
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view spaces = " \t";
  const std::size_t start = text.find_first_not_of(spaces);
  if (start == text.npos) return {};
  return text.substr(start, text.find_last_not_of(spaces) - start + 1);
}

// The text without what would break its line or its translation, cut at a whole character.
std::string textForPpd(const std::string& utf8) {
  std::string text = utf8.substr(0, longestText);
  if (utf8.size() > longestText)
    while (!text.empty() && (static_cast<unsigned char>(utf8[text.size()]) & 0xC0u) == 0x80u) text.pop_back();
  std::string safe;
  for (const char unit : text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(unit);
    if (byte < ' ' || byte == 0x7F || std::string_view(":/<>\"").find(unit) != std::string_view::npos)
      safe += {'<', digits[byte >> 4u], digits[byte & 15u], '>'};
    else
      safe += unit;
  }
  return safe;
}

bool isAscii(const std::string& text) {
  return std::ranges::all_of(text, [](char unit) { return static_cast<unsigned char>(unit) < 0x80; });
}

const std::string& textIn(const TextsByLocale& texts, const std::string& locale) {
  const auto found = texts.find(locale);
  return found == texts.end() ? texts.at(baseLocale) : found->second;
}

// The languages of the block, as descriptions name them.
struct Languages {
  // Each with the locale of its texts: "de" for "de-DE", and "zh_CN" where several locales share a language.
  std::map<std::string, std::string> locales;

  // Those that the description itself is translated to: every text has to be there.
  std::set<std::string> complete;
};

std::vector<std::string_view> wordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  constexpr std::string_view between = " \t\"";
  while (true) {
    const std::size_t start = text.find_first_not_of(between);
    if (start == text.npos) return words;
    text.remove_prefix(start);
    words.push_back(text.substr(0, text.find_first_of(between)));
    text.remove_prefix(words.back().size());
  }
}

Languages languagesFor(std::string_view description, const TextsByLocale& texts) {
  Languages languages;
  std::map<std::string, int> localesOf;
  for (const auto& [locale, text] : texts) ++localesOf[locale.substr(0, 2)];
  for (const auto& [locale, text] : texts) {
    const std::string language = locale.substr(0, 2);
    languages.locales[localesOf[language] > 1 ? language + '_' + locale.substr(3) : language] = locale;
  }
  forEachLine(description, [&](std::string_view line) {
    const auto names = after(line, "*cupsLanguages:");
    for (const std::string_view name : names ? wordsOf(*names) : std::vector<std::string_view>())
      languages.complete.emplace(name);
  });
  for (const std::string& language : languages.complete) languages.locales.emplace(language, baseLocale);
  return languages;
}

// A line that names a filter: *cupsFilter, *cupsFilter2 or *cupsPreFilter.
struct FilterLine {
  std::string_view keyword;
  std::string_view source;
  int cost = 0;
  std::string_view program;
};

std::optional<FilterLine> filterLineIn(std::string_view line) {
  if (!line.starts_with("*cups")) return {};
  const std::size_t colon = line.find(':');
  if (colon == line.npos) return {};
  FilterLine found;
  found.keyword = line.substr(1, colon - 1);
  if (found.keyword != "cupsFilter" && found.keyword != "cupsFilter2" && found.keyword != "cupsPreFilter") return {};
  const std::vector<std::string_view> words = wordsOf(line.substr(colon + 1));
  if (words.size() < 3) return {};
  found.source = words.front();
  found.program = words.back();
  const std::string_view cost = words[words.size() - 2];
  std::from_chars(cost.data(), cost.data() + cost.size(), found.cost);
  return found;
}

// Where the filter stands among those of the description. The print service runs the one of *cupsPreFilter in front of
// each program that reads PDF; where it sends PDF on as it is ("-"), no program is run at all, and so the filter takes
// the place of "-". Run twice, it would print every effect twice.
struct FilterPlace {
  bool isTaken = false;  // somebody has put the filter there already
  std::string replaced;  // the line that sends PDF on; empty for none
};

FilterPlace placeIn(std::string_view description) {
  FilterPlace place;
  std::string other;
  forEachLine(description, [&](std::string_view line) {
    const auto filter = filterLineIn(line);
    if (!filter || filter->source != "application/pdf") return;
    constexpr int leastOtherCost = 60;  // the print service's own way by its page filter has more
    if (filter->program == "kiln")
      place.isTaken = true;
    else if (filter->keyword == "cupsPreFilter")
      throw std::runtime_error(Formats::sentence(
          "The queue's description has another filter before all others ({1}), and only one can be there.", line));
    else if (filter->program == "-" && filter->cost < leastOtherCost && place.replaced.empty())
      place.replaced = line;
    else
      other = line;
  });
  if (!place.isTaken && !place.replaced.empty() && !other.empty())
    throw std::runtime_error(
        Formats::sentence("The queue's description has two ways for a PDF ({1} and {2}), and a filter can be in one "
                          "of them alone.",
                          place.replaced, other));
  return place;
}

// The block is written in parts.
class Block {
 public:
  Block(std::string_view ppd, const QueueEffects& queueEffects)
      : description(ppd),
        effects(queueEffects),
        languages(languagesFor(ppd, queueEffects.title)) {}

  std::string make(const FilterPlace& place, bool isAfterOpenLine) {
    line(std::string(isAfterOpenLine ? blockStartAfterOpenLine : blockStart));
    if (!place.replaced.empty())
      line(place.replaced.substr(0, place.replaced.rfind('-')) + "kiln\"");
    else if (!place.isTaken)
      line("*cupsPreFilter: \"application/pdf 0 kiln\"");
    if (!effects.options.empty()) {
      line("*OpenGroup: KilnEffects/" + base(effects.title, "Effects"));
      translate(".Translation KilnEffects/", effects.title, "Effects");
      for (const QueueOption& option : effects.options) add(option);
      line("*CloseGroup: KilnEffects");
      for (const QueueConstraint& constraint : effects.constraints) add(constraint);
    }
    line(std::string(blockEnd));
    return block;
  }

 private:
  void line(const std::string& text) { block += text + '\n'; }

  // The text of readers without a language, in characters that every description can have.
  static std::string base(const TextsByLocale& texts, const std::string& keyword) {
    const std::string& text = textIn(texts, baseLocale);
    return isAscii(text) ? textForPpd(text) : keyword;
  }

  // A language without its text shows the base's.
  void translate(const std::string& what, const TextsByLocale& texts, const std::string& keyword) {
    for (const auto& [language, locale] : languages.locales)
      if (const std::string text = textForPpd(textIn(texts, locale));
          languages.complete.contains(language) || text != base(texts, keyword))
        line('*' + language + what + text + ": \"\"");
  }

  void add(const QueueOption& option) {
    const std::string& keyword = option.keyword;
    line("*OpenUI *" + keyword + '/' + base(option.texts, keyword) + (option.isCheckBox ? ": Boolean" : ": PickOne"));
    translate(".Translation " + keyword + '/', option.texts, keyword);
    line("*OrderDependency: 10 AnySetup *" + keyword);
    line("*Default" + keyword + ": " + option.defaultChoice);
    for (const QueueChoice& choice : option.choices) {
      line('*' + keyword + ' ' + choice.keyword + '/' + base(choice.texts, choice.keyword) + ": \"\"");
      translate('.' + keyword + ' ' + choice.keyword + '/', choice.texts, choice.keyword);
    }
    line("*CloseUI: *" + keyword);
  }

  // In the form that the description has its own in: the print service reads one of the two alone.
  void add(const QueueConstraint& constraint) {
    const std::string one = '*' + constraint.option + ' ' + constraint.choice;
    const std::string other = '*' + constraint.otherOption + ' ' + constraint.otherChoice;
    if (description.find("\n*cupsUIConstraints") != description.npos) {
      line("*cupsUIConstraints: \"" + one + ' ' + other + '"');
      return;
    }
    line("*UIConstraints: " + one + ' ' + other);
    line("*UIConstraints: " + other + ' ' + one);
  }

  std::string_view description;
  const QueueEffects& effects;
  const Languages languages;
  std::string block;
};

// Visits the lines of the block.
void forEachLineOfBlock(std::string_view description, const std::function<void(std::string_view)>& visit) {
  bool isInside = false;
  forEachLine(description, [&](std::string_view line) {
    if (line.starts_with(blockStart)) isInside = true;
    if (isInside) visit(line);
    if (line == blockEnd) isInside = false;
  });
}

}  // namespace

std::string withEffects(const std::string& description, const QueueEffects& effects) {
  const bool isOpen = !description.empty() && !description.ends_with('\n');
  FilterPlace place = placeIn(description);
  if (place.isTaken) place.replaced.clear();
  std::string result = description;
  if (!place.replaced.empty()) result.insert(result.find(place.replaced), outOfForce);
  return result + (isOpen ? "\n" : "") + Block(description, effects).make(place, isOpen);
}

std::optional<std::string> withoutEffects(const std::string& description) {
  const auto atLine = [&](const std::string& text) {
    return description.starts_with(text) ? 0 : std::min(description.find('\n' + text), description.npos - 1) + 1;
  };
  const std::size_t start = atLine(std::string(blockStart));
  const std::size_t end = atLine(std::string(blockEnd) + '\n');
  if (start == description.npos && end == description.npos) return {};
  if (start == description.npos || end == description.npos || end < start)
    throw std::runtime_error(Formats::sentence(
        "Only a part of the lines of kiln is left in the queue's description: give the queue its driver again."));
  const bool isAfterOpenLine =
      start > 0 && description.compare(start, blockStartAfterOpenLine.size(), blockStartAfterOpenLine) == 0;
  std::string own =
      description.substr(0, isAfterOpenLine ? start - 1 : start) + description.substr(end + blockEnd.size() + 1);
  if (const std::size_t line = own.find(outOfForce); line != own.npos) own.erase(line, outOfForce.size());
  return own;
}

std::map<std::string, std::string> effectDefaults(std::string_view description) {
  std::map<std::string, std::string> defaults;
  forEachLineOfBlock(description, [&](std::string_view line) {
    const auto rest = after(line, "*Default");
    const std::size_t colon = rest ? rest->find(':') : std::string_view::npos;
    if (colon != std::string_view::npos)
      defaults[std::string(rest->substr(0, colon))] = trimmed(rest->substr(colon + 1));
  });
  return defaults;
}

std::string defaultChoice(std::string_view description, std::string_view option) {
  std::string choice;
  forEachLine(description, [&](std::string_view line) {
    if (const auto rest = after(line, "*Default" + std::string(option) + ':')) choice = trimmed(*rest);
  });
  return choice;
}

std::vector<std::string> choicesOf(std::string_view description, std::string_view option) {
  std::vector<std::string> choices;
  forEachLine(description, [&](std::string_view line) {
    const auto rest = after(line, '*' + std::string(option) + ' ');
    if (rest) choices.emplace_back(trimmed(*rest).substr(0, trimmed(*rest).find_first_of("/: ")));
  });
  return choices;
}

std::map<std::string, std::pair<double, double>> papersOf(std::string_view description) {
  std::map<std::string, std::pair<double, double>> papers;
  forEachLine(description, [&](std::string_view line) {
    const auto rest = after(line, "*PaperDimension ");
    const std::size_t quote = rest ? rest->find('"') : std::string_view::npos;
    if (quote == std::string_view::npos) return;
    const std::string numbers(rest->substr(quote + 1));
    char* next = nullptr;
    const double width = std::strtod(numbers.c_str(), &next);
    papers[std::string(trimmed(*rest).substr(0, trimmed(*rest).find_first_of("/:")))] = {width,
                                                                                         std::strtod(next, nullptr)};
  });
  return papers;
}

}  // namespace App
