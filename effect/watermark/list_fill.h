// The watermark list.
#pragma once

#include "effect/watermark/record.h"

#include <functional>
#include <map>
#include <string>

namespace Effect {

// Records by id. The map's order, by 16-bit units, is the order of ids everywhere: "1", "10", "2", "WM_1", "a".
using WatermarkRecords = std::map<std::u16string, Node, std::less<>>;

struct ListOptions {
  // The icon of downloaded records, which are also red; null shows them like any others.
  Kiln::SmartPtr<Kiln::XUL::Image> downloadedIcon;
  bool hidesBuiltIn = false;
};

// Adds an item for each record that has a name, in id order; the NoneRecord comes first, unless it is already first in
// the list.
void fillWatermarkList(Kiln::Host& host, const WatermarkRecords& records, Kiln::XUL::ListData& list,
                       const ListOptions& options);

// Whether the id belongs to one of the watermarks that come with the tab.
bool isBuiltIn(std::u16string_view id);

}  // namespace Effect
