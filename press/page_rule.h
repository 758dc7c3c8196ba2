#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Press {

/// Which pages of a job something is printed on, as print dialogs write it: "All", "Even", "Odd", or page numbers and
/// ranges with commas between them. "5-" goes on to the last page, "-5" begins at the first, "9-5" is "5-9"; pages that
/// the job does not have count for nothing, and naming a page twice is naming it. Pages count from 1.
class PageRule {
 public:
  /// All pages.
  PageRule() = default;
  /// Throws `Error` when the text is no such rule.
  explicit PageRule(std::string_view text);

  bool has(int page) const;

 private:
  enum class Kind { all, even, odd, listed };
  using Range = std::pair<int, int>;  ///< First and last page.

  Kind kind = Kind::all;
  std::vector<Range> ranges;  ///< In order, apart from each other.

  friend bool operator==(const PageRule& a, const PageRule& b) { return a.kind == b.kind && a.ranges == b.ranges; }
};

}  // namespace Press
