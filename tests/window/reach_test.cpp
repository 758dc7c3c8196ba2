// Every button can be reached, in every language: none is cut off by the edge of its window or of the screen, and what
// does not fit scrolls. The program runs these tests on small screens with large texts, too.
#include "tests/support/locales.h"
#include "tests/window/every_dialog.h"
#include "tests/window/stored_overlays.h"

#include <gmock/gmock.h>

#include <QDialogButtonBox>
#include <QScreen>
#include <QScrollArea>

namespace Window {
namespace {

using testing::IsEmpty;

// Scrolls the areas that the widget is in, from the innermost outwards, until they show it.
void scrollTo(QWidget& widget) {
  for (QWidget* each = widget.parentWidget(); each != nullptr; each = each->parentWidget())
    if (auto* area = qobject_cast<QScrollArea*>(each)) area->ensureWidgetVisible(&widget, 0, 0);
}

// The buttons that cannot be reached: cut off by the edge of their window or of what scrolls them into it, or lying
// under other widgets.
std::vector<std::string> outOfReach(const QWidget& window) {
  std::vector<std::string> found;
  const QRect screen = window.screen()->availableGeometry();
  if (window.width() > screen.width() || window.height() > screen.height()) found.emplace_back("the window");
  for (auto* button : window.findChildren<QAbstractButton*>()) {
    if (!button->isVisible() || button->window() != &window) continue;
    scrollTo(*button);
    const QRect seen = button->visibleRegion().boundingRect();
    if (seen != button->rect())
      found.push_back((button->text() + ' ' + button->objectName()).toStdString() + ": only " +
                      std::to_string(seen.width()) + " x " + std::to_string(seen.height()) + " of " +
                      std::to_string(button->width()) + " x " + std::to_string(button->height()));
  }
  return found;
}

class ReachTest : public testing::TestWithParam<std::string> {
 protected:
  static void look(QWidget& dialog, const std::string& name) {
    QCoreApplication::processEvents();
    EXPECT_THAT(outOfReach(dialog), IsEmpty()) << name;
    Testing::press(dialog, Qt::Key_Escape);
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
  Testing::openEveryDialog(open, answers, look);
  EXPECT_THAT(answers.unexpected, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Each, ReachTest, testing::ValuesIn(Testing::locales), Testing::testedLocale);

}  // namespace
}  // namespace Window
