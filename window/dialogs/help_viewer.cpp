#include "window/dialogs/help_viewer.h"

#include <QFile>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>

namespace Window {

HelpViewer::HelpViewer(QWidget* parent)
    : QDialog(parent),
      text(new QTextBrowser(this)),
      closeButton(new QPushButton(this)) {
  setObjectName("help");
  resize(520, 560);
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

bool HelpViewer::show(const std::u16string& url, const std::u16string& topic, const Refhost::ChromeFolders& chrome,
                      const Texts& texts) {
  const auto path = chrome.file(url);
  QFile file(path ? toQt(path->u16string()) : QString());
  if (!path || !file.open(QIODevice::ReadOnly)) return false;
  text->setHtml(QString::fromUtf8(file.readAll()));
  text->scrollToAnchor(toQt(topic));
  const QString title = text->document()->metaInformation(QTextDocument::DocumentTitle);
  text->setAccessibleName(texts("HELP_BUTTON"));
  setWindowTitle(title.isEmpty() ? texts("HELP_BUTTON") : title);
  closeButton->setText(texts("CLOSE"));
  QDialog::show();
  raise();
  activateWindow();
  return true;
}

}  // namespace Window
