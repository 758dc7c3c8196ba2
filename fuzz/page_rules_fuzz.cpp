// Any text as the rule of pages that people write: what the print side takes, the dialog lets people type, and both
// mean the same pages by it, in whatever order and form they are listed. Masters of a page never print on one page
// both.
#include "formats/page_rules.h"
#include "formats/text.h"
#include "fuzz/fuzzing.h"
#include "press/error.h"
#include "press/pages/page_list.h"

#include <limits>
#include <optional>

namespace {

using Fuzzing::demand;
using Press::PageRule;

constexpr int pages = 300;

std::optional<PageRule> ruleIn(std::string_view text) {
  try {
    return PageRule(text);
  } catch (const Press::Error& error) {
    demand(std::string_view(error.what()).ends_with('.'));
    return {};
  }
}

bool isSame(const PageRule& one, const PageRule& other) {
  for (int page = 1; page <= pages; ++page)
    if (one.has(page) != other.has(page)) return false;
  return true;
}

bool isName(std::string_view text) { return text == "All" || text == "Even" || text == "Odd"; }

std::string backwards(std::string_view list) {
  std::string result;
  for (;;) {
    const std::size_t comma = list.rfind(',');
    if (comma == list.npos) return result + std::string(list);
    result += std::string(list.substr(comma + 1)) + ",";
    list = list.substr(0, comma);
  }
}

std::string listed(const PageRule& rule) {
  std::string list;
  for (int page = 1; page <= pages; ++page)
    if (rule.has(page)) list += std::to_string(page) + ",";
  return list;
}

void checkList(const PageRule& rule, std::string_view text) {
  std::string tight(text);
  std::erase(tight, ' ');
  demand(Formats::isPageList(Formats::toUtf16(tight)));
  demand(ruleIn(backwards(text)) == rule);
  demand(ruleIn(std::string(text) + "," + std::string(text)) == rule);
  demand(ruleIn(" " + std::string(text) + " , ") == rule);
  const auto more = ruleIn(std::string(text) + ",7");
  demand(more && more->has(7));
  for (int page = 1; page <= pages; ++page) demand(page == 7 || more->has(page) == rule.has(page));
  demand(ruleIn(std::string(text) + ",-") == std::nullopt);
}

void checkMasters(std::string_view text) {
  using namespace Formats;
  const std::u16string first = Formats::toUtf16(text);
  for (const std::u16string_view master :
       {std::u16string_view(first), std::u16string_view(Value::evenPages), std::u16string_view(Value::oddPages)}) {
    const auto rule = ruleIn(Formats::toUtf8(master));
    const auto beside = ruleIn(Formats::toUtf8(ruleBeside(master, first, true)));
    const bool isHalf = master == Value::evenPages || master == Value::oddPages;
    if (isHalf) demand(rule && beside);
    for (int page = 1; isHalf && page <= pages; ++page) demand(rule->has(page) != beside->has(page));
    if (!isHalf) demand(ruleBeside(master, first, true) == first);
  }
}

void check(std::string_view text) {
  checkMasters(text);
  const auto rule = ruleIn(text);
  if (!rule) return;
  const std::string list = listed(*rule);
  if (!list.empty()) demand(isSame(PageRule(list), *rule));
  if (!isName(text)) checkList(*rule, text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check(Fuzzing::text(data, size));
  return 0;
}
