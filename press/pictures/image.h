// Pictures in files, JPEG and PNG, as images of a PDF.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace Press {

struct Image {
  int width = 0;  // in pixels, as stored
  int height = 0;

  // Points per pixel across and down.
  double across = 0;
  double down = 0;

  // How the stored picture is to be turned for display: a value of the tag "Orientation" of EXIF, from 1 to 8.
  int orientation = 1;

  // Of the image's dictionary: its colour space, bits and filter. And its data, as that filter takes them.
  std::string entries = {};
  std::string data = {};

  // The opacity of each pixel in 8 bits, compressed by Flate; empty for an opaque picture.
  std::string opacity = {};
};

// Thrown for a picture that cannot be read: what it is, as the object of "is", without the file's name.
class ImageProblem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

bool isJpeg(std::string_view start);
bool isPng(std::string_view start);

// The data of a JPEG stay as they are. Throw ImageProblem.
Image readJpeg(std::string bytes);
Image readPng(std::string_view bytes);

// Points per pixel for pixels per inch; for a resolution that is not given, or absurd, as for 96.
double pointsPerPixel(double perInch);

}  // namespace Press
