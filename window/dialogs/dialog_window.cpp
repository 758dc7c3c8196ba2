#include "window/dialogs/dialog_window.h"

#include "window/widgets/roomy_button.h"
#include "window/widgets/text_field.h"

#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace Window {
namespace {

// The widest name that is shown whole, in pixels: about as wide as the questions.
constexpr int widestSubject = 320;

QLabel* subjectLabel(const QString& subject, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName("subject");
  label->setTextFormat(Qt::PlainText);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  const QString whole = plainText(subject);
  label->setText(QFontMetrics(bold).elidedText(whole, Qt::ElideMiddle, widestSubject));
  if (label->text() != whole) label->setToolTip(toolTipOf(whole, true));
  label->setAccessibleName(whole);
  return label;
}

}  // namespace

DialogWindow::DialogWindow(Refhost::Dialog& shownDialog, const QString& subject, const Surroundings& around,
                           QWidget* parent)
    : QDialog(parent),
      dialog(shownDialog) {
  Refhost::Layout& layout = dialog.layout();
  setWindowTitle(around.texts.shown(layout.title));
  setObjectName(toQt(layout.root->WidgetNode::id()));
  Surroundings own = around;
  own.registeredPicture = [this](const std::u16string& name) { return dialog.imageAddress(name); };
  // First, as screen readers read in this order.
  QLabel* const about = subject.isEmpty() ? nullptr : subjectLabel(subject, this);
  view = std::make_unique<TreeView>(*layout.root, own, this);

  auto* buttons = new QDialogButtonBox(this);
  auto* accept = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
  auto* cancel = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
  view->adopt(*layout.acceptButton, *accept, [this] {
    if (!showsCorrection()) dialog.accept();
  });
  view->adopt(*layout.cancelButton, *cancel, [this] { dialog.cancel(); });
  (layout.isCancelDefault ? cancel : accept)->setDefault(true);
  if (layout.isCancelDefault) cancel->setFocus();  // a focused button is the default one
  for (const TextField* field : findChildren<TextField*>())
    connect(field, &TextField::limited, this, [this, accept](bool isChanged) {
      wasCorrected = isChanged && accept->hasFocus() && QGuiApplication::mouseButtons() != Qt::NoButton;
    });
  Refhost::walk(*layout.root, [&](Refhost::WidgetNode& node) {
    const std::u16string type = node.attribute("dlgtype");
    if (type.empty()) return;
    auto* button = new RoomyButton(buttons);
    buttons->addButton(button, type == u"help" ? QDialogButtonBox::HelpRole : QDialogButtonBox::ResetRole);
    auto& further = dynamic_cast<Refhost::Button&>(node);
    view->adopt(further, *button, [this, &further] { view->actions().click(further); });
  });

  Refhost::walk(*layout.root, [this](Refhost::WidgetNode& node) {
    if (node.attribute("dlgtype") != u"help") return;
    auto* help = findChild<QAbstractButton*>(toQt(node.id()));
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, help, &QAbstractButton::click);
  });

  auto* column = new QVBoxLayout(this);
  if (about != nullptr) column->addWidget(about);
  column->addWidget(view->widget(), 1);
  column->addSpacing(column->spacing());
  column->addWidget(buttons);
  column->setSizeConstraint(QLayout::SetMinimumSize);
  fitOnScreen(*column, *buttons);
}

// A number that accepting would replace is replaced first, with a notice beside it, and the dialog stays open once, so
// that the user can see it.
bool DialogWindow::showsCorrection() {
  if (std::exchange(wasCorrected, false)) return true;
  auto* field = qobject_cast<TextField*>(focusWidget());
  return field != nullptr && field->settles();
}

// When the dialog does not fit on the screen, everything but the buttons scrolls.
void DialogWindow::fitOnScreen(QVBoxLayout& column, QDialogButtonBox& buttons) {
  const QSize room = screen()->availableSize() * 0.9;
  const QSize wanted = sizeHint();
  if (wanted.width() <= room.width() && wanted.height() <= room.height()) return;
  const QMargins around = column.contentsMargins();
  if (buttons.sizeHint().width() + around.left() + around.right() > room.width()) buttons.setOrientation(Qt::Vertical);
  scroll = new QScrollArea(this);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  delete column.replaceWidget(view->widget(), scroll);
  column.setStretchFactor(scroll, 1);
  scroll->setWidget(view->widget());
  column.setSizeConstraint(QLayout::SetDefaultConstraint);
  const int bar = scroll->verticalScrollBar()->sizeHint().width();
  resize(QSize(wanted.width() + bar, wanted.height()).boundedTo(room));
}

void DialogWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  const auto showFocus = [this] {
    if (scroll != nullptr && focusWidget() != nullptr) scroll->ensureWidgetVisible(focusWidget());
  };
  QMetaObject::invokeMethod(this, showFocus, Qt::QueuedConnection);
}

void DialogWindow::runModally() {
  QEventLoop running;
  loop = &running;
  setWindowModality(Qt::ApplicationModal);
  show();
  if (!finished) running.exec();
  loop = nullptr;

  // The application is quitting and runs no more event loops.
  if (!finished) dialog.cancel();
}

void DialogWindow::finish() {
  finished = true;
  view->forget();
  hide();
  if (loop != nullptr) {
    loop->quit();
  } else {
    deleteLater();
  }
}

void DialogWindow::reject() {
  if (!finished) dialog.cancel();
}

}  // namespace Window
