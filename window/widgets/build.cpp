#include "window/widgets/build.h"

#include "window/widgets/buttons.h"
#include "window/widgets/colour_picker.h"
#include "window/widgets/containers.h"
#include "window/widgets/inputs.h"
#include "window/widgets/label.h"
#include "window/widgets/lists.h"
#include "window/widgets/pictures.h"

#include <stdexcept>

namespace Window {

using Refhost::WidgetKind;

QWidget* build(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent) {
  switch (node.kind()) {
    case WidgetKind::box:
    case WidgetKind::tab: return buildBox(node, tree, parent);
    case WidgetKind::groupBox: return buildGroup(node, tree, parent);
    case WidgetKind::label: return buildLabel(dynamic_cast<Refhost::Label&>(node), tree, parent);
    case WidgetKind::image: return buildImage(dynamic_cast<Refhost::ImageBox&>(node), tree, parent);
    case WidgetKind::button: return buildButton(dynamic_cast<Refhost::Button&>(node), tree, parent);
    case WidgetKind::checkBox: return buildCheckBox(dynamic_cast<Refhost::CheckBox&>(node), tree, parent);
    case WidgetKind::listBox: return buildList(node, tree, parent);
    case WidgetKind::comboBox: return buildCombo(node, tree, parent);
    case WidgetKind::radioButton: return buildRadio(dynamic_cast<Refhost::RadioButton&>(node), tree, parent);
    case WidgetKind::textBox:
    case WidgetKind::integerTextBox: return buildText(node, tree, parent);
    case WidgetKind::scrollBar: return buildScroll(dynamic_cast<Refhost::ScrollBar&>(node), tree, parent);
    case WidgetKind::colorPicker: return buildColourPicker(dynamic_cast<Refhost::ColorPicker&>(node), tree, parent);
    case WidgetKind::preview: return buildPreview(dynamic_cast<Refhost::WatermarkPreview&>(node), tree, parent);
    case WidgetKind::spacer: break;
  }
  throw std::logic_error(std::string("the window cannot show a ") + nameOf(node.kind()));
}

}  // namespace Window
