#include "window/dialogs/name_field.h"

#include "window/language/texts.h"

#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <utility>

namespace Window {
namespace {

// The width for a name, in pixels.
constexpr int nameWidth = 320;

}  // namespace

NameField::NameField(const QString& name, const QStringList& offered, JudgeName judgeName, int longest, QWidget* parent)
    : QWidget(parent),
      judgement(std::move(judgeName)),
      edit(new QLineEdit(name, this)),
      said(new QLabel(this)) {
  auto* completer = new QCompleter(offered, edit);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  edit->setCompleter(completer);
  edit->setMinimumWidth(nameWidth);
  edit->setMaxLength(longest);
  edit->selectAll();
  said->setObjectName("said");
  said->setTextFormat(Qt::PlainText);
  said->setWordWrap(true);
  said->setMinimumHeight(2 * said->fontMetrics().lineSpacing());  // so that nothing moves while a name is typed
  said->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(edit);
  column->addWidget(said);
  setFocusProxy(edit);
  connect(edit, &QLineEdit::textChanged, this, &NameField::judge);
  judge();
}

QString NameField::name() const { return edit->text().trimmed(); }

void NameField::nameBy(QLabel& label) {
  label.setBuddy(edit);
  edit->setAccessibleName(spokenName(label.text()));
}

void NameField::judge() {
  verdict = judgement ? judgement(name()) : NameVerdict{};
  said->setText(verdict.text);
  edit->setAccessibleDescription(verdict.text);
  Q_EMIT judged();
}

}  // namespace Window
