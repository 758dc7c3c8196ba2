#include "window/widgets/label.h"

#include "window/widgets/images.h"

#include <QHBoxLayout>
#include <QLabel>

namespace Window {

QWidget* buildLabel(Refhost::Label& node, ShownTree& tree, QWidget* parent) {
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
  tree.add(node, row, [&tree, &node, text, picture] {
    const QString label = tree.label(node);
    // Only labels with a buddy have access keys and escape ampersands.
    text->setText(text->buddy() != nullptr ? label : tree.around().texts.shown(node.label()));
    picture->setPixmap(pixmapOf(node.image(), *picture));
    picture->setVisible(bool(node.image()));
  });
  return row;
}

}  // namespace Window
