#include "window/widgets/containers.h"

#include "window/widgets/build.h"
#include "window/widgets/buttons.h"
#include "window/widgets/node_facts.h"

#include <QBoxLayout>
#include <QGroupBox>

namespace Window {
namespace {

using Refhost::WidgetKind;
using Refhost::WidgetNode;

bool runsAcross(const WidgetNode& box) {
  return box.attribute("element") == u"hbox" || box.attribute("orient") == u"horizontal";
}

// Whether the node is a dialog button, which is shown beside OK and Cancel.
bool isDialogButton(const WidgetNode& node) { return !node.attribute("dlgtype").empty(); }

// The alignment of a child across the box's direction; nothing when it fills the box.
Qt::Alignment crossAlignment(const WidgetNode& box) {
  const std::u16string align = box.attribute("align");
  if (align == u"center") return runsAcross(box) ? Qt::AlignVCenter : Qt::AlignHCenter;
  if (align == u"start") return runsAcross(box) ? Qt::AlignTop : Qt::AlignLeft;
  if (align == u"end") return runsAcross(box) ? Qt::AlignBottom : Qt::AlignRight;
  return {};
}

bool hasFlexibleChild(const WidgetNode& box) {
  for (const WidgetNode* child : box.children())
    if (number(*child, "flex") > 0) return true;
  return false;
}

bool holdsGroups(const WidgetNode& box) {
  for (const WidgetNode* child : box.children())
    if (child->kind() == WidgetKind::groupBox) return true;
  return false;
}

// Builds the children from the index `first` on.
void fill(QBoxLayout* layout, WidgetNode& node, ShownTree& tree, QWidget* parent, std::size_t first = 0) {
  const std::u16string pack = node.attribute("pack");
  const bool leavesRoom = !hasFlexibleChild(node);
  if (leavesRoom && (pack == u"end" || pack == u"center")) layout->addStretch();
  for (std::size_t i = first; i < node.children().size(); ++i) {
    WidgetNode& child = *node.children()[i];
    if (isDialogButton(child)) continue;
    const int flex = number(child, "flex");
    if (child.kind() == WidgetKind::spacer) {
      layout->addStretch(flex);
    } else {
      layout->addWidget(build(child, tree, parent), flex, crossAlignment(node));
    }
  }
  if (leavesRoom && pack != u"end") layout->addStretch();
}

}  // namespace

QWidget* buildBox(WidgetNode& node, ShownTree& tree, QWidget* parent) {
  auto* box = new QWidget(parent);
  if (node.attribute("dir") == u"ltr") box->setLayoutDirection(Qt::LeftToRight);
  if (node.attribute("element") == u"radiogroup") groupRadiosIn(*box);
  auto* layout = new QBoxLayout(runsAcross(node) ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, box);
  const bool isPage = node.kind() == WidgetKind::tab;
  if (!isPage) layout->setContentsMargins(0, 0, 0, 0);
  if (isPage || holdsGroups(node)) layout->setSpacing(layout->spacing() * 2);
  fill(layout, node, tree, box);
  if (isPage) return box;
  tree.add(node, box);
  return box;
}

// The caption above, and the content in the desktop's frame.
QWidget* buildGroup(WidgetNode& node, ShownTree& tree, QWidget* parent) {
  auto* section = new QWidget(parent);
  auto* layout = new QVBoxLayout(section);
  layout->setContentsMargins(0, 0, 0, 0);
  std::size_t first = 0;
  if (!node.children().empty() && isCaption(*node.children().front())) {
    QWidget* caption = build(*node.children()[first++], tree, section);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    layout->addWidget(caption);
  }
  auto* frame = new QGroupBox(section);
  layout->addWidget(frame);
  fill(new QVBoxLayout(frame), node, tree, frame, first);
  tree.add(node, section);
  return section;
}

}  // namespace Window
