#include "press/pdf/field_look.h"

#include "formats/text.h"
#include "press/text/outlines.h"
#include "press/text/outlines_content.h"

#include <algorithm>
#include <map>

namespace Press {
namespace {

// Metrics that PDF readers use for fields, relative to the text size.
constexpr double capitals = 0.7;        // height of a capital
constexpr double firstBaseline = 0.95;  // below the upper edge
constexpr double leading = 1.15;
constexpr double wordSpace = 0.28;
constexpr double ofHeight = 0.67;  // text size relative to the field's height
constexpr double flowingSize = 12;
constexpr double smallestSize = 4;

// Text to be written at any size. Shapes each piece once.
class Writing {
 public:
  explicit Writing(const FieldText& text) {
    style.face = text.face;
    style.isBold = text.isBold;
    style.isItalic = text.isItalic;
    style.size = shapedSize;
  }

  double widthOf(const std::string& piece) {
    const Outlines& drawn = outlines(piece);
    return drawn.empty() ? 0 : drawn.bounds.x1 * size / shapedSize;
  }

  // Content that draws the piece at this position on the baseline.
  std::string drawn(const std::string& piece, double x, double y) {
    const Outlines& shapes = outlines(piece);
    if (shapes.empty()) return {};
    const std::string scale = number(size / shapedSize);
    return "q " + scale + " 0 0 " + scale + " " + number(x, 3) + " " + number(y, 3) + " cm\n" + contentOf(shapes) +
           "Q\n";
  }

  // The lines of the text, wrapped to `width`. A word that is too wide gets its own line.
  std::vector<std::string> linesWithin(double width, const FieldText& text) {
    std::vector<std::string> lines;
    for (const std::string& line : text.lines) {
      std::string current;
      double reached = 0;
      for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find(' ', begin), line.size());
        const std::string word = line.substr(begin, end - begin);
        begin = end + 1;
        const double wordWidth = widthOf(word), space = current.empty() ? 0 : wordSpace * size;
        if (!current.empty() && reached + space + wordWidth > width) {
          lines.push_back(current);
          current = word;
          reached = wordWidth;
        } else {
          current += (current.empty() ? "" : " ") + word;
          reached += space + wordWidth;
        }
      }
      lines.push_back(current);
    }
    return lines;
  }

  double size = shapedSize;

 private:
  static constexpr double shapedSize = 100;

  const Outlines& outlines(const std::string& piece) {
    const auto [known, added] = outlinesByPiece.try_emplace(piece);
    if (added) {
      style.text = piece;
      known->second = outlinesOf(style);
    }
    return known->second;
  }

  Watermark style;
  std::map<std::string, Outlines> outlinesByPiece;
};

double startOf(int alignment, double room, double width) {
  return alignment == 1 ? (room - width) / 2 : alignment == 2 ? room - width : 0;
}

std::string flowing(Writing& writing, const FieldText& text, const Box& room) {
  std::string drawn;
  const double width = room.x1 - room.x0;
  double y = room.y1 - firstBaseline * writing.size;
  for (const std::string& line : writing.linesWithin(width, text)) {
    drawn += writing.drawn(line, room.x0 + startOf(text.alignment, width, writing.widthOf(line)), y);
    y -= leading * writing.size;
  }
  return drawn;
}

std::string inCells(Writing& writing, const FieldText& text, const Box& room, double baseline) {
  std::string drawn;
  const double width = (room.x1 - room.x0) / text.cells;
  double x = room.x0;
  for (const char32_t character : Formats::toUtf32(text.lines.front())) {
    const std::string letter = Formats::toUtf8(character);
    drawn += writing.drawn(letter, x + startOf(1, width, writing.widthOf(letter)), baseline);
    x += width;
  }
  return drawn;
}

// Chooses a size for text without one, so that all of it fits.
void fit(Writing& writing, const FieldText& text, const Box& room) {
  const double width = room.x1 - room.x0, height = room.y1 - room.y0;
  if (text.flows) {
    const auto needed = [&] {
      const auto lines = static_cast<double>(writing.linesWithin(width, text).size());
      return writing.size * (firstBaseline + leading * (lines - 1));
    };
    writing.size = flowingSize;
    while (writing.size > smallestSize && needed() > height) --writing.size;
    return;
  }
  writing.size = std::max(ofHeight * height, smallestSize);
  const double reached = text.cells > 0 ? 0 : writing.widthOf(text.lines.front());
  if (reached > width) writing.size = std::max(writing.size * width / reached, smallestSize);
}

std::string paper(const FieldFrame& frame) {
  const std::string all = rectangle({0, 0, frame.width, frame.height});
  std::string drawn;
  if (!frame.background.empty()) drawn += "q " + frame.background + " " + all + " f Q\n";
  if (frame.border.empty() || frame.borderWidth <= 0) return drawn;
  const double half = frame.borderWidth / 2;
  return drawn + "q " + frame.border + " " + number(frame.borderWidth, 3) + " w " +
         rectangle({half, half, frame.width - half, frame.height - half}) + " S Q\n";
}

}  // namespace

QPDFObjectHandle fieldLook(PageContent& content, const FieldFrame& frame, const FieldText& text) {
  const Box all{0, 0, frame.width, frame.height};
  std::string drawn = paper(frame);
  const double edge = text.cells > 0 ? 0 : 2 + (frame.border.empty() ? 0 : frame.borderWidth);
  const Box room{edge, edge, std::max(frame.width - edge, edge + 1), std::max(frame.height - edge, edge + 1)};
  if (!text.lines.empty()) {
    Writing writing(text);
    writing.size = text.size;
    if (text.size <= 0) fit(writing, text, room);
    const double baseline = (frame.height - capitals * writing.size) / 2;
    const double width = room.x1 - room.x0;
    const std::string& line = text.lines.front();
    drawn += "/Tx BMC q " + rectangle(all) + " W n " + (text.colour.empty() ? "0 g" : text.colour) + "\n";
    if (text.flows)
      drawn += flowing(writing, text, room);
    else if (text.cells > 0)
      drawn += inCells(writing, text, room, baseline);
    else
      drawn += writing.drawn(line, room.x0 + startOf(text.alignment, width, writing.widthOf(line)), baseline);
    drawn += "Q EMC\n";
  }
  return content.newForm(all, drawn, QPDFObjectHandle::newDictionary());
}

}  // namespace Press
