// Any bytes as an overlay's picture: one that is taken stays one with bytes behind it, and is none without the end of
// its pixels. As pixels: the picture that the print side makes of them is taken, and no part of it is.
#include "fuzz/fuzzing.h"
#include "host/documents/bitmap.h"
#include "press/pictures/bitmap.h"

namespace {

using Fuzzing::demand;
using Refhost::isBitmap;

// The shortest part from the start that is a picture.
std::size_t shortestPicture(std::string_view bytes) {
  std::size_t none = 0, enough = bytes.size();
  while (enough - none > 1) {
    const std::size_t middle = none + (enough - none) / 2;
    (isBitmap(bytes.substr(0, middle)) ? enough : none) = middle;
  }
  return enough;
}

void checkFile(std::string_view bytes) {
  if (!isBitmap(bytes)) return;
  const std::size_t end = shortestPicture(bytes);
  for (std::size_t size = 0; size <= bytes.size(); ++size) demand(isBitmap(bytes.substr(0, size)) == (size >= end));
  demand(isBitmap(std::string(bytes) + "more"));
}

void checkPixels(std::string_view bytes) {
  if (bytes.empty()) return;
  Press::Picture picture;
  picture.width = static_cast<int>(bytes.size() % 40) + 1;
  picture.height = std::min(static_cast<int>(bytes.size()) / picture.width, 100);
  if (picture.height == 0) return;
  for (const char byte : bytes) picture.argb.push_back(static_cast<unsigned char>(byte) * 0x010203U);
  const std::string file = Press::bitmapFile(picture);
  demand(isBitmap(file));
  demand(shortestPicture(file) == file.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  checkFile(Fuzzing::text(data, size));
  checkPixels(Fuzzing::text(data, size));
  return 0;
}
