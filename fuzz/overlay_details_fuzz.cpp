// Any text as what the dialog for several overlays has saved: the slots that it fills fill the same slots again, and
// the print side finds in their list of files what is in them.
#include "formats/multiple_overlay_details.h"
#include "formats/text.h"
#include "fuzz/fuzzing.h"
#include "press/error.h"
#include "press/marks/overlay.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace {

using namespace Formats;
using Fuzzing::demand;

bool isThere(std::u16string_view label) { return !label.starts_with(u'?'); }

std::u16string pathOf(std::u16string_view label) { return u"/overlays/" + std::u16string(label); }

std::optional<Press::PageRule> ruleIn(std::u16string_view text) {
  try {
    return Press::PageRule(Formats::toUtf8(text));
  } catch (const Press::Error&) {
    return {};
  }
}

// The pages that a slot is printed on: those of the readable items, if it has the characters of a list of pages.
std::optional<Press::PageRule> printedRule(std::u16string_view text) {
  std::optional<Press::PageRule> rule = ruleIn(text);
  if (!rule && isPageList(text)) {
    std::u16string read;
    for (std::u16string_view rest = text; !rest.empty();) {
      const std::u16string_view item = rest.substr(0, rest.find(u','));
      rest.remove_prefix(std::min(item.size() + 1, rest.size()));
      if (isPageItem(Formats::toUtf8(item))) read += std::u16string(item) + u",";
    }
    rule = ruleIn(read);
  }
  if (rule && !rule->hasAny(std::numeric_limits<int>::max())) rule.reset();
  return rule;
}

void checkPrinting(const SlotContents& slots) {
  std::vector<Press::Overlay> expected;
  bool areRules = true;
  for (const auto& [label, pages] : slots) {
    if (label.empty() || pages.empty()) continue;
    areRules = areRules && (ruleIn(pages) || isPageList(pages));
    const auto rule = printedRule(pages);
    if (rule) expected.push_back({std::filesystem::u8path(Formats::toUtf8(pathOf(label))), *rule});
  }
  const std::u16string files = sourceFilesOf(slots, [&slots](std::size_t slot) { return pathOf(slots[slot].label); });
  try {
    demand(Press::overlaysFromProperties({{"OverlayImage", "MultipleOverlayImage"},
                                          {"OverlaySourceFileName", Formats::toUtf8(files)}}) == expected);
    demand(areRules);
  } catch (const Press::Error&) {
    demand(!areRules);
  }
}

void check(std::u16string_view value) {
  const auto slots = readDetails(value, {}, isThere);
  const auto withDefault = readDetails(value, u"default.opa", isThere);
  demand(slots.has_value() == withDefault.has_value());
  if (!slots) return;
  for (const auto& [label, pages] : *slots) {
    demand(label.find_first_of(u";$") == label.npos && pages.find(u'$') == pages.npos);
    demand(label.empty() ? pages.empty() : isThere(label));
  }
  for (std::size_t i = 1; i < slotCount; ++i) demand((*withDefault)[i] == (*slots)[i]);
  if (!slots->front().label.empty()) demand(*withDefault == *slots);
  demand(readDetails(detailsOf(*slots), {}, isThere) == slots);
  checkPrinting(*withDefault);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check(Formats::toUtf16(Fuzzing::text(data, size)));
  return 0;
}
