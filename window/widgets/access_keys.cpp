#include "window/widgets/access_keys.h"

#include "window/language/texts.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSet>
#include <QToolButton>

#include <algorithm>

namespace Window {
namespace {

QChar keyIn(const QString& text) {
  const QKeySequence keys = QKeySequence::mnemonic(text);
  return keys.isEmpty() ? QChar() : QChar(keys[0].key());
}

bool isKey(QChar letter) {
  const char16_t unit = letter.toUpper().unicode();
  return unit >= u'A' && unit <= u'Z';
}

bool beginsWord(const QString& text, qsizetype place) { return place == 0 || !text[place - 1].isLetterOrNumber(); }

// The keys of one window.
class Keys {
 public:
  void take(const QString& text) { taken.insert(keyIn(text)); }

  // The text with a key; as it is when it has one, or no key is free.
  QString givenTo(const QString& text) {
    if (text.isEmpty() || !keyIn(text).isNull()) return text;
    for (const bool atBeginnings : {true, false})
      for (qsizetype place = 0; place < text.size(); ++place)
        if (isFree(text[place]) && beginsWord(text, place) == atBeginnings) {
          taken.insert(text[place].toUpper());
          return QString(text).insert(place, '&');
        }
    for (char letter = 'A'; letter <= 'Z'; ++letter)
      if (isFree(QLatin1Char(letter))) {
        taken.insert(QLatin1Char(letter));
        return inBrackets(text, letter);
      }
    return text;
  }

 private:
  bool isFree(QChar letter) const { return isKey(letter) && !taken.contains(letter.toUpper()); }

  // Before the dots or the colon at the end.
  static QString inBrackets(const QString& text, char letter) {
    qsizetype end = text.size();
    while (end > 0 && !text[end - 1].isLetterOrNumber() && text[end - 1] != ')') --end;
    const auto script = end > 0 ? text[end - 1].script() : QChar::Script_Han;
    const bool isApart = script == QChar::Script_Latin || script == QChar::Script_Arabic;
    return QString(text).insert(end, QLatin1String(isApart ? " (&" : "(&") + QLatin1Char(letter) + ')');
  }

  QSet<QChar> taken;
};

bool hasLetters(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar unit) { return unit.isLetter(); });
}

bool hasKeysElsewhere(const QAbstractButton& button) {
  const auto* push = qobject_cast<const QPushButton*>(&button);
  const auto* row = qobject_cast<const QDialogButtonBox*>(button.parentWidget());
  return (push != nullptr && push->isDefault()) || button.property(keysElsewhere).toBool() ||
         (row != nullptr && row->buttonRole(const_cast<QAbstractButton*>(&button)) == QDialogButtonBox::RejectRole);
}

// The buttons of the window that a key can press.
QList<QAbstractButton*> buttonsOf(QWidget& window) {
  QList<QAbstractButton*> buttons;
  QList<QAbstractButton*> last;
  for (auto* button : window.findChildren<QAbstractButton*>())
    if (button->window() == &window && qobject_cast<QToolButton*>(button) == nullptr && hasLetters(button->text()))
      (button->property(keyAfterOthers).toBool() ? last : buttons) << button;
  return buttons + last;
}

QList<QLabel*> labelsOf(QWidget& window) {
  QList<QLabel*> labels;
  for (auto* label : window.findChildren<QLabel*>())
    if (label->window() == &window && label->buddy() != nullptr) labels << label;
  return labels;
}

// The name that a widget has of a text, and loses with it.
constexpr const char* nameOfText = "nameOfText";

void nameForReaders(QWidget& widget, const QString& name) {
  const QString present = widget.property(nameOfText).toString();
  if (widget.accessibleName() != present || name == present) return;
  widget.setProperty(nameOfText, name);
  widget.setAccessibleName(name);
}

// A name where Qt would take the text with its brackets or colon.
QString nameBesides(const QString& text) {
  const QString name = spokenName(text);
  return name == QString(text).remove('&') ? QString() : name;
}

// Some readers tell the label of a field, others its name.
void nameByTexts(QWidget& window) {
  for (auto* label : labelsOf(window)) {
    nameForReaders(*label, nameBesides(label->text()));
    nameForReaders(*label->buddy(), spokenName(label->text()));
  }
  for (auto* button : buttonsOf(window)) nameForReaders(*button, nameBesides(button->text()));
}

void giveKeys(QWidget& window) {
  Keys keys;
  for (const auto* bar : window.findChildren<QMenuBar*>())
    for (const QAction* menu : bar->actions()) keys.take(menu->text());
  for (const auto* button : buttonsOf(window)) keys.take(button->text());
  for (const auto* label : labelsOf(window)) keys.take(label->text());

  const auto give = [&keys](const QString& text, const auto& set) {
    const QString with = keys.givenTo(text);
    if (with != text) set(with);
  };
  for (auto* label : labelsOf(window))
    if (label->isVisibleTo(&window)) give(label->text(), [&](const QString& text) { label->setText(text); });
  for (auto* button : buttonsOf(window)) {
    if (!button->isVisibleTo(&window) || !button->shortcut().isEmpty() || hasKeysElsewhere(*button)) continue;
    give(button->text(), [&](const QString& text) { button->setText(text); });
  }
}

}  // namespace

void giveAccessKeys(QWidget& window) {
  giveKeys(window);
  nameByTexts(window);
}

}  // namespace Window
