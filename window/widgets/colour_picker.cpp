#include "window/widgets/colour_picker.h"

#include "host/widgets/list.h"
#include "window/widgets/images.h"
#include "window/widgets/roomy_button.h"

#include <QColorDialog>

#include <cmath>

namespace Window {
namespace {

// The side of a picker's swatch, at 96 dots per inch.
constexpr int swatchSide = 15;

// The colour list that a picker belongs to may have a newer choice than the picker.
QColor startColour(Refhost::ColorPicker& node, ShownTree& tree) {
  auto* list = dynamic_cast<Refhost::SelectorNode*>(tree.follow(node, "list"));
  const auto item = list == nullptr ? Kiln::SmartPtr<Kiln::XUL::ListItem>() : list->items().at(list->selection());
  const QColor chosen = item ? QColor(toQt(item->value().view())) : QColor();
  return chosen.isValid() ? chosen : QColor::fromRgb(node.colour());
}

}  // namespace

QWidget* buildColourPicker(Refhost::ColorPicker& node, ShownTree& tree, QWidget* parent) {
  auto* button = new RoomyButton(parent);
  tree.follow(node, "list");
  QObject::connect(button, &QPushButton::clicked, button, [&tree, &node, button] {
    auto* dialog = new QColorDialog(startColour(node, tree), button);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QColorDialog::colorSelected, button, [&tree, &node](const QColor& colour) {
      if (tree.contains(node)) tree.actions().pick(node, colour.rgb() & 0xFFFFFF);
    });
    dialog->open();
  });
  tree.add(node, button, [&tree, &node, button] {
    button->setText(tree.label(node));
    const int side = static_cast<int>(std::lround(swatchSide * button->devicePixelRatioF()));
    button->setIcon(swatch(startColour(node, tree), {side, side}, *button));
  });
  return button;
}

}  // namespace Window
