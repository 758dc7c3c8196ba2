#include "effect/watermark/record_id.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <iterator>

namespace Effect {
namespace {

IdDraws drawsOf(std::mt19937& generator) {
  IdDraws draws;
  for (std::uint32_t& draw : draws) draw = static_cast<std::uint32_t>(generator());
  return draws;
}

}  // namespace

std::u16string recordId(std::uint32_t seconds, const IdDraws& draws) {
  const auto word = [&draws](std::size_t i) { return static_cast<unsigned>(draws[i] & 0xFFFF); };
  const auto byte = [&draws](std::size_t i) { return static_cast<unsigned>(draws[i] & 0xFF); };
  char text[64];
  std::snprintf(text, sizeof text, "WM_%lX_%X_%X_%X%X_%X%X%X%X%X%X", static_cast<unsigned long>(seconds), word(0),
                word(1), byte(2), byte(3), byte(4), byte(5), byte(6), byte(7), byte(8), byte(9));
  return {text, std::find(text, std::end(text), '\0')};
}

// FNV-1a, by 16-bit units.
std::u16string derivedRecordId(std::u16string_view text) {
  std::uint32_t hash = 0x811C9DC5;
  for (const char16_t unit : text) hash = (hash ^ unit) * 0x01000193;
  std::mt19937 generator(hash);
  const auto first = static_cast<std::uint32_t>(generator());
  return recordId(first, drawsOf(generator));
}

RecordIds::RecordIds()
    : generator(static_cast<std::uint32_t>(std::chrono::system_clock::now().time_since_epoch().count())) {}

std::u16string RecordIds::next() {
  return recordId(static_cast<std::uint32_t>(std::time(nullptr)), drawsOf(generator));
}

std::u16string RecordIds::nextFree(const std::function<bool(const std::u16string& id)>& isTaken) {
  std::u16string id = next();
  while (isTaken(id)) id = next();
  return id;
}

}  // namespace Effect
