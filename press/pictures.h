#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Press {

/// A drawn page, rows from the top, without gaps.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> argb;  ///< 0xAARRGGBB, opaque.
};

}  // namespace Press

// The one function of the library that draws pages. Everything crosses as plain C, and nothing is handed over: what the
// receiver is given lasts until it returns.
extern "C" {

/// Takes the result, once. `error` is null and `argb` holds width times height pixels; or `error` is a sentence without
/// the file's name, and there are no pixels.
using KilnPictureReceiver = void (*)(void* context, int width, int height, const std::uint32_t* argb,
                                     const char* error);

/// Draws a page of a PDF file held in memory. Pages count from 1. Where `pngPath` is not null, the picture is also
/// saved there as PNG, under a path in the system's own encoding.
using KilnDrawPage = void (*)(const char* pdf, std::size_t size, int page, double dpi, const char* pngPath,
                              KilnPictureReceiver receiver, void* context);

}  // extern "C"

namespace Press {

inline constexpr const char* drawPageSymbol = "kilnDrawPage";

}  // namespace Press
