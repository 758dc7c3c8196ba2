// Input widgets: text boxes, radio buttons, sliders, colour pickers.
#include "window/images.h"
#include "window/roomy_button.h"
#include "window/text_field.h"
#include "window/tree_view.h"
#include "window/watermark_view.h"

#include <QButtonGroup>
#include <QColorDialog>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>
#include <cmath>

namespace Window {
namespace {

using Refhost::WidgetNode;

// The side of a picker's swatch, at 96 dots per inch.
constexpr int swatchSide = 15;

// A radio button whose mark only the tree changes.
class FollowingRadioButton final : public QRadioButton {
 public:
  using QRadioButton::QRadioButton;

 protected:
  void nextCheckState() override {}
};

// Sets the mark; an exclusive button group would not clear its last one.
void showMark(QRadioButton& button, bool isMarked) {
  QButtonGroup* group = button.group();
  if (group != nullptr) group->setExclusive(false);
  button.setChecked(isMarked);
  if (group != nullptr) group->setExclusive(true);
}

}  // namespace

QWidget* TreeView::buildText(WidgetNode& node, QWidget* parent) {
  auto* field = new TextField(dynamic_cast<Refhost::TextBoxNode&>(node), parent);
  if (node.kind() == Refhost::WidgetKind::integerTextBox) field->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
  const int width = toQt(node.attribute("width")).toInt();
  if (width > 0 && node.attribute("flex").empty()) field->setMaximumWidth(width);
  show(node, field, [field] { field->refresh(); });
  return field;
}

QWidget* TreeView::buildRadio(Refhost::RadioButton& node, QWidget* parent) {
  auto* button = new FollowingRadioButton(parent);
  if (QButtonGroup* group = groupOf(node)) group->addButton(button);
  QObject::connect(button, &QRadioButton::clicked, button, [&node] { node.choose(); });
  show(node, button, [this, &node, button] {
    button->setText(shownLabel(node));
    showMark(*button, node.isChecked());
  });
  return button;
}

// The radio buttons of a <radiogroup> are one group for arrow keys and Tab, at any depth.
QButtonGroup* TreeView::groupOf(const WidgetNode& radio) {
  const WidgetNode* group = radio.parent();
  while (group != nullptr && group->attribute("element") != u"radiogroup") group = group->parent();
  const auto known = radioGroups.find(group);
  return known == radioGroups.end() ? nullptr : known->second;
}

// A layout's scroll bar sets an amount, which is a slider on the desktop.
QWidget* TreeView::buildScroll(Refhost::ScrollBar& node, QWidget* parent) {
  auto* slider = new QSlider(node.attribute("orient") == u"vertical" ? Qt::Vertical : Qt::Horizontal, parent);
  const int length = node.most() - node.least();
  slider->setRange(node.least(), node.most());
  slider->setPageStep(std::max(1, length / 10));
  const auto showPosition = [&node, slider] {
    const QSignalBlocker quiet(slider);
    slider->setValue(node.position());
  };
  QObject::connect(slider, &QSlider::valueChanged, slider, [&node, showPosition](int position) {
    node.scroll(position);
    showPosition();
  });
  show(node, slider, showPosition);
  return slider;
}

QWidget* TreeView::buildColourPicker(Refhost::ColorPicker& node, QWidget* parent) {
  auto* button = new RoomyButton(parent);
  follow(node, "list");
  QObject::connect(button, &QPushButton::clicked, button, [this, &node, button] {
    auto* dialog = new QColorDialog(startColour(node), button);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QColorDialog::colorSelected, button, [this, &node](const QColor& colour) {
      if (shown.contains(&node)) node.pick(colour.rgb() & 0xFFFFFF);
    });
    dialog->open();
  });
  show(node, button, [this, &node, button] {
    button->setText(shownLabel(node));
    const int side = static_cast<int>(std::lround(swatchSide * button->devicePixelRatioF()));
    button->setIcon(swatch(startColour(node), {side, side}, *button));
  });
  return button;
}

// The colour list that a picker belongs to may have a newer choice than the picker.
QColor TreeView::startColour(Refhost::ColorPicker& node) {
  auto* list = dynamic_cast<Refhost::SelectorNode*>(follow(node, "list"));
  const auto item = list == nullptr ? Kiln::SmartPtr<Kiln::XUL::ListItem>() : list->items().at(list->selection());
  const QColor chosen = item ? QColor(toQt(item->value().view())) : QColor();
  return chosen.isValid() ? chosen : QColor::fromRgb(node.colour());
}

QWidget* TreeView::buildPreview(Refhost::WatermarkPreview& node, QWidget* parent) {
  auto* view = new WatermarkView(surroundings.paper, parent);
  auto* outlined = dynamic_cast<Refhost::RadioButton*>(follow(node, "outlined"));
  show(node, view, [&node, view, outlined] {
    view->show(printedAs(node.watermark(), outlined != nullptr && outlined->isChecked()));
  });
  return view;
}

}  // namespace Window
