// The common outline of letters.

#include "press/text/edge.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

using Press::edgeOf;
using Press::Path;
using Press::PathStep;
using Press::Point;

namespace {

constexpr double touching = 0.1;

Path polygon(const std::vector<Point>& corners) {
  Path path;
  for (const Point& corner : corners)
    path.push_back({path.empty() ? PathStep::Kind::move : PathStep::Kind::line, {corner, {}, {}}});
  path.push_back({PathStep::Kind::close, {}});
  return path;
}

Path square(double x0, double y0, double x1, double y1) { return polygon({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}}); }

Path circle(double x, double y, double radius) {
  const double steer = 0.5522847498 * radius;
  const auto quarter = [&](Point a, Point b, Point end) {
    return PathStep{PathStep::Kind::curve, {{x + a.x, y + a.y}, {x + b.x, y + b.y}, {x + end.x, y + end.y}}};
  };
  return {{PathStep::Kind::move, {{x + radius, y}, {}, {}}},
          quarter({radius, steer}, {steer, radius}, {0, radius}),
          quarter({-steer, radius}, {-radius, steer}, {-radius, 0}),
          quarter({-radius, -steer}, {-steer, -radius}, {0, -radius}),
          quarter({steer, -radius}, {radius, -steer}, {radius, 0}),
          {PathStep::Kind::close, {}}};
}

double distance(const Point& a, const Point& b) { return std::hypot(b.x - a.x, b.y - a.y); }

// The length of a path's line.
double length(const Path& path) {
  double sum = 0;
  Point start, at;
  for (const PathStep& step : path) {
    if (step.kind == PathStep::Kind::move) {
      start = at = step.points[0];
    } else if (step.kind == PathStep::Kind::curve) {
      const Point& a = step.points[0];
      const Point& b = step.points[1];
      const Point& end = step.points[2];
      const Point from = at;
      for (int piece = 1; piece <= 1000; ++piece) {
        const double t = piece / 1000.0, u = 1 - t;
        const auto on = [&](double p0, double p1, double p2, double p3) {
          return u * u * u * p0 + 3 * u * u * t * p1 + 3 * u * t * t * p2 + t * t * t * p3;
        };
        const Point next{on(from.x, a.x, b.x, end.x), on(from.y, a.y, b.y, end.y)};
        sum += distance(at, next);
        at = next;
      }
    } else {
      const Point next = step.kind == PathStep::Kind::close ? start : step.points[0];
      sum += distance(at, next);
      at = next;
    }
  }
  return sum;
}

}  // namespace

TEST(EdgeOfLetters, IsThatOfEachWhereTheyLieApart) {
  EXPECT_NEAR(length(edgeOf({square(0, 0, 10, 10), square(20, 0, 30, 10)}, touching)), 80, 1e-9);
  EXPECT_NEAR(length(edgeOf({circle(0, 0, 10)}, touching)), length(circle(0, 0, 10)), 1e-9);
}

TEST(EdgeOfLetters, HasNoLineThroughWhatTheyShare) {
  EXPECT_NEAR(length(edgeOf({square(0, 0, 10, 10), square(5, 5, 15, 15)}, touching)), 60, 1e-9);
  EXPECT_NEAR(length(edgeOf({square(0, 4, 10, 6), square(4, 0, 6, 10)}, touching)), 40, 1e-9);  // a cross
}

TEST(EdgeOfLetters, HasNoLineWhereTheyMeet) {
  EXPECT_NEAR(length(edgeOf({square(0, 0, 10, 10), square(10, 0, 20, 10)}, touching)), 60, 1e-9);
  EXPECT_NEAR(length(edgeOf({square(0, 0, 10, 10), square(10, 2, 20, 8)}, touching)), 40 + 20, 1e-9);
  EXPECT_NEAR(length(edgeOf({square(0, 0, 10, 10), square(10.05, 0, 20, 10)}, touching)), 60, 0.2);
  EXPECT_NEAR(length(edgeOf({square(0, 0, 10, 10), square(10.3, 0, 20, 10)}, touching)), 40 + 39.4, 1e-9);
}

TEST(EdgeOfLetters, IsTheOuterOneWhereOneLiesInTheOther) {
  EXPECT_NEAR(length(edgeOf({square(0, 0, 10, 10), square(2, 2, 8, 8)}, touching)), 40, 1e-9);
  EXPECT_NEAR(length(edgeOf({square(2, 2, 8, 8), circle(5, 5, 30)}, touching)), length(circle(5, 5, 30)), 1e-9);
}

TEST(EdgeOfLetters, KeepsTheHolesInThem) {
  Path ring = square(0, 0, 10, 10);
  const Path hole = polygon({{2, 2}, {2, 8}, {8, 8}, {8, 2}});
  ring.insert(ring.end(), hole.begin(), hole.end());
  EXPECT_NEAR(length(edgeOf({ring}, touching)), 40 + 24, 1e-9);
  EXPECT_NEAR(length(edgeOf({ring, square(5, 4, 30, 6)}, touching)), (40 - 2) + (24 - 2) + 8 + 42, 1e-9);
}

TEST(EdgeOfLetters, FollowsCurvesToWhereTheyMeet) {
  // Two circles, each through the other's centre: two thirds of both are visible.
  EXPECT_NEAR(length(edgeOf({circle(0, 0, 30), circle(30, 0, 30)}, touching)), 2 * length(circle(0, 0, 30)) * 2 / 3,
              0.2);
  // Half a circle on a square.
  EXPECT_NEAR(length(edgeOf({square(-50, -100, 50, 0), circle(0, 0, 20)}, touching)),
              400 - 40 + length(circle(0, 0, 20)) / 2, 0.2);
}

TEST(EdgeOfLetters, RunsAroundJoinedLettersNotBetweenThem) {
  const auto lengths = [](const char* word) {
    Press::Watermark mark;
    mark.text = word;
    mark.face = "DejaVu Sans";
    const double ofEach = length(Press::outlinesOf(mark).parts.at(0).path);
    mark.isOutlined = true;
    return std::pair(ofEach, length(Press::outlinesOf(mark).parts.at(0).path));
  };
  const auto [apart, apartEdge] = lengths("abc");
  EXPECT_NEAR(apartEdge, apart, 1e-9);
  const auto [joined, joinedEdge] = lengths("ببب");
  constexpr double strokeWidth = 6;  // a minimum; two joins have the ends of two letters each
  EXPECT_LT(joinedEdge, joined - 2 * 2 * strokeWidth);
  EXPECT_GT(joinedEdge, joined / 2);
}

TEST(EdgeOfLetters, IsNothingOfNothing) {
  EXPECT_TRUE(edgeOf({}, touching).empty());
  EXPECT_TRUE(edgeOf({Path(), Path()}, touching).empty());
}
