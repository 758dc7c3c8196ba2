#pragma once

#include "press/pictures/picture.h"

#include <string>

namespace Press {

// Encodes the picture as a BMP file with 24 bits per pixel.
std::string bitmapFile(const Picture& picture);

}  // namespace Press
