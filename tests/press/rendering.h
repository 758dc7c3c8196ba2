#pragma once

#include <string>

#include "press/effects.h"
#include "press/pictures.h"

/// The programs that have to agree on how a page looks.
enum class Renderer { poppler, mupdf, ghostscript };
inline constexpr Renderer allRenderers[] = {Renderer::poppler, Renderer::mupdf, Renderer::ghostscript};

/// The first page as it is seen, one pixel to a point.
Press::Picture render(const std::string& pdf, Renderer renderer = Renderer::poppler);

/// What each effect does to a picture of a page.
Press::Picture mirrored(Press::Picture picture);
Press::Picture turnedHalf(Press::Picture picture);
Press::Picture negated(Press::Picture picture);
Press::Picture withEffects(Press::Picture picture, const Press::Effects& effects);

/// The largest difference between two pictures in any channel of any pixel; 256 when their sizes differ.
int difference(const Press::Picture& a, const Press::Picture& b);

/// The colour of a pixel counted from the top left, as 0xRRGGBB.
unsigned pixel(const Press::Picture& picture, int x, int y);

/// Whether the picture shows anything that could look wrong: more than one colour, and not the same mirrored or turned.
bool isTelling(const Press::Picture& picture);
