#include "press/pdf/bytes.h"

#include <cstdio>

namespace Press {

int PdfBytes::reserve() {
  bodies.emplace_back();
  return static_cast<int>(bodies.size());
}

void PdfBytes::set(int number, std::string_view body) { bodies.at(static_cast<std::size_t>(number - 1)) = body; }

int PdfBytes::add(std::string_view body) {
  const int number = reserve();
  set(number, body);
  return number;
}

int PdfBytes::addStream(std::string_view dictionaryEntries, std::string_view data) {
  std::string body = "<< /Length " + std::to_string(data.size()) + " ";
  body.append(dictionaryEntries).append(" >>\nstream\n").append(data).append("\nendstream");
  return add(body);
}

std::string PdfBytes::finish(int catalog) const {
  std::string bytes = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";  // the second line marks the file as binary
  std::string table = "xref\n0 " + std::to_string(bodies.size() + 1) + "\n0000000000 65535 f \n";
  int number = 0;
  for (const std::string& body : bodies) {
    char row[32];
    std::snprintf(row, sizeof row, "%010zu 00000 n \n", bytes.size());
    table += row;
    bytes += std::to_string(++number) + " 0 obj\n" + body + "\nendobj\n";
  }
  const std::size_t start = bytes.size();
  return bytes + table + "trailer\n<< /Size " + std::to_string(bodies.size() + 1) + " /Root " + reference(catalog) +
         " >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
}

std::string reference(int number) { return std::to_string(number) + " 0 R"; }

}  // namespace Press
