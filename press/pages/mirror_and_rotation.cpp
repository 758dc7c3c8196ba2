#include "press/pages/mirror_and_rotation.h"

#include <algorithm>
#include <cmath>

namespace Press {
namespace {

constexpr double pointsPerMillimetre = 72.0 / 25.4;

bool near(double value, double wanted) { return std::abs(value - wanted) <= 2 * pointsPerMillimetre; }

bool flips(const Effects& effects, Flip flip, const PageShape& shape) {
  return std::ranges::any_of(pageEffects, [&](const PageEffect& effect) {
    return effects.*effect.isOn && effect.flip == flip && (!effect.isForA3LedgerAlone || isA3OrLedger(shape));
  });
}

}  // namespace

bool isA3OrLedger(const PageShape& shape) {
  const double width = (shape.visible.x1 - shape.visible.x0) * shape.unit;
  const double height = (shape.visible.y1 - shape.visible.y0) * shape.unit;
  const double less = std::min(width, height);
  const double more = std::max(width, height);
  const bool a3 = near(less, 297 * pointsPerMillimetre) && near(more, 420 * pointsPerMillimetre);
  const bool ledger = near(less, 11 * 72) && near(more, 17 * 72);
  return a3 || ledger;
}

std::string placement(const PageShape& shape, const Effects& effects) {
  const bool halfTurn = flips(effects, Flip::halfTurn, shape);
  const bool mirrors = flips(effects, Flip::leftAndRight, shape);
  const bool liesOnItsSide = shape.turn == 90 || shape.turn == 270;
  // Half a turn flips both axes; the mirror flips the displayed page's horizontal axis.
  const bool flipX = halfTurn != (mirrors && !liesOnItsSide);
  const bool flipY = halfTurn != (mirrors && liesOnItsSide);
  if (!flipX && !flipY) return {};
  const Box& box = shape.visible;
  return std::string(flipX ? "-1" : "1") + " 0 0 " + (flipY ? "-1 " : "1 ") + number(flipX ? box.x0 + box.x1 : 0) +
         " " + number(flipY ? box.y0 + box.y1 : 0) + " cm\n";
}

}  // namespace Press
