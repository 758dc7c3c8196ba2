// Any bytes as a layout: what is read twice is the same twice, its widgets are where they can be found, and a user can
// operate each of them.
#include "fuzz/fuzzing.h"
#include "host/chrome/layout.h"
#include "host/chrome/strings.h"
#include "script/describe.h"

#include <limits>
#include <stdexcept>

namespace {

using namespace Refhost;
using Fuzzing::demand;

Script::Json described(const Layout& layout) {
  Script::Json all = Script::Json::array();
  walk(*layout.root, [&all](WidgetNode& widget) { all.push_back(Script::describe(widget)); });
  return all;
}

void demandInPlace(const Layout& layout, const WidgetNode& widget) {
  if (!widget.id().empty()) demand(layout.find(widget.id()) == &widget);
  for (const WidgetNode* child : widget.children()) {
    demand(child->parent() == &widget);
    demand(!child->isShown() || widget.isShown());
    demand(!child->isOperable() || widget.isOperable());
  }
}

void operate(CheckBox& box) {
  const bool before = box.isChecked();
  box.click();
  demand(box.isChecked() == (box.isOperable() ? !before : before));
}

void operate(RadioButton& button) {
  const bool before = button.isChecked();
  button.choose();
  demand(button.isChecked() == (before || button.isOperable()));
}

void operate(ScrollBar& bar) {
  demand(bar.least() <= bar.position() && bar.position() <= bar.most());
  const std::int32_t before = bar.position();
  bar.scroll(std::numeric_limits<std::int32_t>::max());
  demand(bar.position() == (bar.isOperable() ? bar.most() : before));
}

void operate(SelectorNode& list, bool isOperable) {
  const std::int32_t count = list.items().count();
  demand(list.selection() < count);
  const std::int32_t before = list.selection();
  list.choose(count - 1);
  demand(list.selection() == (isOperable && count > 0 ? count - 1 : before));
}

void operate(TextBoxNode& box) {
  const std::u16string text(100, u'x');
  const bool isTaken = box.edit(text, Edit::typed);
  if (isTaken) demand(box.content().size() == std::min(text.size(), box.maximumLength().value_or(text.size())));
  box.leave();
}

void operate(WidgetNode& widget) {
  if (auto* box = dynamic_cast<CheckBox*>(&widget)) operate(*box);
  if (auto* button = dynamic_cast<RadioButton*>(&widget)) operate(*button);
  if (auto* bar = dynamic_cast<ScrollBar*>(&widget)) operate(*bar);
  if (auto* list = dynamic_cast<SelectorNode*>(&widget)) operate(*list, widget.isOperable());
  if (auto* box = dynamic_cast<TextBoxNode*>(&widget)) operate(*box);
  if (auto* button = dynamic_cast<Button*>(&widget)) button->click();
}

struct World {
  Trace trace;
  StringTables strings{ChromeFolders(RESOURCES_FOLDER), "en-US"};
  WidgetWorld widgets{trace, strings, {}, [](const auto& action) { action(); }, [](WidgetNode&) {}};
  ChromeFolders folders{Fuzzing::folder()};
  LayoutReader reader{folders, {}};

  Layout read() { return reader.read(u"chrome://input/content/input.xul", widgets); }
};

void check(World& world, std::string_view bytes) {
  Fuzzing::write(Fuzzing::folder() / "input" / "content" / "input.xul", bytes);
  try {
    const Layout layout = world.read();
    const Script::Json before = described(layout);
    demand(described(world.read()) == before);
    walk(*layout.root, [&layout](WidgetNode& widget) { demandInPlace(layout, widget); });
    walk(*layout.root, [](WidgetNode& widget) { operate(widget); });
    Script::toLine(described(layout));
  } catch (const std::runtime_error&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World& world = *new World;
  check(world, Fuzzing::text(data, size));
  return 0;
}
