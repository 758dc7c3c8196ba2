// The actions that a user may undo, or redo: the values and files before each, or after it.
#pragma once

#include "host/documents/file_changes.h"
#include "host/trace.h"
#include "host/user_actions.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace Refhost {

struct UndoStep {
  // The values to return to.
  TracePairs values;

  // What the action has changed of the user's files.
  FileChanges files = {};

  // What the user did; empty when it is not known.
  UserAction action = {};
};

// Forgets the oldest actions beyond a number, and beyond a size, since values and files may have any length. The latest
// one always stays.
class UndoHistory {
 public:
  static constexpr std::size_t mostActions = 500;
  static constexpr std::size_t mostUnits = std::size_t{8} << 20;
  static constexpr std::size_t mostBytes = std::size_t{256} << 20;  // of files

  bool isEmpty() const { return past.empty(); }
  std::size_t actions() const { return past.size(); }
  const std::deque<UndoStep>& steps() const { return past; }

  // Null when there is none.
  const UndoStep* latest() const { return past.empty() ? nullptr : &past.back(); }

  void add(UndoStep step) {
    units += unitsOf(step.values);
    bytes += step.files.bytes();
    past.push_back(std::move(step));
    while (past.size() > 1 && (past.size() > mostActions || units > mostUnits || bytes > mostBytes)) {
      forget(past.front());
      past.pop_front();
    }
  }

  // Removes and returns the latest action; there is one.
  UndoStep takeLatest() {
    forget(past.back());
    UndoStep step = std::move(past.back());
    past.pop_back();
    return step;
  }

  // Files were changed further since, not by an action: the latest one that has changed a file ends, or begins, with
  // its new content.
  void extend(FileChanges::State state, FileChanges further) {
    for (auto step = past.rbegin(); step != past.rend(); ++step) {
      bytes -= step->files.bytes();
      step->files.extend(state, further);
      bytes += step->files.bytes();
    }
  }

  void clear() {
    past.clear();
    units = 0;
    bytes = 0;
  }

 private:
  static std::size_t unitsOf(const TracePairs& values) {
    std::size_t sum = 0;
    for (const auto& [name, value] : values) sum += name.size() + value.size();
    return sum;
  }

  void forget(const UndoStep& step) {
    units -= unitsOf(step.values);
    bytes -= step.files.bytes();
  }

  std::deque<UndoStep> past;
  std::size_t units = 0;
  std::size_t bytes = 0;
};

}  // namespace Refhost
