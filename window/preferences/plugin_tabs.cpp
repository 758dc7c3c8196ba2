#include "window/preferences/plugin_tabs.h"

#include "window/widgets/readers.h"
#include "window/widgets/tree_view.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStackedWidget>

#include <algorithm>

namespace Window {
namespace {

// Pixels of the window beside the content of a tab.
constexpr int besideContent = 60;

void putInto(QScrollArea& page, QWidget& content) {
  page.setFrameShape(QFrame::NoFrame);
  page.setWidgetResizable(true);
  page.setFocusPolicy(Qt::NoFocus);
  page.setWidget(&content);
  page.viewport()->setAutoFillBackground(false);
  content.setAutoFillBackground(false);
  // The content scrolls sideways only where the screen is narrower.
  const int wanted = content.sizeHint().width() + page.verticalScrollBar()->sizeHint().width();
  page.setMinimumWidth(std::min(wanted, page.screen()->availableSize().width() - besideContent));
}

}  // namespace

PluginTabs::PluginTabs(QWidget* parent) : QTabWidget(parent) {
  setObjectName("tabs");
  setRole(*this, QAccessible::Grouping);
  setRole(*findChild<QStackedWidget*>(), QAccessible::Client);  // nothing that screen readers speak of
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

PluginTabs::~PluginTabs() = default;

void PluginTabs::showTabs(Refhost::Gui& gui, const Surroundings& around) {
  const QSignalBlocker quiet(this);
  const std::u16string front = gui.panel().selectedTabId().str();
  for (const Refhost::Layout& layout : gui.tabs()) {
    const std::u16string id = layout.root->WidgetNode::id();
    auto* page = new QScrollArea(this);
    auto view = std::make_shared<TreeView>(*layout.root, around, page);
    putInto(*page, *view->widget());
    page->setObjectName(toQt(id));
    addTab(page, toQt(layout.root->shownLabel()));
    views.push_back(std::move(view));
    if (id == front) setCurrentIndex(count() - 1);
  }
}

void PluginTabs::leave() {
  for (const auto& view : views) view->forget();
  const QSignalBlocker quiet(this);
  while (count() > 0) {
    // A widget may be handling the event that ends the tabs, or waiting to; keep its view until it is destroyed.
    QWidget* page = widget(0);
    connect(page, &QObject::destroyed, [view = views.at(0)] {});
    views.erase(views.begin());
    page->setParent(nullptr);
    page->deleteLater();
  }
}

void PluginTabs::updateView(const Refhost::WidgetNode& node) {
  for (const auto& view : views) view->update(node);
}

QString PluginTabs::selected() const { return currentWidget() != nullptr ? currentWidget()->objectName() : QString(); }

void PluginTabs::select(const QString& id) {
  for (int i = 0; i < count(); ++i)
    if (widget(i)->objectName() == id) setCurrentIndex(i);
}

}  // namespace Window
