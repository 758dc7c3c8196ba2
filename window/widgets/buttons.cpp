#include "window/widgets/buttons.h"

#include "window/widgets/node_facts.h"
#include "window/widgets/roomy_button.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>

#include <algorithm>
#include <utility>

namespace Window {
namespace {

// A check box or radio button whose mark only the tree changes: clicks are forwarded, the mark follows.
template <class Button>
class Following final : public Button {
 public:
  using Button::Button;

 protected:
  void nextCheckState() override {}
};

// Screen readers toggle the mark without a click. A radio button loses its mark to another one, which is toggled.
template <class Node>
void forwardClicks(QAbstractButton& button, Node& node, ShownTree& tree) {
  const auto click = [&tree, &node] { tree.actions().click(node); };
  QObject::connect(&button, &QAbstractButton::clicked, &button, click);
  QObject::connect(&button, &QAbstractButton::toggled, &button, [&button, &node, click](bool isMarked) {
    const bool isLost = !isMarked && button.autoExclusive();
    if (isMarked != node.isChecked() && !isLost) click();
  });
}

// Sets the mark; an exclusive button group would not clear its last one.
void showMark(QRadioButton& button, bool isMarked) {
  QButtonGroup* group = button.group();
  if (group != nullptr) group->setExclusive(false);
  button.setChecked(isMarked);
  if (group != nullptr) group->setExclusive(true);
}

// The group of radio buttons in the widget; null for none.
QButtonGroup* groupAround(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget())
    if (auto* group = widget->findChild<QButtonGroup*>(QString(), Qt::FindDirectChildrenOnly)) return group;
  return nullptr;
}

}  // namespace

void showIn(QPushButton& button, const Refhost::WidgetNode& node, ShownTree& tree, std::function<void()> press) {
  QObject::connect(&button, &QPushButton::clicked, &button, std::move(press));
  tree.add(node, &button, [&tree, &node, &button] { button.setText(tree.label(node)); });
}

// A button's set width is a minimum: most texts are wider than a symbol.
QWidget* buildButton(Refhost::Button& node, ShownTree& tree, QWidget* parent) {
  auto* button = new RoomyButton(parent);
  showIn(*button, node, tree, [&tree, &node] { tree.actions().click(node); });
  if (const int width = number(node, "width"); width > 0)
    button->setFixedWidth(
        std::max(width, button->fontMetrics().horizontalAdvance(button->text()) + 2 * RoomyButton::leastBeside));
  return button;
}

QWidget* buildCheckBox(Refhost::CheckBox& node, ShownTree& tree, QWidget* parent) {
  auto* box = new Following<QCheckBox>(parent);
  forwardClicks(*box, node, tree);
  tree.add(node, box, [&tree, &node, box] {
    box->setText(tree.label(node));
    box->setChecked(node.isChecked());
  });
  return box;
}

QWidget* buildRadio(Refhost::RadioButton& node, ShownTree& tree, QWidget* parent) {
  auto* button = new Following<QRadioButton>(parent);
  if (QButtonGroup* group = groupAround(parent)) group->addButton(button);
  forwardClicks(*button, node, tree);
  tree.add(node, button, [&tree, &node, button] {
    button->setText(tree.label(node));
    showMark(*button, node.isChecked());
  });
  return button;
}

void groupRadiosIn(QWidget& box) { new QButtonGroup(&box); }

}  // namespace Window
