#include "press/pages/page_list.h"

#include "formats/names.h"
#include "formats/sentences.h"
#include "press/error.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

namespace Press {
namespace {

constexpr int lastPage = std::numeric_limits<int>::max();

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// A page number, clamped to the maximum.
std::optional<int> pageIn(std::string_view text) {
  text = trimmed(text);
  int page = 0;
  const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
  if (!isNumber) return std::nullopt;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), page);
  return result.ec == std::errc::result_out_of_range ? lastPage : page;
}

[[noreturn]] void refuse(std::string_view text) {
  throw Error(Formats::sentence("{1} does not say which pages: write All, Even, Odd, or numbers such as 1,3,5-9.",
                                Formats::quoted(excerpt(text, 60))));
}

std::pair<int, int> rangeIn(std::string_view item) {
  const std::size_t dash = item.find('-');
  if (dash == std::string_view::npos) {
    const std::optional<int> page = pageIn(item);
    if (!page) refuse(item);
    return {*page, *page};
  }
  const std::string_view from = trimmed(item.substr(0, dash)), to = trimmed(item.substr(dash + 1));
  const std::optional<int> first = from.empty() ? 1 : pageIn(from);
  const std::optional<int> last = to.empty() ? lastPage : pageIn(to);
  if (!first || !last || (from.empty() && to.empty())) refuse(item);
  return std::minmax(*first, *last);
}

}  // namespace

PageRule::PageRule(std::string_view text) {
  using namespace Formats;
  if (isName(text, Value::allPages)) return;
  kind = isName(text, Value::evenPages) ? Kind::even : isName(text, Value::oddPages) ? Kind::odd : Kind::listed;
  if (kind != Kind::listed) return;
  std::vector<Range> named;
  bool isEmpty = true;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    const std::string_view item = trimmed(text.substr(start, comma - start));
    if (!item.empty()) named.push_back(rangeIn(item));
    isEmpty = isEmpty && item.empty();
    start = comma + 1;
  }
  if (isEmpty) refuse(text);
  std::ranges::sort(named);
  for (const Range& range : named) {
    if (ranges.empty() || range.first > ranges.back().second)
      ranges.push_back(range);
    else
      ranges.back().second = std::max(ranges.back().second, range.second);
  }
}

bool PageRule::hasAny(int count) const {
  if (kind != Kind::listed) return count >= (kind == Kind::even ? 2 : 1);
  return std::ranges::any_of(ranges, [count](const Range& range) { return range.second >= 1 && range.first <= count; });
}

bool PageRule::has(int page) const {
  if (kind != Kind::listed) return kind == Kind::all || (page % 2 == 0) == (kind == Kind::even);
  const auto after = std::ranges::upper_bound(ranges, page, {}, &Range::first);
  return after != ranges.begin() && page <= std::prev(after)->second;
}

}  // namespace Press
