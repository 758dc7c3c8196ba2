// A push button with more padding than some desktop styles provide.
#pragma once

#include <QPushButton>

namespace Window {

class RoomyButton final : public QPushButton {
 public:
  // Padding on either side of the text in pixels: preferred and minimum.
  static constexpr int beside = 12;
  static constexpr int leastBeside = 8;

  using QPushButton::QPushButton;

  QSize sizeHint() const override {
    QSize hint = QPushButton::sizeHint();
    const int iconWidth = icon().isNull() ? 0 : iconSize().width() + leastBeside;
    const int needed = fontMetrics().size(Qt::TextShowMnemonic, text()).width() + iconWidth + 2 * beside;
    return hint.expandedTo({needed, 0});
  }
  QSize minimumSizeHint() const override { return sizeHint(); }
};

}  // namespace Window
