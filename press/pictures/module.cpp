#include "press/pictures/module.h"

#include "formats/sentences.h"

#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-image.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

#include <cmath>
#include <cstring>
#include <exception>
#include <fstream>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace {

constexpr double mostPixels = 200e6;  // 800 MB; an A0 poster at 300 dpi has 140 million

poppler::image draw(const char* pdf, std::size_t size, int number, double dpi) {
  poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr);
  if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw std::runtime_error(std::string(Formats::sentenceTemplate("the page is too large to be drawn")));
  const std::unique_ptr<poppler::document> document(poppler::document::load_from_raw_data(pdf, static_cast<int>(size)));
  const std::unique_ptr<poppler::page> page(document ? document->create_page(number - 1) : nullptr);
  if (!page) throw std::runtime_error(std::string(Formats::sentenceTemplate("the page cannot be read")));
  const poppler::rectf area = page->page_rect();
  const double pixels = area.width() * area.height() * (dpi / 72) * (dpi / 72);
  if (!(dpi > 0) || !(pixels <= mostPixels))
    throw std::runtime_error(
        std::string(Formats::sentenceTemplate("the page is too large to be drawn at this resolution")));
  poppler::page_renderer renderer;
  renderer.set_image_format(poppler::image::format_argb32);
  renderer.set_render_hints(poppler::page_renderer::antialiasing | poppler::page_renderer::text_antialiasing);
  poppler::image image = renderer.render_page(page.get(), dpi, dpi);
  if (!image.is_valid()) throw std::runtime_error(std::string(Formats::sentenceTemplate("the page cannot be drawn")));
  return image;
}

std::vector<std::uint32_t> pixelsOf(const poppler::image& image) {
  const std::size_t width = static_cast<std::size_t>(image.width());
  const std::size_t height = static_cast<std::size_t>(image.height());
  std::vector<std::uint32_t> pixels(width * height);
  for (std::size_t row = 0; row < height; ++row)
    std::memcpy(&pixels[row * width], image.const_data() + row * static_cast<std::size_t>(image.bytes_per_row()),
                width * sizeof(std::uint32_t));
  return pixels;
}

void save(const poppler::image& image, const char* path, double dpi) {
  // Poppler crashes when the file cannot be opened.
  if (!std::ofstream(path, std::ios::binary) || !image.save(path, "png", static_cast<int>(std::lround(dpi))))
    throw std::runtime_error(std::string(Formats::sentenceTemplate("the picture cannot be saved there")));
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void kilnDrawPage(const char* pdf, std::size_t size, int page,
                                                                    double dpi, const char* pngPath,
                                                                    KilnPictureReceiver receiver, void* context) {
  std::string error;
  try {
    const poppler::image image = draw(pdf, size, page, dpi);
    if (pngPath) save(image, pngPath, dpi);
    receiver(context, image.width(), image.height(), pixelsOf(image).data(), nullptr);
    return;
  } catch (const std::exception& problem) {
    error = problem.what();
  }
  receiver(context, 0, 0, nullptr, error.c_str());
}

static_assert(std::is_same_v<decltype(&kilnDrawPage), KilnDrawPage>);
