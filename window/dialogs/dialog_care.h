// What every dialog has, the toolkit's own too: access keys, and help on F1.
#pragma once

#include <QObject>

#include <functional>

class QDialog;

namespace Window {

class DialogCare final : public QObject {
  Q_OBJECT

 public:
  // Cares for the dialogs of the application as long as the object lives. `help` is called for a dialog that has no
  // help of its own.
  explicit DialogCare(std::function<void(const QDialog&)> help);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void(const QDialog&)> showHelp;
};

}  // namespace Window
