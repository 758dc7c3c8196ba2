// Indexes of virtual functions in vtables.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

// The vtable index of a virtual function, taken from the ABI's representation of member function pointers: the vtable
// offset plus one.
template <class Function>
std::size_t slotOf(Function function) {
  std::uintptr_t representation = 0;
  static_assert(sizeof function >= sizeof representation);
  std::memcpy(&representation, &function, sizeof representation);
  return static_cast<std::size_t>(representation - 1) / sizeof(void*);
}

// Virtual destructors occupy the first two vtable entries in this ABI.
inline constexpr std::size_t afterDestructors = 2;

// RefCount's own operation follows them, except in classes that derive from it virtually.
inline constexpr std::size_t afterRefCount = 3;

inline void expectSlots(std::size_t first, const std::vector<std::size_t>& slots) {
  for (std::size_t i = 0; i < slots.size(); ++i) EXPECT_EQ(slots[i], first + i) << "the operation at place " << i;
}
