#include "tests/press/rendering.h"

#include "press/pictures/loader.h"
#include "tests/press/test_job.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

using Press::Picture;

namespace {

Picture fromPpm(const std::string& bytes) {
  std::istringstream stream(bytes);
  std::string kind;
  Picture picture;
  int most = 0;
  stream >> kind;
  stream.get();
  while (stream.peek() == '#') stream.ignore(1000, '\n');
  stream >> picture.width >> picture.height >> most;
  stream.get();
  if (kind != "P6" || most != 255) throw std::runtime_error("not a picture");
  const std::size_t start = static_cast<std::size_t>(stream.tellg());
  const std::size_t count = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  for (std::size_t index = 0; index < count; ++index) {
    const auto channel = [&](std::size_t offset) {
      return std::uint32_t{static_cast<unsigned char>(bytes.at(start + 3 * index + offset))};
    };
    picture.argb.push_back(0xFF000000u | channel(0) << 16 | channel(1) << 8 | channel(2));
  }
  return picture;
}

}  // namespace

Picture render(const std::string& pdf, Renderer renderer) {
  if (renderer == Renderer::poppler) return Press::drawPage(pdf, 1, 72);
  const TestFolder folder;
  write(folder / "page.pdf", pdf);
  const std::string in = "'" + (folder / "page.pdf").string() + "'";
  const std::string out = "'" + (folder / "page.ppm").string() + "'";
  const CommandResult result =
      run(renderer == Renderer::mupdf
              ? "mutool draw -q -r 72 -F ppm -o " + out + " " + in + " 1"
              : "gs -q -dSAFER -dBATCH -dNOPAUSE -dUseCropBox -dLastPage=1 -sDEVICE=ppmraw -r72 -sOutputFile=" + out +
                    " " + in);
  if (!std::filesystem::exists(folder / "page.ppm"))  // Warnings about strange content are not failures.
    throw std::runtime_error(result.output);
  return fromPpm(read(folder / "page.ppm"));
}

Picture mirrored(Picture picture) {
  for (auto row = picture.argb.begin(); row != picture.argb.end(); row += picture.width)
    std::reverse(row, row + picture.width);
  return picture;
}

Picture turnedHalf(Picture picture) {
  std::reverse(picture.argb.begin(), picture.argb.end());
  return picture;
}

Picture negated(Picture picture) {
  for (std::uint32_t& colour : picture.argb) colour ^= 0x00FFFFFFu;
  return picture;
}

Picture withEffects(Picture picture, const Press::Effects& effects) {
  if (effects.mirrorImage) picture = mirrored(std::move(picture));
  const bool isA3 = picture.width == 842 && picture.height == 1191;
  if (effects.rotate180 || (effects.rotate180ForA3Ledger && isA3)) picture = turnedHalf(std::move(picture));
  if (effects.negativeImage) picture = negated(std::move(picture));
  return picture;
}

int difference(const Picture& a, const Picture& b) {
  if (a.width != b.width || a.height != b.height) return 256;
  int most = 0;
  for (std::size_t index = 0; index < a.argb.size(); ++index)
    for (const int shift : {0, 8, 16})
      most = std::max(most, std::abs(static_cast<int>(a.argb[index] >> shift & 0xFF) -
                                     static_cast<int>(b.argb[index] >> shift & 0xFF)));
  return most;
}

unsigned pixel(const Picture& picture, int x, int y) {
  return picture.argb.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                         static_cast<std::size_t>(x)) &
         0xFFFFFFu;
}

bool isTelling(const Picture& picture) {
  return difference(picture, mirrored(picture)) > 64 && difference(picture, turnedHalf(picture)) > 64 &&
         difference(mirrored(picture), turnedHalf(picture)) > 64;
}

// Fontconfig caches data until the process ends, which the leak sanitizer reports.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
