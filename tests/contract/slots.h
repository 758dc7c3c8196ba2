// The places of virtual functions in their class's table.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

// The slot of a virtual function, from how this compiler's interface represents a pointer to one: its offset in the
// table of functions, plus one.
template <class Function>
std::size_t slotOf(Function function) {
  std::uintptr_t representation = 0;
  static_assert(sizeof function >= sizeof representation);
  std::memcpy(&representation, &function, sizeof representation);
  return static_cast<std::size_t>(representation - 1) / sizeof(void*);
}

// Classes with a destructor that crosses the boundary have it in the first two places of this compiler's tables.
inline constexpr std::size_t afterDestructors = 2;

inline void expectSlots(std::size_t first, const std::vector<std::size_t>& slots) {
  for (std::size_t i = 0; i < slots.size(); ++i) EXPECT_EQ(slots[i], first + i) << "the operation at place " << i;
}
