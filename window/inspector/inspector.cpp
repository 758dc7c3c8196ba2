#include "window/inspector/inspector.h"

#include "window/inspector/trace_line.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace Window {
namespace {

// The limit of events; older ones are removed.
constexpr std::size_t mostEvents = 20000;

// The width of the values, in letters.
constexpr int leastLetters = 14;
constexpr int mostLetters = 28;

// The currently unavailable options of a property, as readable text.
QString unavailable(const Refhost::PropertyModel& model, const Refhost::PropertyDescription& property) {
  QStringList options;
  for (const std::u16string& option : property.options)
    if (!model.allows(property.name, option)) options << toQt(option);
  return options.join(", ");
}

void showRow(QTreeWidgetItem& row, const QStringList& texts, bool isBold) {
  for (int column = 0; column < texts.size(); ++column)
    if (const QString text = plainText(texts[column]); row.text(column) != text) row.setText(column, text);
  if (row.font(1).bold() == isBold) return;
  QFont font = row.treeWidget()->font();
  font.setBold(isBold);
  row.setFont(1, font);
}

}  // namespace

Inspector::Inspector(QWidget* parent)
    : QDockWidget(parent),
      pages(new QTabWidget(this)),
      properties(new QTreeWidget(pages)),
      events(new QPlainTextEdit(pages)),
      copyAll(new QPushButton(pages)),
      clear(new QPushButton(pages)) {
  setObjectName("inspector");
  setAllowedAreas(Qt::BottomDockWidgetArea | Qt::RightDockWidgetArea);
  setWidget(pages);
  pages->setDocumentMode(true);
  properties->setObjectName("properties");
  properties->setRootIsDecorated(false);
  properties->setUniformRowHeights(true);
  properties->setAlternatingRowColors(true);
  properties->setColumnCount(3);
  properties->viewport()->installEventFilter(this);
  pages->addTab(properties, QString());
  pages->addTab(buildTracePage(), QString());
}

void Inspector::settle(const QMainWindow& window) {
  const QSize room = screen()->availableSize();
  if (isFloating() || window.centralWidget()->minimumSizeHint().width() + minimumSizeHint().width() <= room.width())
    return;
  setFloating(true);
  window.layout()->activate();  // the window may be narrower now
  resize(sizeHint().boundedTo(room * 0.9));
}

QWidget* Inspector::buildTracePage() {
  events->setObjectName("events");
  events->setReadOnly(true);
  events->setLayoutDirection(Qt::LeftToRight);  // as scripts are
  events->setLineWrapMode(QPlainTextEdit::NoWrap);
  events->setMaximumBlockCount(static_cast<int>(mostEvents));
  events->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  connect(copyAll, &QPushButton::clicked, this,
          [this] { QGuiApplication::clipboard()->setText(events->toPlainText()); });
  connect(clear, &QPushButton::clicked, events, &QPlainTextEdit::clear);

  auto* page = new QWidget(pages);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(copyAll);
  buttons->addWidget(clear);
  buttons->addStretch();
  auto* column = new QVBoxLayout(page);
  column->addWidget(events, 1);
  column->addLayout(buttons);
  return page;
}

void Inspector::setTexts(const Texts& texts) {
  setWindowTitle(texts("INSPECTOR"));
  pages->setTabText(0, texts("PROPERTIES"));
  pages->setTabText(1, texts("TRACE"));
  properties->setHeaderLabels({texts("NAME"), texts("VALUE"), texts("UNAVAILABLE")});
  properties->setAccessibleName(texts("PROPERTIES"));
  events->setAccessibleName(texts("TRACE"));
  pages->setAccessibleName(texts("INSPECTOR"));
  copyAll->setText(texts("COPY_ALL"));
  clear->setText(texts("CLEAR"));
}

void Inspector::follow(Refhost::Trace& trace) {
  events->clear();
  properties->clear();
  waiting.clear();
  described = nullptr;
  trace.listen([this](const Refhost::TraceEvent& event) {
    waiting.push_back(traceLine(event));
    if (isVisible()) showEvents();
    if (waiting.size() > mostEvents) waiting.pop_front();
  });
}

void Inspector::showEvents() {
  for (const QString& line : std::exchange(waiting, {})) events->appendPlainText(line);
}

// A hidden pane is left alone, since screen readers are told every change of a widget, and each costs time.
void Inspector::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  showEvents();
  if (described != nullptr) showProperties(*described);
}

void Inspector::showProperties(const Refhost::PropertyModel& model) {
  described = &model;
  if (!isVisible()) return;
  const bool isFirst = properties->topLevelItemCount() == 0;
  int row = 0;
  for (const Refhost::PropertyDescription& property : model.description().properties) {
    if (isFirst) new QTreeWidgetItem(properties);
    const std::u16string value = model.value(property.name).value_or(u"");
    showRow(*properties->topLevelItem(row++), {toQt(property.name), toQt(value), unavailable(model, property)},
            value != property.defaultValue);
  }
  if (isFirst) shareWidth();
}

// Names and values are read without scrolling sideways; where there is little room, names are elided.
void Inspector::shareWidth() {
  const int letter = properties->fontMetrics().averageCharWidth();
  const int room = properties->viewport()->width();
  properties->resizeColumnToContents(0);
  const int names = std::min(properties->columnWidth(0), std::max(room / 2, room - leastLetters * letter));
  properties->setColumnWidth(0, names);
  properties->setColumnWidth(1, std::clamp(room - names, leastLetters * letter, mostLetters * letter));
}

bool Inspector::eventFilter(QObject* watched, QEvent* event) {
  if (watched == properties->viewport() && event->type() == QEvent::Resize) shareWidth();
  return QDockWidget::eventFilter(watched, event);
}

}  // namespace Window
