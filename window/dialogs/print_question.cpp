#include "window/dialogs/print_question.h"

#include "press/error.h"
#include "window/dialogs/plain_labels.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QVBoxLayout>

namespace Window {
namespace {

// Pixels, of the widest field.
constexpr int fieldWidth = 320;

// What people call a printer, with the name of its queue where that says more.
QString shownName(const Press::Printer& printer) {
  const QString name = plainText(QString::fromStdString(printer.name));
  const QString description = plainText(QString::fromStdString(printer.description));
  return description.isEmpty() || description == name ? name : description + " (" + name + ')';
}

class PrintDialog final : public QDialog {
 public:
  PrintDialog(const PrintQuestion& asked, const Texts& shownTexts, QWidget* parent)
      : QDialog(parent),
        question(asked),
        texts(shownTexts) {
    setObjectName("print");
    setWindowTitle(texts("PRINT_DIALOG"));
    form = new QFormLayout;
    addTarget();
    addPages();
    addCopies();
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addStretch();
    addButtons(*column);
    showTarget();
    const bool isTooWide = sizeHint().width() > screen()->availableSize().width();
    if (isTooWide) form->setRowWrapPolicy(QFormLayout::WrapAllRows);
  }

  // Valid after OK.
  PrintChoice choice() const {
    PrintChoice made;
    made.pages = pages();
    if (const Press::Printer* printer = chosen()) {
      made.printer.emplace();
      made.printer->printer = printer->name;
      made.printer->copies = copies->value();
      if (const int side = sides->isEnabled() ? sides->currentIndex() : 0; side > 0)
        made.printer->sides = static_cast<Press::Sides>(side - 1);
    }
    return made;
  }

 private:
  void addTarget() {
    target = new QComboBox;
    target->setObjectName("printTarget");
    target->setMinimumWidth(fieldWidth);
    target->addItem(texts("PRINT_PDF"));
    for (const Press::Printer& printer : question.printers) {
      target->addItem(shownName(printer));
      if (printer.isDefault) target->setCurrentIndex(target->count() - 1);
    }
    connect(target, &QComboBox::currentIndexChanged, this, [this] { showTarget(); });
    form->addRow(texts("PRINT_TO"), target);
  }

  void addPages() {
    all = new QRadioButton(texts("PRINT_ALL_PAGES"));
    all->setObjectName("printAllPages");
    all->setChecked(true);
    form->addRow(texts("PRINT_PAGES"), all);
    some = new QRadioButton(texts("PRINT_SOME_PAGES"));
    some->setObjectName("printSomePages");
    list = new QLineEdit;
    list->setObjectName("printPages");
    list->setPlaceholderText("1,3,5-9");
    list->setAccessibleName(spokenName(texts("PRINT_SOME_PAGES")));
    auto* row = new QHBoxLayout;
    row->addWidget(some);
    row->addWidget(list, 1);
    form->addRow(QString(), row);
    connect(list, &QLineEdit::textEdited, some, [this] { some->setChecked(true); });
    connect(some, &QRadioButton::clicked, list, [this] { list->setFocus(); });
  }

  void addCopies() {
    copies = new QSpinBox;
    copies->setObjectName("printCopies");
    copies->setRange(1, Press::mostCopies);
    form->addRow(texts("PRINT_COPIES"), copies);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    sides = new QComboBox;
    sides->setObjectName("printSides");
    sides->setMinimumWidth(fieldWidth);
    for (const char* text : {"PRINT_SIDES_AS_SET", "PRINT_ONE_SIDE", "PRINT_LONG_EDGE", "PRINT_SHORT_EDGE"})
      sides->addItem(texts(text));
    form->addRow(texts("PRINT_SIDES"), sides);
  }

  void addButtons(QVBoxLayout& column) {
    auto* buttons = new QDialogButtonBox;
    QPushButton* print = buttons->addButton(texts("PRINT_GO"), QDialogButtonBox::AcceptRole);
    print->setObjectName("printGo");
    print->setDefault(true);
    buttons->addButton(texts("CANCEL"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { finish(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column.addWidget(buttons);
  }

  // Null for a PDF file.
  const Press::Printer* chosen() const {
    const int index = target->currentIndex() - 1;
    return index < 0 ? nullptr : &question.printers[static_cast<std::size_t>(index)];
  }

  // A file has neither copies nor sides.
  void showTarget() {
    const Press::Printer* printer = chosen();
    copies->setEnabled(printer != nullptr);
    sides->setEnabled(printer != nullptr && printer->printsBothSides);
    form->labelForField(copies)->setEnabled(copies->isEnabled());
    form->labelForField(sides)->setEnabled(sides->isEnabled());
  }

  // Throws Press::Error.
  Press::PageRule pages() const {
    return all->isChecked() ? Press::PageRule() : Press::PageRule(list->text().trimmed().toStdString());
  }

  void finish() {
    QString problem;
    try {
      if (!pages().hasAny(question.pages)) problem = texts("PRINT_NO_SUCH_PAGES").arg(question.pages);
    } catch (const Press::Error&) {
      problem = texts("PRINT_BAD_PAGES").arg(plainText(list->text()));
    }
    if (problem.isEmpty()) return accept();
    QMessageBox box(QMessageBox::Warning, windowTitle(), problem, QMessageBox::NoButton, this);
    showPlain(box);
    box.addButton(texts("OK"), QMessageBox::AcceptRole);
    box.exec();
    list->setFocus();
    list->selectAll();
  }

  const PrintQuestion& question;
  const Texts texts;
  QFormLayout* form = nullptr;
  QComboBox* target = nullptr;
  QRadioButton* all = nullptr;
  QRadioButton* some = nullptr;
  QLineEdit* list = nullptr;
  QSpinBox* copies = nullptr;
  QComboBox* sides = nullptr;
};

}  // namespace

std::optional<PrintChoice> askHowToPrint(const PrintQuestion& question, const Texts& texts, QWidget* parent) {
  PrintDialog dialog(question, texts, parent);
  if (dialog.exec() != QDialog::Accepted) return {};
  return dialog.choice();
}

}  // namespace Window
