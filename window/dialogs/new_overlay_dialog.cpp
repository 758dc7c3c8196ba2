#include "window/dialogs/new_overlay_dialog.h"

#include "formats/overlay_index.h"
#include "window/page/paper_view.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <utility>

namespace Window {
namespace {

// Of the picture of the page, in pixels.
constexpr QSize pictureSize(260, 330);
constexpr QSize leastPicture(120, 120);  // smaller ones show nothing
constexpr int betweenSides = 12;

// Of the form, in pixels: below a label, and above the labels of further rows.
constexpr int belowLabel = 3;
constexpr int aboveLabel = 8;

}  // namespace

NewOverlayDialog::NewOverlayDialog(NewOverlayQuestion asked, const Texts& texts, QWidget* parent)
    : QDialog(parent),
      question(std::move(asked)),
      paper(new PaperView(this)) {
  setWindowTitle(texts("NEW_OVERLAY_TITLE"));
  setObjectName("newOverlay");
  paper->setObjectName("form");
  paper->setMinimumSize(pictureSize);
  paper->setAccessibleName(texts("FORM_PICTURE"));

  // The layouts are the dialog's before rows are added, whose widgets have no parent yet: in this order they are read.
  auto* column = new QVBoxLayout(this);
  auto* sides = new QHBoxLayout;
  auto* rows = new QFormLayout;
  column->addLayout(sides, 1);
  sides->setSpacing(betweenSides);
  sides->addWidget(paper, 1);
  sides->addLayout(rows);
  rows->setRowWrapPolicy(QFormLayout::WrapAllRows);
  auto* file = new QLabel(plainText(question.fileName));
  file->setTextFormat(Qt::PlainText);
  file->setTextInteractionFlags(Qt::TextSelectableByMouse);
  file->setWordWrap(true);
  // File names run from left to right, beside labels that may not.
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  file->setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter | (isMirrored ? Qt::AlignRight : Qt::AlignLeft));
  rows->addRow(new QLabel(texts("FORM_FILE")), file);  // no access key: there is nothing to enter
  if (question.form.pages > 1) addPages(*rows, texts);
  if (question.form.isPicture) addSizes(*rows, texts);
  auto* nameLabel = new QLabel(texts("JOB_STEP"), this);
  field = new NameField(question.name, question.offered, question.judge, int{Formats::overlayNameUnits}, this);
  field->nameBy(*nameLabel);
  rows->addRow(nameLabel, field);
  rows->setVerticalSpacing(belowLabel);
  for (int row = 1; row < rows->rowCount(); ++row)
    rows->itemAt(row, QFormLayout::LabelRole)->widget()->setContentsMargins(0, aboveLabel, 0, 0);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &NewOverlayDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  for (QAbstractButton* button : buttons->buttons()) button->setIcon({});  // as in the plug-in's dialogs
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  const auto showAllowed = [this, ok] { ok->setEnabled(field->isAllowed()); };
  connect(field, &NameField::judged, this, showAllowed);
  showAllowed();

  column->addWidget(buttons);
  connect(paper, &PaperView::roomChanged, this, &NewOverlayDialog::draw);
  connect(&artist, &PageArtist::drawn, paper, &PaperView::show);
  field->setFocus();
  fitOnScreen();
}

// Where the dialog does not fit, its picture is smaller, or hidden.
void NewOverlayDialog::fitOnScreen() {
  const QSize over = (layout()->totalMinimumSize() - screen()->availableSize() * 0.9).expandedTo({0, 0});
  const QSize left = pictureSize - over;
  paper->setMinimumSize(left.expandedTo(leastPicture));
  paper->setVisible(left.width() >= leastPicture.width() && left.height() >= leastPicture.height());
}

void NewOverlayDialog::addPages(QFormLayout& rows, const Texts& texts) {
  page = new QSpinBox;
  page->setObjectName("formPage");
  page->setRange(1, question.form.pages);
  page->setSuffix(' ' + texts("FORM_PAGES").arg(question.form.pages));
  rows.addRow(texts("FORM_PAGE"), page);
  connect(page, &QSpinBox::valueChanged, this, &NewOverlayDialog::draw);
  connect(paper, &PaperView::pagesWanted, page, [this](int forward) { page->setValue(page->value() + forward); });
  connect(paper, &PaperView::endWanted, page, [this](bool last) { page->setValue(last ? page->maximum() : 1); });
}

void NewOverlayDialog::addSizes(QFormLayout& rows, const Texts& texts) {
  ownSize = new QRadioButton(texts("PICTURE_OWN_SIZE"));
  paperSize = new QRadioButton(texts("PICTURE_PAPER_SIZE"));
  ownSize->setObjectName("ownSize");
  paperSize->setObjectName("paperSize");
  ownSize->setChecked(true);
  auto* sizes = new QVBoxLayout;
  sizes->addWidget(ownSize);
  sizes->addWidget(paperSize);
  rows.addRow(texts("PICTURE_SIZE"), sizes);
  connect(paperSize, &QRadioButton::toggled, this, &NewOverlayDialog::fill);
}

void NewOverlayDialog::fill(bool fills) {
  if (const auto form = question.remake(fills)) {
    question.form = *form;
    return draw();
  }
  const QSignalBlocker quiet(paperSize);
  (fills ? ownSize : paperSize)->setChecked(true);
}

void NewOverlayDialog::draw() {
  artist.draw({question.form.pdf, {}, page == nullptr ? 1 : page->value(), paper->room(), paper->resolution()});
}

void NewOverlayDialog::accept() {
  if (!field->isAllowed()) return;
  if (question.make({question.form.pdf, page == nullptr ? 1 : page->value(), field->name()})) QDialog::accept();
}

}  // namespace Window
