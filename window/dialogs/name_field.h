// A line for a name, and below it what is to be said about the name.
#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;

namespace Window {

// What is to be said about a name; empty for nothing.
struct NameVerdict {
  QString text = {};
  bool isAllowed = true;
};

using JudgeName = std::function<NameVerdict(const QString& name)>;

class NameField final : public QWidget {
  Q_OBJECT

 public:
  // `offered` are names to complete what is typed; `longest` is the greatest length of a name, in UTF-16 units.
  NameField(const QString& name, const QStringList& offered, JudgeName judgeName, int longest, QWidget* parent);

  // Without the spaces around it.
  QString name() const;
  bool isAllowed() const { return verdict.isAllowed; }

  // The label names the line for screen readers, and its access key leads there.
  void nameBy(QLabel& label);

 Q_SIGNALS:
  void judged();

 private:
  void judge();

  JudgeName judgement;
  QLineEdit* edit;
  QLabel* said;
  NameVerdict verdict;
};

}  // namespace Window
