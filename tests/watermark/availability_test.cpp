// The watermark group while the selection is unavailable or locked.
#include "watermark_tab.h"

#include "formats/text.h"
#include "host/model/settings.h"
#include "host/reference_host.h"
#include "host/widgets/list.h"
#include "tests/support/host_world.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

namespace {

using Formats::toUtf8;
using testing::ElementsAre;
using testing::IsEmpty;
using Testing::transitions;
using Testing::widgetOperations;

TEST(DisableWM, WithdrawsInOrderThenResetsInOneTransition) {
  Tab tab;
  tab.choose(u"WM_1");
  tab.world->take();
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", false);
  const auto events = tab.world->take();
  EXPECT_THAT(widgetOperations(events),
              ElementsAre("lst_selectedWatermark select 0", "lst_selectedWatermark disable", "lbl_WM disable",
                          "btn_WMAdd disable", "btn_WMEdit disable", "btn_WMDel disable",
                          "lst_selectedWatermark select 0", "btn_WMEdit setEnabled false", "btn_WMDel setEnabled false",
                          std::string(toUtf8(perPageId)) + " setEnabled false"));
  EXPECT_THAT(transitions(events), ElementsAre("Watermark=None,WatermarkSel=0", "Watermark=None"));
  EXPECT_EQ(tab.value(u"WatermarkSel"), "0");
}

TEST(DisableWM, OffersTheGroupAgain) {
  Tab tab;
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", false);
  tab.world->take();
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", true);
  const auto events = tab.world->take();
  const auto operations = widgetOperations(events);
  EXPECT_THAT(std::vector(operations.begin(), operations.begin() + 4),
              ElementsAre("lst_selectedWatermark enable", "lbl_WM enable", "btn_WMEdit disable", "btn_WMDel disable"));
  EXPECT_EQ(operations.back(), "btn_WMAdd enable");
  EXPECT_THAT(transitions(events), ElementsAre("Watermark=None,WatermarkSel=0", "Watermark=None"));
}

TEST(DisableWM, EnablesEditAndDeleteWhileAWatermarkIsSelected) {
  Tab tab;
  tab.choose(u"WM_1");
  tab.world->take();
  tab.world->preferences.setAvailable(u"Watermark", u"None", false);
  // Every option disables the group; a selection made meanwhile is shown when it is enabled.
  tab.world->preferences.set(u"WatermarkSel", u"WM_1");
  tab.world->take();
  tab.world->preferences.setAvailable(u"Watermark", u"None", true);
  const auto events = tab.world->take();
  EXPECT_THAT(widgetOperations(events), ElementsAre("lst_selectedWatermark enable", "lbl_WM enable",
                                                    "btn_WMEdit enable", "btn_WMDel enable", "btn_WMAdd enable"));
  EXPECT_THAT(transitions(events), IsEmpty());
}

TEST(DisableWM, WhileLockedOnlyDisablesTheButtonsWhateverTheFlag) {
  for (const bool available : {false, true}) {
    Tab tab;
    tab.choose(u"WM_1");
    if (available) tab.world->preferences.setAvailable(u"Watermark", u"None", false);
    tab.world->preferences.set(u"WatermarkSel", u"WM_1");
    tab.world->preferences.lock({u"WatermarkSel"});
    tab.world->take();
    tab.world->preferences.setAvailable(u"Watermark", u"None", available);
    const auto events = tab.world->take();
    EXPECT_THAT(widgetOperations(events), ElementsAre("lst_selectedWatermark select WM_1", "btn_WMAdd disable",
                                                      "btn_WMEdit disable", "btn_WMDel disable"));
    EXPECT_THAT(transitions(events), IsEmpty());
    EXPECT_EQ(tab.value(u"WatermarkSel"), "WM_1");
  }
}

TEST(DisableWM, OfAFullStoreLeavesAddDisabled) {
  std::string records;
  for (int i = 0; i < 20; ++i) {
    const std::string id = "WM_" + std::to_string(i);
    records += "<" + id + "><label>" + id + "</label><value>" + id + "</value></" + id + ">";
  }
  Tab tab("<Watermarks>" + records + "</Watermarks>");
  EXPECT_FALSE(tab.isEnabled(u"btn_WMAdd"));
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", false);
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", true);
  EXPECT_FALSE(tab.isEnabled(u"btn_WMAdd"));
}

}  // namespace
