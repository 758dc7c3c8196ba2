#include "press/job/form_file.h"

#include "formats/sentences.h"
#include "press/error.h"
#include "press/marks/place.h"
#include "press/pdf/box.h"
#include "press/pdf/bytes.h"
#include "press/pictures/image.h"

#include <algorithm>
#include <fstream>

namespace Press {
namespace {

constexpr std::size_t mostBytes = std::size_t{256} << 20;

// Turns the stored picture, in a square of one unit, as its orientation says.
Matrix upright(int orientation) {
  switch (orientation) {
    case 2: return {-1, 0, 0, 1, 1, 0};
    case 3: return {-1, 0, 0, -1, 1, 1};
    case 4: return {1, 0, 0, -1, 0, 1};
    case 5: return {0, -1, -1, 0, 1, 1};
    case 6: return {0, -1, 1, 0, 0, 1};
    case 7: return {0, 1, 1, 0, 0, 0};
    case 8: return {0, 1, -1, 0, 1, 0};
    default: return {};
  }
}

Matrix placed(const Image& image, const PicturePage& page) {
  double width = image.width * image.across, height = image.height * image.down;
  constexpr int firstOnItsSide = 5;
  if (image.orientation >= firstOnItsSide) std::swap(width, height);
  const auto [paperWidth, paperHeight] = page.paper;
  const double fitting = std::min(paperWidth / width, paperHeight / height);
  const double scale = page.fills ? fitting : std::min(fitting, 1.0);
  width *= scale;
  height *= scale;
  return upright(image.orientation) * Matrix{width, 0, 0, height, (paperWidth - width) / 2, (paperHeight - height) / 2};
}

std::string pageOf(const Image& image, const PicturePage& page) {
  const std::string size = "/Type /XObject /Subtype /Image /Width " + std::to_string(image.width) + " /Height " +
                           std::to_string(image.height) + " ";
  PdfBytes pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  std::string mask;
  if (!image.opacity.empty()) {
    constexpr const char* samples = "/ColorSpace /DeviceGray /BitsPerComponent 8 /Filter /FlateDecode ";
    mask = "/SMask " + reference(pdf.addStream(size + samples, image.opacity)) + " ";
  }
  const int picture = pdf.addStream(size + image.entries + mask, image.data);
  const int content = pdf.addStream("", "q " + concatenation(placed(image, page)) + " /Picture Do Q");
  const int only =
      pdf.add("<< /Type /Page /Parent " + reference(pages) + " /MediaBox [0 0 " + number(page.paper.width) + " " +
              number(page.paper.height) + "] /Contents " + reference(content) + " /Resources << /XObject << /Picture " +
              reference(picture) + " >> >> >>");
  pdf.set(pages, "<< /Type /Pages /Count 1 /Kids [" + reference(only) + "] >>");
  pdf.set(catalog, "<< /Type /Catalog /Pages " + reference(pages) + " >>");
  return pdf.finish(catalog);
}

// The first bytes of a file; of one that cannot be read, none: whoever opens it as a document says why.
std::string startOf(const std::filesystem::path& file) {
  std::string start(8, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0)));
  return start;
}

void write(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream stream(file, std::ios::binary);
  stream << bytes;
  if (!stream.flush()) throw Error(Formats::sentence("{1} cannot be written: free some space.", quoted(file)));
}

}  // namespace

FormFile::FormFile(const std::filesystem::path& given, const PicturePage& page) : file(given) {
  const std::string start = startOf(given);
  if (!isJpeg(start) && !isPng(start)) return;
  std::string bytes;
  try {
    bytes = Files::realDisk().read(given, mostBytes);
    const Image image = isPng(start) ? readPng(bytes) : readJpeg(std::move(bytes));
    folder = std::make_unique<Files::TemporaryFolder>();
    file = folder->path() / "form.pdf";
    write(file, pageOf(image, page));
  } catch (const Files::DiskError& problem) {
    throw Error(problem.what());
  } catch (const ImageProblem& problem) {
    throw Error(
        Formats::sentence("{1} cannot become an overlay, because it is {2}: save the picture again, as PNG or JPEG.",
                          quoted(given), problem.what()));
  }
}

}  // namespace Press
