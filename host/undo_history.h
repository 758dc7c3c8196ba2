// The values before each action that a user may undo.
#pragma once

#include "host/trace.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace Refhost {

// Forgets the oldest values beyond a number of actions, and beyond a size, since values may have any length. The latest
// ones always stay.
class UndoHistory {
 public:
  static constexpr std::size_t mostActions = 500;
  static constexpr std::size_t mostUnits = std::size_t{8} << 20;

  bool isEmpty() const { return past.empty(); }
  std::size_t actions() const { return past.size(); }

  void add(TracePairs values) {
    units += unitsOf(values);
    past.push_back(std::move(values));
    while (past.size() > 1 && (past.size() > mostActions || units > mostUnits)) {
      units -= unitsOf(past.front());
      past.pop_front();
    }
  }

  // Removes and returns the latest values; there are some.
  TracePairs takeLatest() {
    TracePairs values = std::move(past.back());
    past.pop_back();
    units -= unitsOf(values);
    return values;
  }

  void clear() {
    past.clear();
    units = 0;
  }

 private:
  static std::size_t unitsOf(const TracePairs& values) {
    std::size_t sum = 0;
    for (const auto& [name, value] : values) sum += name.size() + value.size();
    return sum;
  }

  std::deque<TracePairs> past;
  std::size_t units = 0;
};

}  // namespace Refhost
