#include "window/dialogs/report_question.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace Window {
namespace {

// In pixels; the user may enlarge it.
constexpr QSize reportSize(620, 300);

QPlainTextEdit* addReport(QVBoxLayout& column, const QString& name) {
  auto* shown = new QPlainTextEdit;
  shown->setObjectName("report");
  shown->setReadOnly(true);
  shown->setLayoutDirection(Qt::LeftToRight);  // as scripts are
  shown->setTabChangesFocus(true);
  shown->setLineWrapMode(QPlainTextEdit::NoWrap);
  shown->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  shown->setMinimumHeight(3 * shown->fontMetrics().lineSpacing());
  shown->setAccessibleName(name);
  column.addWidget(shown, 1);
  return shown;
}

}  // namespace

std::optional<QString> askToReport(const ReportText& report, const Texts& texts, QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName("reporting");
  dialog.setWindowTitle(texts("REPORT_TITLE"));
  auto* column = new QVBoxLayout(&dialog);
  auto* explanation = new QLabel(texts("REPORT_EXPLANATION"));
  explanation->setWordWrap(true);
  column->addWidget(explanation);
  auto* shown = addReport(*column, texts("REPORT_TITLE"));
  auto* includes = new QCheckBox(texts("REPORT_INCLUDE_TEXTS"));
  column->addWidget(includes);
  auto* buttons = new QDialogButtonBox;
  QPushButton* save = buttons->addButton(texts("REPORT_SAVE"), QDialogButtonBox::AcceptRole);
  buttons->addButton(texts("CANCEL"), QDialogButtonBox::RejectRole);
  save->setDefault(true);
  column->addWidget(buttons);

  const QSize margins(2 * column->contentsMargins().left(), dialog.sizeHint().height() - shown->sizeHint().height());
  dialog.resize((reportSize + margins).boundedTo(dialog.screen()->availableSize() * 0.9));

  const auto show = [&report, shown](bool includesTexts) { shown->setPlainText(report(includesTexts)); };
  QObject::connect(includes, &QCheckBox::toggled, &dialog, show);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  show(false);
  if (dialog.exec() != QDialog::Accepted) return {};
  return report(includes->isChecked());
}

}  // namespace Window
