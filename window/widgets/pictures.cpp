#include "window/widgets/pictures.h"

#include "formats/names.h"
#include "host/widgets/input.h"
#include "window/widgets/images.h"
#include "window/widgets/picture_box.h"
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
  auto* outlined = dynamic_cast<Refhost::RadioButton*>(tree.follow(node, "outlined"));
  tree.add(node, view, [&node, view, outlined] {
    view->show(printedAs(node.watermark(), outlined != nullptr && outlined->isChecked()));
  });
  return view;
}

}  // namespace Window
