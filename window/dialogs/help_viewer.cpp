#include "window/dialogs/help_viewer.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>

namespace Window {

HelpViewer::HelpViewer(QWidget* parent)
    : QDialog(parent),
      text(new QTextBrowser(this)),
      closeButton(new QPushButton(this)) {
  setObjectName("help");
  resize(QSize(520, 560).boundedTo(screen()->availableSize() * 0.9));
  text->setOpenLinks(false);
  text->document()->setDocumentMargin(16);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(closeButton);
  auto* column = new QVBoxLayout(this);
  column->addWidget(text, 1);
  column->addLayout(buttons);
  connect(closeButton, &QPushButton::clicked, this, &QDialog::reject);
}

void HelpViewer::show(const std::string& page, const std::u16string& topic, const Texts& texts) {
  text->setHtml(QString::fromStdString(page));
  text->scrollToAnchor(toQt(topic));
  const QString title = text->document()->metaInformation(QTextDocument::DocumentTitle);
  text->setAccessibleName(texts("HELP_BUTTON"));
  setWindowTitle(title.isEmpty() ? texts("HELP_BUTTON") : title);
  closeButton->setText(texts("CLOSE"));
  QDialog::show();
  raise();
  activateWindow();
}

}  // namespace Window
