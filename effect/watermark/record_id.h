// Ids of the user's watermarks: "WM_" and a number in the shape of a GUID.
#pragma once

#include "formats/watermark_record.h"

#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>

namespace Effect {

// The random numbers in one id.
using IdDraws = std::array<std::uint32_t, 10>;

// WM_TIME_A_B_CD_EFGHIJ: the seconds, the low 16 bits of two draws, the low 8 bits of eight more; upper-case
// hexadecimal digits without leading zeros, so that the length varies.
std::u16string recordId(std::uint32_t seconds, const IdDraws& draws);

// An id made from a text: always the same for the same one.
std::u16string derivedRecordId(std::u16string_view text);

// Whether the id has the beginning of those made here.
inline bool isMadeId(std::u16string_view id) { return id.starts_with(Formats::madeIdStart); }

class RecordIds {
 public:
  // Seeded with a high-resolution time, so that two processes that start together differ.
  RecordIds();

  std::u16string next();

  // The first one that is not taken.
  std::u16string nextFree(const std::function<bool(const std::u16string& id)>& isTaken);

 private:
  std::mt19937 generator;
};

}  // namespace Effect
