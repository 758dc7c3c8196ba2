// The interface of the library that draws pages. It is plain C, and no ownership crosses it: data is valid for the
// duration of a call.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

// Receives the result, once: `error` is null and `argb` has width times height pixels, or `error` is a template
// of a sentence, or a text of the library, without the file's name, and there are no pixels.
using KilnPictureReceiver = void (*)(void* context, int width, int height, const std::uint32_t* argb,
                                     const char* error);

// Draws a page of an in-memory PDF file. Pages count from 1. If `pngPath` is not null, also saves the picture there as
// PNG; the path is in the system's encoding.
using KilnDrawPage = void (*)(const char* pdf, std::size_t size, int page, double dpi, const char* pngPath,
                              KilnPictureReceiver receiver, void* context);

}  // extern "C"

namespace Press {

inline constexpr const char* drawPageSymbol = "kilnDrawPage";

}  // namespace Press
