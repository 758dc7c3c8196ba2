#include "window/widgets/inputs.h"

#include "window/widgets/node_facts.h"
#include "window/widgets/notice.h"
#include "window/widgets/text_field.h"

#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>

namespace Window {
namespace {

// With the minus sign that labels have.
QString asLabel(int number) { return QString::number(number).replace('-', QChar(0x2212)); }

}  // namespace

QWidget* buildText(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent) {
  auto* field = new TextField(dynamic_cast<Refhost::TextBoxNode&>(node), tree.actions(), parent);
  if (node.kind() == Refhost::WidgetKind::integerTextBox) field->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
  const int width = number(node, "width");
  if (width > 0 && node.attribute("flex").empty()) field->setMaximumWidth(width);
  const auto& range = dynamic_cast<Refhost::TextBoxNode&>(node).range();
  const QString possible =
      range ? tree.around().texts("RANGE").arg(asLabel(range->least), asLabel(range->most)) : QString();
  tree.add(node, field, [field, possible] {
    if (!possible.isEmpty())
      field->setAccessibleDescription((field->accessibleDescription() + ' ' + possible).trimmed());
    field->refresh();
  });
  if (range) {
    const QString changed = tree.around().texts("RANGE_CHANGED").arg(asLabel(range->least), asLabel(range->most));
    QObject::connect(field, &TextField::limited, field, [field, possible, changed](bool isChanged) {
      showNotice(*field, isChanged ? changed : possible);
    });
  }
  tree.onForget([field] { field->forget(); });
  return field;
}

// A layout's scroll bar sets an amount, which is a slider on the desktop.
QWidget* buildScroll(Refhost::ScrollBar& node, ShownTree& tree, QWidget* parent) {
  auto* slider = new QSlider(node.attribute("orient") == u"vertical" ? Qt::Vertical : Qt::Horizontal, parent);
  // The slider itself has the values that people see beside it, since screen readers tell them.
  const int shift = number(node, "shownfrom", node.least()) - node.least();
  const int length = node.most() - node.least();
  slider->setRange(node.least() + shift, node.most() + shift);
  slider->setPageStep(std::max(1, length / 10));
  const auto showPosition = [&node, slider, shift] {
    const QSignalBlocker quiet(slider);
    slider->setValue(node.position() + shift);
  };
  QObject::connect(slider, &QSlider::valueChanged, slider, [&tree, &node, shift, showPosition](int value) {
    tree.actions().scroll(node, value - shift);
    showPosition();
  });
  tree.add(node, slider, showPosition);
  return slider;
}

}  // namespace Window
