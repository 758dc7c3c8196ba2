// The overlay store alone, on a home of its own.
#pragma once

#include "host/widgets/list.h"
#include "overlay_home.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// "LABEL=FILE" with a random file name.
MATCHER_P(IsNew, label, "") {
  const std::string start = std::string(label) + "=";
  return arg.starts_with(start) && isDrawnName(arg.substr(start.size()));
}

class OverlayStoreTest : public testing::Test {
 protected:
  std::vector<std::string> records() { return OverlayStore::records(*store); }
  Overlays& open(bool isMerged = false) {
    store = world.open(isMerged);
    return *store;
  }

  // The list: "VALUE=TEXT" of each item, followed by whether it has an icon, is red, is marked.
  std::vector<std::string> list(bool withMultiple = true, bool withIcon = true) {
    const auto items = world.host.listData();
    store->fillList(*items, withMultiple,
                    withIcon ? world.host.image(u"chrome://base/content/bitmaps/tips_UD_tb.bmp", u"global") : nullptr);
    std::vector<std::string> lines;
    for (std::int32_t i = 0; i < items->count(); ++i) {
      const auto item = Kiln::smartCast<Refhost::ListItem>(items->at(i));
      lines.push_back(Formats::toUtf8(item->value().view()) + "=" + Formats::toUtf8(item->text().view()) +
                      (item->image() ? " icon" : "") + (item->colour() == u"#FF0000" ? " red" : "") +
                      (item->isMarked() ? " marked" : ""));
    }
    return lines;
  }

  OverlayHome home;
  OverlayStore world{home.folder.path};
  Kiln::SmartPtr<Overlays> store;
};
