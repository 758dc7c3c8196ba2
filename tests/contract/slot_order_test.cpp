// Hosts and plug-ins find each other's operations by their places, so nobody may reorder them.
#include "kiln/plugin.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

// The slot of a virtual function, from how this compiler's interface represents a pointer to one: its offset in the table
// of functions, plus one.
template <class Function>
std::size_t slotOf(Function function) {
  std::uintptr_t representation = 0;
  static_assert(sizeof function >= sizeof representation);
  std::memcpy(&representation, &function, sizeof representation);
  return static_cast<std::size_t>(representation - 1) / sizeof(void*);
}

void expectConsecutive(const std::vector<std::size_t>& slots) {
  for (std::size_t i = 1; i < slots.size(); ++i) EXPECT_EQ(slots[i], slots[0] + i) << "the operation at place " << i;
}

using Kiln::PTPlugin;
using Kiln::UIPlugin;
using Kiln::XUL::Widget;

TEST(SlotOrder, OfUIPluginIsTheLifeCycleThenTheInheritedThree) {
  expectConsecutive({slotOf(&UIPlugin::create), slotOf(&UIPlugin::initialise), slotOf(&UIPlugin::configureUI),
                     slotOf(&UIPlugin::rootlessActivation), slotOf(&UIPlugin::propertyManager),
                     slotOf(&UIPlugin::isActive), slotOf(&UIPlugin::showHelp)});
}

TEST(SlotOrder, OfPTPluginIsSchemaThenBothConversions) {
  expectConsecutive({slotOf(&PTPlugin::getSchema), slotOf(&PTPlugin::convertPMtoPT), slotOf(&PTPlugin::convertPTtoPM)});
}

TEST(SlotOrder, OfWidgetIsHideToSetEnabled) {
  expectConsecutive({slotOf(&Widget::hide), slotOf(&Widget::enable), slotOf(&Widget::disable),
                     slotOf(&Widget::setVisible), slotOf(&Widget::setEnabled)});
}

}  // namespace
