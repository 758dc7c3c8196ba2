#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Press {

// The pages of a job that something is printed on, in the syntax of print dialogs: "All", "Even", "Odd", or
// comma-separated page numbers and ranges. "5-" ends at the last page, "-5" starts at the first, "9-5" is "5-9"; pages
// that do not exist and duplicates are ignored. Pages count from 1.
class PageRule {
 public:
  // All pages.
  PageRule() = default;

  // Throws Error for an invalid rule.
  explicit PageRule(std::string_view text);

  bool has(int page) const;

  // Whether it includes any page of a job of `count` pages.
  bool hasAny(int count) const;

  friend bool operator==(const PageRule&, const PageRule&) = default;

 private:
  enum class Kind { all, even, odd, listed };
  using Range = std::pair<int, int>;  // first and last page

  Kind kind = Kind::all;
  std::vector<Range> ranges;  // sorted, without overlaps
};

}  // namespace Press
