#include "window/tree_view.h"

#include "host/chrome/layout.h"
#include "window/images.h"
#include "window/items.h"
#include "window/picture_box.h"
#include "window/roomy_button.h"
#include "window/text_field.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <stdexcept>

namespace Window {
namespace {

using Refhost::WidgetKind;
using Refhost::WidgetNode;

// A check box whose mark only the tree changes: clicks are forwarded, the mark follows.
class FollowingCheckBox final : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;

 protected:
  void nextCheckState() override {}
};

bool isCaption(const WidgetNode& node) { return node.attribute("element") == u"caption"; }

// Whether a container shows anything besides its caption and empty space.
bool hasContent(const WidgetNode& container) {
  for (const WidgetNode* child : container.children()) {
    if (!child->isVisible() || isCaption(*child) || child->kind() == WidgetKind::spacer) continue;
    const bool isBox = child->kind() == WidgetKind::box || child->kind() == WidgetKind::groupBox;
    if (!isBox || hasContent(*child)) return true;
  }
  return false;
}

bool runsAcross(const WidgetNode& box) {
  return box.attribute("element") == u"hbox" || box.attribute("orient") == u"horizontal";
}

// Whether all of a container's content is hidden, so that it would only be a gap.
bool isEmptied(const WidgetNode& node) {
  if (node.kind() == WidgetKind::box) return !node.children().empty() && !hasContent(node);
  return node.kind() == WidgetKind::groupBox && !hasContent(node);
}

// Whether the node is a dialog button, which is shown beside OK and Cancel.
bool isDialogButton(const WidgetNode& node) { return !node.attribute("dlgtype").empty(); }

int number(const WidgetNode& node, const char* attribute, int otherwise = 0) {
  bool isNumber = false;
  const int value = toQt(node.attribute(attribute)).toInt(&isNumber);
  return isNumber ? value : otherwise;
}

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

}  // namespace

TreeView::TreeView(WidgetNode& root, const Surroundings& around, QWidget* parent)
    : surroundings(around),
      texts(around.texts),
      tree(&root),
      top(build(root, parent)) {
  relate(root);
}

void TreeView::forget() {
  for (const auto& [node, entry] : shown)
    if (auto* field = qobject_cast<TextField*>(entry.widget)) field->forget();
  shown.clear();
  tree = nullptr;
}

WidgetNode* TreeView::follow(const WidgetNode& follower, const char* attribute) {
  const std::u16string id = follower.attribute(attribute);
  WidgetNode* found = nullptr;
  Refhost::walk(*tree, [&](WidgetNode& node) {
    if (!id.empty() && node.id() == id) found = &node;
  });
  if (found != nullptr) followers[found].insert(&follower);
  return found;
}

void TreeView::update(const WidgetNode& node) {
  const auto found = shown.find(&node);
  if (found == shown.end()) return;
  found->second.refresh();
  if (const auto following = followers.find(&node); following != followers.end())
    for (const WidgetNode* follower : following->second) shown.at(follower).refresh();
  for (const WidgetNode* above = node.parent(); above != nullptr; above = above->parent())
    if (const auto container = shown.find(above); container != shown.end()) container->second.refresh();
  relate(*tree);
}

void TreeView::adopt(Refhost::Button& node, QPushButton* button, std::function<void()> press) {
  QObject::connect(button, &QPushButton::clicked, button, std::move(press));
  show(node, button, [this, &node, button] { button->setText(shownLabel(node)); });
}

// Updates the states common to all kinds, now and after each change, then calls `refresh`.
void TreeView::show(const WidgetNode& node, QWidget* widget, std::function<void()> refresh) {
  widget->setObjectName(toQt(node.id()));
  if (const int width = number(node, "width"); width > 0) widget->setMinimumWidth(width);
  if (const int height = number(node, "height"); height > 0) widget->setMinimumHeight(height);
  const auto all = [this, &node, widget, refresh = std::move(refresh)] {
    widget->setVisible(node.isVisible() && !isEmptied(node));
    widget->setEnabled(node.isEnabled());
    widget->setToolTip(attribute(node, "tooltiptext"));
    widget->setAccessibleDescription(widget->toolTip());
    refresh();
  };
  all();
  shown[&node] = {widget, all};
}

QWidget* TreeView::build(WidgetNode& node, QWidget* parent) {
  switch (node.kind()) {
    case WidgetKind::box:
    case WidgetKind::tab: return buildContainer(node, parent);
    case WidgetKind::groupBox: return buildGroup(node, parent);
    case WidgetKind::label: return buildLabel(dynamic_cast<Refhost::Label&>(node), parent);
    case WidgetKind::image: return buildImage(dynamic_cast<Refhost::ImageBox&>(node), parent);
    case WidgetKind::button: return buildButton(dynamic_cast<Refhost::Button&>(node), parent);
    case WidgetKind::checkBox: return buildCheckBox(dynamic_cast<Refhost::CheckBox&>(node), parent);
    case WidgetKind::listBox: return buildList(node, parent);
    case WidgetKind::comboBox: return buildCombo(node, parent);
    case WidgetKind::radioButton: return buildRadio(dynamic_cast<Refhost::RadioButton&>(node), parent);
    case WidgetKind::textBox:
    case WidgetKind::integerTextBox: return buildText(node, parent);
    case WidgetKind::scrollBar: return buildScroll(dynamic_cast<Refhost::ScrollBar&>(node), parent);
    case WidgetKind::colorPicker: return buildColourPicker(dynamic_cast<Refhost::ColorPicker&>(node), parent);
    case WidgetKind::preview: return buildPreview(dynamic_cast<Refhost::WatermarkPreview&>(node), parent);
    case WidgetKind::spacer: break;
  }
  throw std::logic_error(std::string("the window cannot show a ") + nameOf(node.kind()));
}

QWidget* TreeView::buildContainer(WidgetNode& node, QWidget* parent) {
  auto* box = new QWidget(parent);
  if (node.attribute("element") == u"radiogroup") radioGroups[&node] = new QButtonGroup(box);
  auto* layout = new QBoxLayout(runsAcross(node) ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, box);
  const bool isPage = node.kind() == WidgetKind::tab;
  if (!isPage) layout->setContentsMargins(0, 0, 0, 0);
  if (isPage || holdsGroups(node)) layout->setSpacing(layout->spacing() * 2);
  fill(layout, node, box);
  if (isPage) return box;
  show(node, box);
  return box;
}

// The caption above, and the content in the desktop's frame.
QWidget* TreeView::buildGroup(WidgetNode& node, QWidget* parent) {
  auto* section = new QWidget(parent);
  auto* layout = new QVBoxLayout(section);
  layout->setContentsMargins(0, 0, 0, 0);
  std::size_t first = 0;
  if (!node.children().empty() && isCaption(*node.children().front())) {
    QWidget* caption = build(*node.children()[first++], section);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    layout->addWidget(caption);
  }
  auto* frame = new QGroupBox(section);
  layout->addWidget(frame);
  fill(new QVBoxLayout(frame), node, frame, first);
  show(node, section);
  return section;
}

void TreeView::fill(QBoxLayout* layout, WidgetNode& node, QWidget* parent, std::size_t first) {
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
      layout->addWidget(build(child, parent), flex, crossAlignment(node));
    }
  }
  if (leavesRoom && pack != u"end") layout->addStretch();
}

QWidget* TreeView::buildLabel(Refhost::Label& node, QWidget* parent) {
  auto* row = new QWidget(parent);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* text = new QLabel(row);
  auto* picture = new QLabel(row);
  text->setTextFormat(Qt::PlainText);
  text->setWordWrap(node.attribute("element") == u"description");
  const std::u16string align = node.attribute("align");
  if (align == u"center" || align == u"end") layout->addStretch();
  layout->addWidget(text, text->wordWrap() ? 1 : 0);
  layout->addWidget(picture);
  if (!text->wordWrap() && align != u"end") layout->addStretch();
  show(node, row, [this, &node, text, picture] {
    const QString label = shownLabel(node);
    // Only labels with a buddy have access keys and escape ampersands.
    text->setText(text->buddy() != nullptr ? label : texts.shown(node.label()));
    picture->setPixmap(pixmapOf(node.image(), *picture));
    picture->setVisible(bool(node.image()));
  });
  return row;
}

QWidget* TreeView::buildImage(Refhost::ImageBox& node, QWidget* parent) {
  auto* box = new PictureBox(parent);
  if (node.isDropTarget()) {
    box->takeDrops();
    QObject::connect(box, &PictureBox::dropped, box, [this, &node](const QString& value) {
      if (shown.contains(&node)) node.drop(toWide(value));
    });
  }
  std::vector<PictureBox::Entry> menu;
  for (const Refhost::MenuItem& item : node.menu()) menu.push_back({toQt(item.text), texts.shown(item.label)});
  box->setMenu(std::move(menu));
  QObject::connect(box, &PictureBox::chosen, box, [this, &node](const QString& text) {
    if (shown.contains(&node)) node.choose(toWide(text));
  });
  show(node, box, [this, &node, box] { box->show(pictureIn(node, *box), bool(node.image())); });
  return box;
}

QPixmap TreeView::pictureIn(const Refhost::ImageBox& node, const QWidget& on) const {
  if (node.image()) return pixmapOf(node.image(), on);
  const std::u16string address =
      node.resource().empty() ? node.attribute("src") : surroundings.registeredPicture(node.resource());
  return pixmapAt(address, surroundings.chrome);
}

// A button's set width is a minimum: most texts are wider than a symbol.
QWidget* TreeView::buildButton(Refhost::Button& node, QWidget* parent) {
  auto* button = new RoomyButton(parent);
  adopt(node, button, [&node] { node.click(); });
  if (const int width = number(node, "width"); width > 0)
    button->setFixedWidth(
        std::max(width, button->fontMetrics().horizontalAdvance(button->text()) + 2 * RoomyButton::leastBeside));
  return button;
}

QWidget* TreeView::buildCheckBox(Refhost::CheckBox& node, QWidget* parent) {
  auto* box = new FollowingCheckBox(parent);
  QObject::connect(box, &QCheckBox::clicked, box, [&node] { node.click(); });
  show(node, box, [this, &node, box] {
    box->setText(shownLabel(node));
    box->setChecked(node.isChecked());
  });
  return box;
}

QWidget* TreeView::buildList(WidgetNode& node, QWidget* parent) {
  auto& selector = dynamic_cast<Refhost::SelectorNode&>(node);
  auto* list = new ItemList(parent);
  list->setDragEnabled(node.attribute("draggable") == u"true");
  if (const int side = number(node, "iconsize"); side > 0) list->showPages(side);
  const int rows = number(node, "rows", 4);
  list->setFixedHeight(rows * list->rowHeight() + 2 * list->frameWidth());
  if (number(node, "flex") > 0) list->setMaximumHeight(QWIDGETSIZE_MAX);

  // Queued until the list has handled the key or click, since the choice may refill the list.
  QObject::connect(
      list, &QListWidget::currentRowChanged, list,
      [this, &node, &selector](int row) {
        if (shown.contains(&node)) selector.choose(row);
      },
      Qt::QueuedConnection);
  show(node, list, [&selector, list] {
    const QSignalBlocker quiet(list);
    showItems(*list, selector.items());
    list->setCurrentRow(selector.selection());
  });
  return list;
}

QWidget* TreeView::buildCombo(WidgetNode& node, QWidget* parent) {
  auto& selector = dynamic_cast<Refhost::SelectorNode&>(node);
  auto* combo = new QComboBox(parent);
  combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  if (node.attribute("fontpreview") == u"true") showInOwnFaces(*combo);
  QObject::connect(combo, &QComboBox::activated, combo, [&selector, combo](int row) {
    selector.choose(row);
    const QSignalBlocker quiet(combo);
    combo->setCurrentIndex(selector.selection());
  });
  const auto* preview = dynamic_cast<Refhost::WatermarkPreview*>(follow(node, "preview"));
  show(node, combo, [&selector, combo, preview] {
    const QSignalBlocker quiet(combo);
    showItems(*combo, selector.items());
    combo->setCurrentIndex(selector.selection());
    if (preview != nullptr) combo->setPlaceholderText(toQt(preview->watermark().face));
  });
  return combo;
}

QString TreeView::attribute(const WidgetNode& node, const char* name) const {
  return texts.shown(node.attribute(name));
}

QString TreeView::shownLabel(const WidgetNode& node) const {
  return withAccessKey(texts.shown(node.label()), attribute(node, "accesskey"));
}

}  // namespace Window
