#pragma once

#include <string>

#include "press/pictures.h"

namespace Press {

/// The picture as the bytes of a BMP file of 24 bits to a pixel.
std::string bitmapFile(const Picture& picture);

}  // namespace Press
