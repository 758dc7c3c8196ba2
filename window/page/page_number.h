// The number of the shown page, among the words around it, to be typed over: "Page 3 of 10".
#pragma once

#include <QSpinBox>

namespace Window {

class PageNumber final : public QSpinBox {
  Q_OBJECT

 public:
  explicit PageNumber(QWidget* parent);

  // What the user can do with it: for screen readers, which tell the words after it, and for its tip.
  void setName(const QString& name, const QString& tip);

  // `words` has places for the number and the count, as QString::arg takes them. A count of 0 is a dash.
  void show(const QString& words, int number, int count);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  // The user has entered a number.
  void entered(int number);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString shownWords;
  int shownCount = -1;
};

}  // namespace Window
