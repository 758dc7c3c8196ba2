#include "bench/press/text_job.h"

#include <random>

#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>

#include "press/pdf_bytes.h"

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

}  // namespace

std::string textJob(int pageCount) {
  using Press::reference;
  Press::PdfBytes pdf;
  std::mt19937 random(1);  // the same job every time
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int font = pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
  std::string kids;
  for (int page = 1; page <= pageCount; ++page) {
    const int content = pdf.addStream("/Filter /FlateDecode", deflated(pageText(random, page)));
    kids += reference(pdf.add("<< /Type /Page /Parent " + reference(pages) + " /MediaBox [0 0 595.28 841.89] " +
                              "/Resources << /Font << /F1 " + reference(font) + " >> >> /Contents " +
                              reference(content) + " >>")) +
            " ";
  }
  pdf.set(pages, "<< /Type /Pages /Count " + std::to_string(pageCount) + " /Kids [" + kids + "] >>");
  pdf.set(catalog, "<< /Type /Catalog /Pages " + reference(pages) + " >>");
  return pdf.finish(catalog);
}
