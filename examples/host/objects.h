// What every object of the host is made with: memory, texts, signals.
#pragma once

#include "kiln/host.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace ExampleHost {

// Counts its blocks, so that a leak is seen when everything should be gone.
class Memory final : public Kiln::Allocator {
 public:
  void* allocate(std::size_t bytes) noexcept override {
    void* block = std::malloc(bytes);
    if (block != nullptr) ++blocks;
    return block;
  }
  void deallocate(void* block) noexcept override {
    if (block != nullptr) --blocks;
    std::free(block);
  }
  long blocks = 0;
};

inline Memory memory;

template <class T, class... Arguments>
Kiln::SmartPtr<T> make(Arguments&&... arguments) {
  Kiln::SmartPtr<T> object(new (memory) T(std::forward<Arguments>(arguments)...));
  if (!object) throw std::bad_alloc();
  return object;
}

// Paths convert between UTF-16 and UTF-8 on every system.
inline std::u16string wide(std::string_view text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
}
inline std::string narrow(std::u16string_view text) {
  const std::u8string bytes = std::filesystem::path(text).u8string();
  return {bytes.begin(), bytes.end()};
}
inline Kiln::WString text(std::u16string_view units) { return {memory, units}; }

inline Kiln::Exception failure(const std::string& sentence) { return {memory, sentence}; }

// What the plug-in does is printed, one line each.
inline void report(const std::string& line) { std::printf("  %s\n", line.c_str()); }

template <class Arg>
class Event final : public Kiln::Signal<Arg> {
 public:
  void attach(Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>> slot) override { slots.push_back(std::move(slot)); }
  Kiln::Allocator& allocator() noexcept override { return memory; }

  // A handler may attach further slots, which are not called yet.
  void fire(Arg argument) const {
    const auto connected = slots;
    for (const auto& slot : connected) slot->call(argument);
  }

 private:
  std::vector<Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>>> slots;
};

// A signal that lives as long as its owner.
template <class Arg>
using OwnedEvent = Kiln::SmartPtr<Event<Arg>>;

}  // namespace ExampleHost
