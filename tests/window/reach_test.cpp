// Every button can be reached, in every language: none is cut off by the edge of its window or of the screen, and what
// does not fit scrolls. The program runs these tests on small screens with large texts, too.
#include "tests/window/answers.h"
#include "tests/window/stored_overlays.h"
#include "window/dialogs/dialog_window.h"

#include <gmock/gmock.h>

#include <QDialogButtonBox>
#include <QScreen>
#include <QScrollArea>

namespace Window {
namespace {

using testing::IsEmpty;

const std::vector<std::string> locales = {"en-US", "de-DE", "fr-FR", "ja-JP", "zh-CN", "zh-TW"};

// The scroll area that the widget can be scrolled in; null for none.
const QScrollArea* areaAround(const QWidget& widget) {
  for (const QWidget* each = widget.parentWidget(); each != nullptr; each = each->parentWidget())
    if (const auto* area = qobject_cast<const QScrollArea*>(each)) return area;
  return nullptr;
}

// The buttons that cannot be reached: outside of their window, or not scrolling into it.
std::vector<std::string> outOfReach(const QWidget& window) {
  std::vector<std::string> found;
  const QRect screen = window.screen()->availableGeometry();
  if (window.width() > screen.width() || window.height() > screen.height()) found.emplace_back("the window");
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    if (!button->isVisible() || button->window() != &window || button->inherits("QToolButton")) continue;
    const QWidget* area = areaAround(*button);
    const QWidget& shown = area != nullptr ? *area : window;
    const QRect place(area != nullptr ? QPoint() : button->mapTo(&window, QPoint()), button->size());
    const bool isSeen = shown.rect().contains(place) || (area != nullptr && button->height() <= area->height());
    if (!isSeen)
      found.push_back(button->text().toStdString() + " at " + std::to_string(place.right()) + ", " +
                      std::to_string(place.bottom()));
  }
  return found;
}

class ReachTest : public testing::TestWithParam<std::string> {
 protected:
  std::function<void(QWidget&)> look(const char* name) {
    return [name](QWidget& dialog) {
      QCoreApplication::processEvents();
      EXPECT_THAT(outOfReach(dialog), IsEmpty()) << name;
      Testing::press(dialog, Qt::Key_Escape);
    };
  }

  Testing::OpenWindow open{[](Request& request) {
    Testing::useSeveralOverlays(request);
    request.preferences.locale = GetParam();
  }};
  Testing::Answers answers{open};
};

TEST_P(ReachTest, HasTheButtonsOfTheWindow) {
  for (const char* tab : {"pro_tab_device", "pro_tab_effect"}) {
    open.selectTab(tab);
    QCoreApplication::processEvents();
    EXPECT_THAT(outOfReach(*open.window), IsEmpty()) << tab;
  }
}

TEST_P(ReachTest, HasTheButtonsOfTheDialogs) {
  for (const char* entry : {"REPORT", "EXPORT_PROFILE", "PRINT_OVERLAY"}) answers.choose(entry, {look(entry)});
  for (const char* opener : {"btn_WMAdd", "but_EffDet"}) answers.press(opener, look(opener));
}

INSTANTIATE_TEST_SUITE_P(Each, ReachTest, testing::ValuesIn(locales),
                         [](const auto& tested) { return tested.param.substr(0, 2) + tested.param.substr(3); });

}  // namespace
}  // namespace Window
