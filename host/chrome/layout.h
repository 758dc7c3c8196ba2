// Layouts: XUL documents loaded as widgets.
#pragma once

#include "host/chrome/addresses.h"
#include "host/documents/format.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"
#include "host/widgets/preview.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace Refhost {

// A loaded layout, which owns its widgets.
struct Layout {
  // The page of the preferences, or the content of the dialog.
  Kiln::SmartPtr<Container> root;

  // A dialog's title, with references unresolved, and its buttons, which are not among the root's children.
  std::u16string title;
  Kiln::SmartPtr<Button> acceptButton;
  Kiln::SmartPtr<Button> cancelButton;

  // Whether the Return key presses Cancel, and not OK.
  bool isCancelDefault = false;

  // The widget with that id; null when the layout has none.
  WidgetNode* find(std::u16string_view id) const;
};

// Calls `visit` for a widget and all its descendants, parents first.
void walk(WidgetNode& root, const std::function<void(WidgetNode&)>& visit);

// The format of a layout.
extern const DocumentFormat layoutFormat;

class LayoutReader {
 public:
  // `without`: ids of widgets to omit from every layout.
  LayoutReader(const ChromeFolders& chromeFolders, std::set<std::u16string, std::less<>> without);

  // Throws std::runtime_error: one sentence with file and line.
  Layout read(std::u16string_view url, WidgetWorld& world) const;

 private:
  const ChromeFolders& folders;
  std::set<std::u16string, std::less<>> omitted;
};

}  // namespace Refhost
