#include "app/queue/marks.h"

#include "app/messages.h"
#include "app/shown_items.h"
#include "formats/sentences.h"
#include "formats/watermark_record.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace App {
namespace {

// Keywords have at most 40 characters.
constexpr std::size_t longestPlain = 28;

char asciiLower(char unit) { return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit; }

bool isWord(char unit) { return (asciiLower(unit) >= 'a' && asciiLower(unit) <= 'z') || (unit >= '0' && unit <= '9'); }

// The name in the characters of a keyword.
std::string plainKeyword(const std::string& name) {
  std::string keyword;
  for (const char unit : name.substr(0, longestPlain)) {
    if (isWord(unit)) keyword += unit;
    if (unit == ' ') keyword += '_';
  }
  return keyword;
}

// FNV-1a: short, and the same everywhere.
std::string fingerprint(const std::string& name) {
  std::uint32_t hash = 2166136261u;
  for (const char unit : name) hash = (hash ^ static_cast<unsigned char>(unit)) * 16777619u;
  std::string digits;
  for (unsigned shift = 32; shift > 0; shift -= 4) digits += "0123456789abcdef"[(hash >> (shift - 4)) & 15u];
  return digits;
}

bool isReserved(std::string_view keyword) {
  constexpr std::string_view reserved[] = {noMark, markOfTicket, "Custom", "Unknown", "Off", "False"};
  return std::ranges::any_of(reserved, [&](std::string_view each) { return isSameChoice(keyword, each); });
}

// Whether the keyword says all of the name.
bool isTold(const std::string& name, const std::string& keyword) {
  return keyword.size() == name.size() && !isReserved(keyword);
}

Refhost::SelectorNode& listOf(SilentRun& run, const OfferedEffect& effect) {
  return demandWidget<Refhost::SelectorNode>(*run.preferences().gui(), effect.list);
}

bool isNone(const ShownItem& item) { return item.value == Formats::noneId || item.value == Formats::Value::none; }

void choose(SilentRun& run, const OfferedEffect& effect, std::int32_t index, const std::string& name) {
  Refhost::SelectorNode& list = listOf(run, effect);
  run.act([&] { list.choose(index); });
  if (list.selection() != index)
    throw std::runtime_error(Formats::sentence("{1} cannot be chosen now.", inQuotes(name)));
}

}  // namespace

bool isSameChoice(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, asciiLower, asciiLower);
}

std::vector<Mark> marksOf(SilentRun& run, const OfferedEffect& effect) {
  std::vector<Mark> marks;
  for (const ShownItem& item : shownItems(listOf(run, effect)))
    if (!isNone(item) && item.value != Formats::Value::multiple) {
      std::erase_if(marks, [&](const Mark& mark) { return mark.name == item.name; });
      marks.push_back({plainKeyword(item.name), item.name, item.value, item.index});
    }
  std::vector<std::string> plain;
  for (const Mark& mark : marks) plain.push_back(mark.keyword);
  for (Mark& mark : marks) {
    const auto isThis = [&](const std::string& keyword) { return isSameChoice(keyword, mark.keyword); };
    if (!isTold(mark.name, mark.keyword) || std::ranges::count_if(plain, isThis) > 1)
      mark.keyword = (mark.keyword.empty() ? "Mark" : mark.keyword) + '_' + fingerprint(mark.name);
  }
  return marks;
}

void chooseMark(SilentRun& run, const OfferedEffect& effect, const Mark& mark) {
  choose(run, effect, mark.index, mark.name);
}

void chooseNoMark(SilentRun& run, const OfferedEffect& effect) {
  for (const ShownItem& item : shownItems(listOf(run, effect)))
    if (isNone(item)) return choose(run, effect, item.index, item.name);
}

}  // namespace App
