// The paper sizes of a job.
#pragma once

#include "formats/names.h"

namespace Formats {

namespace Prop {
inline constexpr Name paperSize = u"PaperSize";
}  // namespace Prop

// A portrait sheet, in points.
struct Paper {
  double width = 0;
  double height = 0;
};

// The sheet for a value of the property; A4 for an unknown name.
constexpr Paper paperOf(Name size) {
  constexpr double pointsPerMillimetre = 72 / 25.4;
  if (size == u"A3") return {297 * pointsPerMillimetre, 420 * pointsPerMillimetre};
  if (size == u"Letter") return {612, 792};
  if (size == u"Ledger") return {792, 1224};
  return {210 * pointsPerMillimetre, 297 * pointsPerMillimetre};
}

}  // namespace Formats
