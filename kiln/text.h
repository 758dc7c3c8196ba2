// Text passed between a host and a plug-in: views for the duration of a call, texts for values that are kept.
//
// Narrow text is UTF-8. Wide text is UTF-16 on every platform, so that comparing and truncating work the same
// everywhere; it may hold unpaired surrogates. Comparisons are by unit: exact and case-sensitive.
#pragma once

#include "kiln/memory.h"

#include <string>
#include <string_view>
#include <utility>

namespace Kiln {

// A text owned by the caller, valid for the duration of the call.
template <class Unit>
class BasicView {
 public:
  constexpr BasicView() noexcept = default;
  constexpr BasicView(const Unit* text) noexcept : BasicView(std::basic_string_view<Unit>(text)) {}
  constexpr BasicView(std::basic_string_view<Unit> text) noexcept : units(text.data()), count(text.size()) {}
  BasicView(const std::basic_string<Unit>& text) noexcept : units(text.data()), count(text.size()) {}

  constexpr const Unit* data() const noexcept { return units; }
  constexpr std::size_t size() const noexcept { return count; }
  constexpr std::basic_string_view<Unit> view() const noexcept { return {units, count}; }
  constexpr operator std::basic_string_view<Unit>() const noexcept { return view(); }

 private:
  const Unit* units = nullptr;
  std::size_t count = 0;
};

// An immutable text, shared by its copies; the last one frees it through the allocator stored in its block. Its layout
// is one pointer; an empty text has no block.
template <class Unit>
class BasicText {
 public:
  BasicText() noexcept = default;

  // Throws std::bad_alloc when out of memory.
  BasicText(Allocator& allocator, BasicView<Unit> text) {
    if (text.size() == 0) return;
    void* memory = allocator.allocate(sizeof(Block) + text.size() * sizeof(Unit));
    if (memory == nullptr) throw std::bad_alloc();
    block = new (memory) Block{&allocator, text.size(), 1};
    std::char_traits<Unit>::copy(units(), text.data(), text.size());
  }
  BasicText(const BasicText& other) noexcept : block(other.block) {
    if (block != nullptr) ++block->holders;
  }
  BasicText(BasicText&& other) noexcept : block(std::exchange(other.block, nullptr)) {}
  ~BasicText() {
    if (block != nullptr && --block->holders == 0) block->allocator->deallocate(block);
  }
  BasicText& operator=(BasicText other) noexcept {
    std::swap(block, other.block);
    return *this;
  }

  bool empty() const noexcept { return block == nullptr; }
  std::size_t size() const noexcept { return block == nullptr ? 0 : block->size; }

  // Valid as long as this text or a copy of it lives.
  std::basic_string_view<Unit> view() const noexcept {
    return block == nullptr ? std::basic_string_view<Unit>() : std::basic_string_view<Unit>(units(), block->size);
  }
  operator BasicView<Unit>() const noexcept { return view(); }
  std::basic_string<Unit> str() const { return std::basic_string<Unit>(view()); }

 private:
  struct Block {
    Allocator* allocator;
    std::size_t size;
    std::size_t holders;
  };

  Unit* units() const noexcept { return reinterpret_cast<Unit*>(block + 1); }

  Block* block = nullptr;
};

using StringView = BasicView<char>;
using WStringView = BasicView<char16_t>;
using String = BasicText<char>;
using WString = BasicText<char16_t>;

}  // namespace Kiln
