#pragma once

#include "press/job/effects.h"
#include "press/pictures/picture.h"

#include <string>

// The programs that must agree on a page's appearance.
enum class Renderer { poppler, mupdf, ghostscript };
inline constexpr Renderer allRenderers[] = {Renderer::poppler, Renderer::mupdf, Renderer::ghostscript};

// The first displayed page, one pixel per point.
Press::Picture render(const std::string& pdf, Renderer renderer = Renderer::poppler);

// The effects as operations on pictures.
Press::Picture mirrored(Press::Picture picture);
Press::Picture turnedHalf(Press::Picture picture);
Press::Picture negated(Press::Picture picture);
Press::Picture withEffects(Press::Picture picture, const Press::Effects& effects);

// The largest difference between two pictures in any channel of any pixel; 256 when their sizes differ.
int difference(const Press::Picture& a, const Press::Picture& b);

// The colour of a pixel, counted from the top left, as 0xRRGGBB.
unsigned pixel(const Press::Picture& picture, int x, int y);

// Whether errors would be visible in the picture: it has several colours, and differs when mirrored or rotated.
bool isTelling(const Press::Picture& picture);
