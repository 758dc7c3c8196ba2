#include "press/text/outlines.h"

#include "formats/sentences.h"
#include "formats/text.h"
#include "press/error.h"
#include "press/text/edge.h"
#include "press/text/faces.h"
#include "press/text/runs.h"

#include <hb.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Press {
namespace {

constexpr std::size_t mostCharacters = 1000;
constexpr double outlineOfSize = 1.0 / 48;     // stroke width relative to the text size
constexpr double thickeningOfSize = 1.0 / 36;  // stroke width of synthetic bold, relative to the text size
constexpr double touchingOfSize = 1.0 / 1000;  // the tolerance for adjacent letters, relative to the text size

// A single line: replaces line breaks by spaces.
std::u32string lineOf(const std::string& utf8) {
  std::u32string text = Formats::toUtf32(utf8);
  if (text.size() > mostCharacters)
    throw Error(Formats::sentence("The watermark's text has {1} characters: shorten it to at most {2}.", text.size(),
                                  mostCharacters));
  for (char32_t& character : text) {
    const bool breaks =
        character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 || character == 0x2029;
    if (breaks) character = U' ';
  }
  return text;
}

// Appends a glyph's outline at the pen position.
struct Pen {
  Path& path;
  Point origin;
  double scale = 1;

  Point at(float x, float y) const {
    return {origin.x + scale * static_cast<double>(x), origin.y + scale * static_cast<double>(y)};
  }
};

void move(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, float x, float y, void*) {
  const Pen& to = *static_cast<Pen*>(pen);
  to.path.push_back({PathStep::Kind::move, {to.at(x, y)}});
}

void line(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, float x, float y, void*) {
  const Pen& to = *static_cast<Pen*>(pen);
  to.path.push_back({PathStep::Kind::line, {to.at(x, y)}});
}

// Only cubic curves: the library converts quadratic ones, for which no function is set.
void curve(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, float x1, float y1, float x2, float y2, float x, float y,
           void*) {
  const Pen& to = *static_cast<Pen*>(pen);
  to.path.push_back({PathStep::Kind::curve, {to.at(x1, y1), to.at(x2, y2), to.at(x, y)}});
}

void close(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, void*) {
  static_cast<Pen*>(pen)->path.push_back({PathStep::Kind::close, {}});
}

using DrawFunctions = std::unique_ptr<hb_draw_funcs_t, decltype(&hb_draw_funcs_destroy)>;

DrawFunctions drawFunctions() {
  DrawFunctions functions(hb_draw_funcs_create(), hb_draw_funcs_destroy);
  hb_draw_funcs_set_move_to_func(functions.get(), move, nullptr, nullptr);
  hb_draw_funcs_set_line_to_func(functions.get(), line, nullptr, nullptr);
  hb_draw_funcs_set_cubic_to_func(functions.get(), curve, nullptr, nullptr);
  hb_draw_funcs_set_close_path_func(functions.get(), close, nullptr, nullptr);
  return functions;
}

// The empty box for a letter that no face has, of average width.
double drawMissing(Path& path, const Point& origin, double size) {
  const auto ring = [&](double inset, bool isInner) {
    const double left = origin.x + 0.06 * size + inset, right = origin.x + 0.54 * size - inset;
    const double bottom = origin.y + inset, top = origin.y + 0.7 * size - inset;
    path.push_back({PathStep::Kind::move, {{left, bottom}}});
    path.push_back({PathStep::Kind::line, {isInner ? Point{left, top} : Point{right, bottom}}});
    path.push_back({PathStep::Kind::line, {{right, top}}});
    path.push_back({PathStep::Kind::line, {isInner ? Point{right, bottom} : Point{left, top}}});
    path.push_back({PathStep::Kind::close, {}});
  };
  ring(0, false);
  ring(0.05 * size, true);
  return 0.6 * size;
}

// Shapes a run, appends its letters, and advances the pen.
void drawRun(const std::u32string& text, const TextRun& run, double size, hb_draw_funcs_t* functions,
             std::vector<Path>& letters, Point& pen) {
  const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(), hb_buffer_destroy);
  // Pass the whole text as context, so that letters at the run's ends join their neighbours.
  hb_buffer_add_utf32(buffer.get(), reinterpret_cast<const std::uint32_t*>(text.data()), static_cast<int>(text.size()),
                      static_cast<unsigned>(run.begin), static_cast<int>(run.end - run.begin));
  hb_buffer_set_direction(buffer.get(), run.direction);
  hb_buffer_set_script(buffer.get(), run.script);
  hb_buffer_set_language(buffer.get(), hb_language_get_default());
  hb_font_t* font = run.face->font.get();
  hb_shape(font, buffer.get(), nullptr, 0);

  const double scale = size / run.face->unitsToEm;
  unsigned count = 0;
  const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(buffer.get(), &count);
  const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
  for (unsigned index = 0; index < count; ++index) {
    Path& path = letters.emplace_back();
    if (glyphs[index].codepoint == 0) {
      pen.x += drawMissing(path, pen, size);
      continue;
    }
    const hb_glyph_position_t& position = positions[index];
    Pen to{path, {pen.x + scale * position.x_offset, pen.y + scale * position.y_offset}, scale};
    hb_font_get_glyph_shape(font, glyphs[index].codepoint, functions, &to);
    pen.x += scale * position.x_advance;
    pen.y += scale * position.y_advance;
  }
}

Path joined(const std::vector<Path>& letters) {
  Path path;
  for (const Path& letter : letters) path.insert(path.end(), letter.begin(), letter.end());
  return path;
}

// The range of coordinates that a path covers in one direction.
class Reach {
 public:
  void include(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }

  // Includes a curve's extrema; its control points lie further out.
  void includeCurve(double p0, double p1, double p2, double p3) {
    include(p3);
    // Zeros of the derivative a t^2 + b t + c.
    const double a = p3 - 3 * p2 + 3 * p1 - p0, b = 2 * (p2 - 2 * p1 + p0), c = p1 - p0;
    const auto includeAt = [&](double t) {
      if (!(t > 0 && t < 1)) return;
      const double u = 1 - t;
      include(u * u * u * p0 + 3 * u * u * t * p1 + 3 * u * t * t * p2 + t * t * t * p3);
    };
    const double root = std::sqrt(std::max(0.0, b * b - 4 * a * c));
    includeAt((-b + root) / (2 * a));
    includeAt((-b - root) / (2 * a));
    includeAt(-c / b);
  }

  double low = 1e300, high = -1e300;
};

Box boundsOf(const std::vector<OutlinePart>& parts) {
  Reach x, y;
  for (const OutlinePart& part : parts) {
    Reach partX, partY;
    Point at;
    for (const PathStep& step : part.path) {
      if (step.kind == PathStep::Kind::close) continue;
      if (step.kind == PathStep::Kind::curve) {
        partX.includeCurve(at.x, step.points[0].x, step.points[1].x, step.points[2].x);
        partY.includeCurve(at.y, step.points[0].y, step.points[1].y, step.points[2].y);
        at = step.points[2];
      } else {
        at = step.points[0];
        partX.include(at.x);
        partY.include(at.y);
      }
    }
    x.include(partX.low - part.lineWidth / 2);
    x.include(partX.high + part.lineWidth / 2);
    y.include(partY.low - part.lineWidth / 2);
    y.include(partY.high + part.lineWidth / 2);
  }
  return {x.low, y.low, x.high, y.high};
}

}  // namespace

Outlines outlinesOf(const Watermark& watermark) {
  const std::u32string text = lineOf(watermark.text);
  Outlines outlines;
  if (text.empty()) return outlines;
  const Faces faces(watermark, text);
  outlines.notes = faces.notes();

  std::vector<Path> plain, thickened;
  const DrawFunctions functions = drawFunctions();
  Point pen;
  for (const TextRun& run : runsOf(text, faces.ofCharacters())) {
    const bool isThickened = run.face->isToBeThickened && !watermark.isOutlined;
    drawRun(text, run, watermark.size, functions.get(), isThickened ? thickened : plain, pen);
  }
  if (watermark.isOutlined) {
    outlines.parts.push_back({edgeOf(plain, watermark.size * touchingOfSize), false, watermark.size * outlineOfSize});
  } else {
    outlines.parts.push_back({.path = joined(plain)});
    outlines.parts.push_back({.path = joined(thickened), .lineWidth = watermark.size * thickeningOfSize});
  }
  std::erase_if(outlines.parts, [](const OutlinePart& part) { return part.path.empty(); });
  if (!outlines.empty()) outlines.bounds = boundsOf(outlines.parts);
  return outlines;
}

}  // namespace Press
