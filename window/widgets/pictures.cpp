#include "window/widgets/pictures.h"

#include "formats/names.h"
#include "host/chrome/layout.h"
#include "host/widgets/input.h"
#include "window/widgets/images.h"
#include "window/widgets/picture_box.h"
#include "window/widgets/text_field.h"
#include "window/widgets/watermark_view.h"

#include <vector>

namespace Window {
namespace {

QPixmap pictureIn(const Refhost::ImageBox& node, const Surroundings& around, const QWidget& on) {
  if (node.image()) return pixmapOf(node.image(), on);
  const std::u16string address =
      node.resource().empty() ? node.attribute("src") : around.registeredPicture(node.resource());
  return pixmapAt(address, around.chrome);
}

// The buttons whose ids are the codes of the watermark's places.
std::vector<Refhost::Button*> placeButtons(const Refhost::WatermarkPreview& node, const ShownTree& tree) {
  std::vector<Refhost::Button*> buttons;
  const QStringList ids = toQt(node.attribute("places")).split(' ', Qt::SkipEmptyParts);
  Refhost::walk(tree.root(), [&](Refhost::WidgetNode& each) {
    auto* button = dynamic_cast<Refhost::Button*>(&each);
    if (button != nullptr && ids.contains(toQt(each.id()))) buttons.push_back(button);
  });
  return buttons;
}

// Dragging the watermark to a place clicks the place's button.
void letMove(WatermarkView& view, const std::vector<Refhost::Button*>& places, ShownTree& tree) {
  view.letMove();
  QObject::connect(&view, &WatermarkView::placeWanted, &view, [places, &tree](const QString& code) {
    for (Refhost::Button* button : places)
      if (tree.contains(*button) && toQt(button->WidgetNode::id()) == code) return tree.actions().click(*button);
  });
}

// Turning the watermark types the angle into its box.
void letTurn(WatermarkView& view, Refhost::WidgetNode& angle, ShownTree& tree) {
  auto* box = dynamic_cast<Refhost::TextBoxNode*>(&angle);
  if (box == nullptr || !box->range()) return;
  view.letTurn({box->range()->least, box->range()->most});
  QObject::connect(&view, &WatermarkView::angleWanted, &view, [box, &angle, &tree](int degrees, bool isLimited) {
    if (!tree.contains(angle)) return;
    tree.actions().type(*box, toWide(QString::number(degrees)), Refhost::Edit::typed);
    auto* field = dynamic_cast<TextField*>(tree.widgetOf(angle));
    if (isLimited && field != nullptr) field->tellRange();
  });
}

// For screen readers: what the preview is, and the place of the watermark as its button tells it.
QString inWords(const Refhost::WatermarkPreview& node, const std::vector<Refhost::Button*>& places,
                const ShownTree& tree) {
  QStringList words{tree.attribute(node, "tooltiptext")};
  for (const Refhost::Button* button : places)
    if (button->WidgetNode::id() == node.watermark().position)
      words << tree.around().texts("WATERMARK_PLACE").arg(tree.attribute(*button, "tooltiptext"));
  words.removeAll(QString());
  return words.join(' ');
}

}  // namespace

QWidget* buildImage(Refhost::ImageBox& node, ShownTree& tree, QWidget* parent) {
  auto* box = new PictureBox(parent);
  if (node.isDropTarget()) {
    box->takeDrops();
    QObject::connect(box, &PictureBox::dropped, box, [&tree, &node](const QString& value) {
      if (tree.contains(node)) tree.actions().drop(node, toWide(value));
    });
  }
  std::vector<PictureBox::Entry> menu;
  for (const Refhost::MenuItem& item : node.menu()) {
    const bool isToClear = item.text == Formats::clearItem;
    menu.push_back({toQt(item.text), tree.around().texts.shown(item.label),
                    isToClear ? QKeySequence(Qt::Key_Delete) : QKeySequence()});
  }
  box->setMenu(std::move(menu));
  QObject::connect(box, &PictureBox::chosen, box, [&tree, &node](const QString& text) {
    if (tree.contains(node)) tree.actions().chooseFromMenu(node, toWide(text));
  });
  tree.add(node, box, [&tree, &node, box] { box->show(pictureIn(node, tree.around(), *box), bool(node.image())); });
  return box;
}

QWidget* buildPreview(Refhost::WatermarkPreview& node, ShownTree& tree, QWidget* parent) {
  auto* view = new WatermarkView(tree.around().paper, parent);
  if (tree.around().page) view->showPage(*tree.around().page, tree.around().texts("SHOW_MY_PAGE"));
  auto* outlined = dynamic_cast<Refhost::RadioButton*>(tree.follow(node, "outlined"));
  const std::vector<Refhost::Button*> places = placeButtons(node, tree);
  if (!places.empty()) letMove(*view, places, tree);
  auto* angle = tree.follow(node, "turned");
  if (angle != nullptr) letTurn(*view, *angle, tree);
  tree.add(node, view, [&node, &tree, view, outlined, places] {
    view->show(printedAs(node.watermark(), outlined != nullptr && outlined->isChecked()));
    if (!places.empty()) view->setAccessibleDescription(inWords(node, places, tree));
  });
  return view;
}

}  // namespace Window
