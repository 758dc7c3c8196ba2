#include "press/text/edge.h"

#include <algorithm>
#include <cmath>

namespace Press {
namespace {

constexpr int curvePieces = 16;  // the number of line segments that approximate a curve

Point operator-(const Point& a, const Point& b) { return {a.x - b.x, a.y - b.y}; }
double cross(const Point& a, const Point& b) { return a.x * b.y - a.y * b.x; }
Point between(const Point& a, const Point& b, double t) { return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)}; }

Box around(const std::vector<Point>& points) {
  Box box{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const Point& point : points)
    box = {std::min(box.x0, point.x), std::min(box.y0, point.y), std::max(box.x1, point.x), std::max(box.y1, point.y)};
  return box;
}

Box around(const Box& a, const Box& b) {
  return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
}

bool meet(const Box& a, const Box& b, double distance) {
  return a.x0 <= b.x1 + distance && b.x0 <= a.x1 + distance && a.y0 <= b.y1 + distance && b.y0 <= a.y1 + distance;
}

// A line or a curve of a contour.
class Side {
 public:
  Side(const Point& from, const PathStep& step)
      : isCurve(step.kind == PathStep::Kind::curve),
        control{from, from, from, step.points[0]} {
    if (isCurve) std::ranges::copy(step.points, control + 1);
    const int pieces = isCurve ? curvePieces : 1;
    for (int piece = 0; piece <= pieces; ++piece) points.push_back(exactlyAt(static_cast<double>(piece) / pieces));
    box = around(points);
  }

  const Point& start() const { return control[0]; }
  Point end() const { return control[3]; }

  // The point on the segments at `t` from 0 to 1.
  Point at(double t) const {
    const std::size_t piece = pieceAt(t);
    return between(points[piece], points[piece + 1], t * pieces() - static_cast<double>(piece));
  }
  Point direction(double t) const { return points[pieceAt(t) + 1] - points[pieceAt(t)]; }

  // Adds the positions where the other side crosses this one.
  void addCrossings(const Side& other, std::vector<double>& crossings) const {
    for (std::size_t mine = 0; mine + 1 < points.size(); ++mine) {
      const Point along = points[mine + 1] - points[mine];
      for (std::size_t its = 0; its + 1 < other.points.size(); ++its) {
        const Point across = other.points[its + 1] - other.points[its];
        const double slant = cross(along, across);
        if (slant == 0) continue;  // the end of a parallel side belongs to another side that is not parallel
        const Point apart = other.points[its] - points[mine];
        const double t = cross(apart, across) / slant, u = cross(apart, along) / slant;
        if (isWithin(t) && isWithin(u)) crossings.push_back((static_cast<double>(mine) + t) / pieces());
      }
    }
  }

  // The winding contribution of this side to the point, for a ray to the right.
  int turnsAround(const Point& point) const {
    if (point.y < box.y0 || point.y >= box.y1 || point.x > box.x1) return 0;
    int turns = 0;
    for (std::size_t piece = 0; piece + 1 < points.size(); ++piece) {
      const Point &low = points[piece], &high = points[piece + 1];
      const bool rises = low.y <= point.y && point.y < high.y, falls = high.y <= point.y && point.y < low.y;
      if (!rises && !falls) continue;
      const double side = cross(high - low, point - low);
      if (rises && side > 0) ++turns;
      if (falls && side < 0) --turns;
    }
    return turns;
  }

  // The part of the side between the parameters `from` and `to`.
  PathStep part(double from, double to) const {
    if (!isCurve) return {PathStep::Kind::line, {to < 1 ? at(to) : end()}};
    if (from <= 0 && to >= 1) return {PathStep::Kind::curve, {control[1], control[2], control[3]}};
    const double third = (to - from) / 3;
    const Point first = exactlyAt(from), last = exactlyAt(to), out = slope(from), in = slope(to);
    return {PathStep::Kind::curve,
            {{first.x + third * out.x, first.y + third * out.y}, {last.x - third * in.x, last.y - third * in.y}, last}};
  }

  Box box;

 private:
  static bool isWithin(double t) {
    constexpr double rounding = 1e-9;
    return t >= -rounding && t <= 1 + rounding;
  }

  double pieces() const { return static_cast<double>(points.size() - 1); }
  std::size_t pieceAt(double t) const { return std::min(static_cast<std::size_t>(t * pieces()), points.size() - 2); }

  Point exactlyAt(double t) const {
    if (!isCurve) return between(control[0], control[3], t);
    const Point a = between(control[0], control[1], t), b = between(control[1], control[2], t);
    const Point c = between(control[2], control[3], t);
    return between(between(a, b, t), between(b, c, t), t);
  }
  Point slope(double t) const {
    const Point a = control[1] - control[0], b = control[2] - control[1], c = control[3] - control[2];
    const Point d = between(between(a, b, t), between(b, c, t), t);
    return {3 * d.x, 3 * d.y};
  }

  bool isCurve;
  Point control[4];
  std::vector<Point> points;
};

using Contour = std::vector<Side>;

struct Letter {
  std::vector<Contour> contours;
  Box box;
};

Letter letterOf(const Path& path) {
  Letter letter;
  Point start, at;
  const auto add = [&](const PathStep& step) {
    const Point from = at;
    at = step.points[step.kind == PathStep::Kind::curve ? 2 : 0];
    if (step.kind == PathStep::Kind::line && at.x == from.x && at.y == from.y) return;
    Contour& contour = letter.contours.back();
    contour.emplace_back(from, step);
    const bool isFirst = letter.contours.size() == 1 && contour.size() == 1;
    letter.box = isFirst ? contour.back().box : around(letter.box, contour.back().box);
  };
  for (const PathStep& step : path) {
    if (step.kind == PathStep::Kind::move) {
      letter.contours.emplace_back();
      start = at = step.points[0];
    } else if (step.kind == PathStep::Kind::close) {
      add({PathStep::Kind::line, {start}});
    } else {
      add(step);
    }
  }
  return letter;
}

class Edge {
 public:
  Edge(const std::vector<Path>& paths, double touchingDistance) : touching(touchingDistance) {
    for (const Path& path : paths) {
      Letter letter = letterOf(path);
      if (!letter.contours.empty()) letters.push_back(std::move(letter));
    }
  }

  Path run() {
    for (const Letter& letter : letters) {
      near.clear();
      for (const Letter& other : letters)
        if (meet(letter.box, other.box, touching)) near.push_back(&other);
      for (const Contour& contour : letter.contours) draw(contour);
    }
    return std::move(edge);
  }

 private:
  void draw(const Contour& contour) {
    bool isDrawing = false, isWhole = true;
    for (const Side& side : contour) {
      const std::vector<double> places = crossingsOf(side);
      for (std::size_t index = 0; index + 1 < places.size(); ++index) {
        const double from = places[index], to = places[index + 1];
        if (isInside(side, (from + to) / 2)) {
          isDrawing = isWhole = false;
          continue;
        }
        if (!isDrawing) edge.push_back({PathStep::Kind::move, {from > 0 ? side.at(from) : side.start()}});
        edge.push_back(side.part(from, to));
        isDrawing = true;
      }
    }
    if (isDrawing && isWhole) edge.push_back({PathStep::Kind::close, {}});
  }

  // Positions on the side, from 0 to 1, that divide it into parts entirely inside or outside.
  std::vector<double> crossingsOf(const Side& side) const {
    std::vector<double> places = {0, 1};
    for (const Letter* letter : near)
      for (const Contour& contour : letter->contours)
        for (const Side& other : contour)
          if (&other != &side && meet(side.box, other.box, touching)) side.addCrossings(other, places);
    std::ranges::sort(places);
    constexpr double nothing = 1e-6;
    std::vector<double> apart = {0};
    for (const double place : places)
      if (place > apart.back() + nothing && place < 1 - nothing) apart.push_back(place);
    apart.push_back(1);
    return apart;
  }

  // Whether both sides of the line are filled.
  bool isInside(const Side& side, double t) const {
    const Point at = side.at(t), along = side.direction(t);
    const double length = std::hypot(along.x, along.y);
    if (length == 0) return false;
    const Point left{-along.y / length * touching, along.x / length * touching};
    return isFilled({at.x + left.x, at.y + left.y}) && isFilled({at.x - left.x, at.y - left.y});
  }

  bool isFilled(const Point& point) const {
    int turns = 0;
    for (const Letter* letter : near)
      for (const Contour& contour : letter->contours)
        for (const Side& side : contour) turns += side.turnsAround(point);
    return turns != 0;
  }

  double touching;
  std::vector<Letter> letters;
  std::vector<const Letter*> near;  // letters near the one being drawn, including itself
  Path edge;
};

}  // namespace

Path edgeOf(const std::vector<Path>& letters, double touching) { return Edge(letters, touching).run(); }

}  // namespace Press
