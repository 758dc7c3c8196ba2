#include "bench/press/sample_jobs.h"

#include "press/pdf/bytes.h"
#include "press/pdf/qpdf.h"

#include <random>
#include <vector>

namespace {

constexpr int linesOnPage = 35;

std::string pageText(std::mt19937& random, int page) {
  const auto word = [&random] {
    std::string letters;
    for (auto left = 3 + random() % 6; left > 0; --left) letters += "eeetaaoinnshrdlucmfwyp"[random() % 22];
    return letters;
  };
  std::string text = "BT\n/F1 11 Tf\n14 TL\n56 780 Td\n(Page " + std::to_string(page) + ") Tj T*\n";
  for (int line = 0; line < linesOnPage; ++line) {
    text += "(";
    for (int count = 0; count < 12; ++count) text += word() + " ";
    text += ") Tj T*\n";
  }
  return text + "ET\n";
}

std::string deflated(const std::string& data) {
  std::string result;
  Pl_String sink("deflated", nullptr, result);
  Pl_Flate deflate("deflate", &sink, Pl_Flate::a_deflate);
  deflate.writeString(data);
  deflate.finish();
  return result;
}

// Completes a job whose page dictionaries have this content.
std::string finished(Press::PdfBytes& pdf, int pages, const std::vector<std::string>& sheets) {
  using Press::reference;
  std::string kids;
  for (const std::string& sheet : sheets)
    kids += reference(pdf.add("<< /Type /Page /Parent " + reference(pages) + " /MediaBox [0 0 595.28 841.89] " + sheet +
                              " >>")) +
            " ";
  pdf.set(pages, "<< /Type /Pages /Count " + std::to_string(sheets.size()) + " /Kids [" + kids + "] >>");
  return pdf.finish(pdf.add("<< /Type /Catalog /Pages " + reference(pages) + " >>"));
}

}  // namespace

std::string textJob(int pageCount) {
  using Press::reference;
  Press::PdfBytes pdf;
  std::mt19937 random(1);  // always the same job
  const int pages = pdf.reserve();
  const int font = pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
  std::vector<std::string> sheets;
  for (int page = 1; page <= pageCount; ++page)
    sheets.push_back("/Resources << /Font << /F1 " + reference(font) + " >> >> /Contents " +
                     reference(pdf.addStream("/Filter /FlateDecode", deflated(pageText(random, page)))));
  return finished(pdf, pages, sheets);
}

std::string scanJob(int pageCount) {
  using Press::reference;
  constexpr int width = 1000, height = 1333;
  Press::PdfBytes pdf;
  std::mt19937 random(1);
  const int pages = pdf.reserve();
  const int content = pdf.addStream("", "q 595.28 0 0 841.89 0 0 cm /Scan Do Q");
  std::vector<std::string> sheets;
  for (int page = 1; page <= pageCount; ++page) {
    std::string pixels(std::size_t{3} * width * height, '\0');
    for (char& sample : pixels) sample = static_cast<char>(random());
    const int image = pdf.addStream("/Type /XObject /Subtype /Image /Width " + std::to_string(width) + " /Height " +
                                        std::to_string(height) + " /ColorSpace /DeviceRGB /BitsPerComponent 8",
                                    pixels);
    sheets.push_back("/Resources << /XObject << /Scan " + reference(image) + " >> >> /Contents " + reference(content));
  }
  return finished(pdf, pages, sheets);
}
