#include "window/preferences/messages.h"

#include "window/dialogs/plain_labels.h"

#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

namespace Window {

void Messages::announce(const News& news) {
  const Texts texts = session.texts();
  auto* box =
      new QMessageBox(QMessageBox::Information, news.title, plainText(news.sentence), QMessageBox::NoButton, &window);
  QStringList notes;
  for (const std::string& note : news.notes) notes << plainText(QString::fromStdString(note));
  box->setInformativeText(notes.join('\n'));
  showPlain(*box);
  QPushButton* ok = box->addButton(texts("OK"), QMessageBox::AcceptRole);
  box->setDefaultButton(ok);
  box->setEscapeButton(ok);
  if (!news.file.empty()) {
    QPushButton* show = box->addButton(texts("SHOW_FILE"), QMessageBox::ActionRole);
    QObject::connect(show, &QPushButton::clicked, &window,
                     [file = news.file] { QDesktopServices::openUrl(QUrl::fromLocalFile(toQt(file.u16string()))); });
  }
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

void Messages::showFailure(const std::string& sentence) {
  const QString text = plainText(QString::fromStdString(sentence));
  told << text;
  QMetaObject::invokeMethod(
      &window,
      [this, text] {
        const Texts texts = session.texts();
        auto* box = new QMessageBox(QMessageBox::Warning, texts("TITLE"), text, QMessageBox::NoButton, &window);
        showPlain(*box);
        box->addButton(texts("OK"), QMessageBox::AcceptRole);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
      },
      Qt::QueuedConnection);
}

void Messages::guarded(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    showFailure(error.what());
  }
}

}  // namespace Window
