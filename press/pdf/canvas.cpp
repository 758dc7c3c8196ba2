#include "press/pdf/canvas.h"

#include "press/pdf/box.h"

#include <algorithm>
#include <array>

namespace Press {
namespace {

// Widths of Helvetica's characters from space to tilde, in thousandths of the size; the bold face is slightly wider.
constexpr std::array<int, 95> widths = {278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,
                                        556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,
                                        1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
                                        667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,
                                        333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
                                        556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};

double widthOf(std::string_view line, double size, bool bold) {
  int thousandths = 0;
  for (const char c : line) thousandths += widths.at(static_cast<std::size_t>(c - ' '));
  return thousandths * size / 1000 * (bold ? 1.06 : 1);
}

std::string escaped(std::string_view line) {
  std::string result;
  for (const char c : line) {
    if (c == '(' || c == ')' || c == '\\') result += '\\';
    result += c;
  }
  return result;
}

}  // namespace

void Canvas::fill(Ink ink, double x, double y, double width, double height) {
  raw(std::string(ink) + " " + rectangle({x, y, x + width, y + height}) + " f");
}

void Canvas::stroke(Ink ink, double lineWidth, double x0, double y0, double x1, double y1) {
  // The stroke colour operators are the fill operators in upper case.
  std::string line(ink);
  for (char& c : line) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  raw(line + " " + number(lineWidth) + " w " + number(x0) + " " + number(y0) + " m " + number(x1) + " " + number(y1) +
      " l S");
}

void Canvas::text(Ink ink, bool bold, double size, double x, double y, std::string_view line, Align align) {
  if (align != Align::left) x -= widthOf(line, size, bold) / (align == Align::centre ? 2 : 1);
  raw(std::string(ink) + " BT " + (bold ? "/F2 " : "/F1 ") + number(size) + " Tf " + number(x) + " " + number(y) +
      " Td (" + escaped(line) + ") Tj ET");
}

double Canvas::paragraph(Ink ink, double size, double x, double y, double width, std::string_view words) {
  const double leading = size * 1.45;
  std::string line;
  const auto flush = [&] {
    text(ink, false, size, x, y, line);
    y -= leading;
    line.clear();
  };
  while (!words.empty()) {
    const std::size_t end = std::min(words.find(' '), words.size());
    const std::string_view word = words.substr(0, end);
    words.remove_prefix(std::min(end + 1, words.size()));
    if (!line.empty() && widthOf(line, size, false) + widthOf(" ", size, false) + widthOf(word, size, false) > width)
      flush();
    line.append(line.empty() ? "" : " ").append(word);
  }
  flush();
  return y;
}

void Canvas::raw(std::string_view operators) { written.append(operators).append("\n"); }

}  // namespace Press
