// What a user does: every widget of the tab is operated, and so is every dialog.
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"
#include "formats/text.h"
#include "host/profiles/profile_event.h"

#include <algorithm>

namespace Checking {
namespace {

using Refhost::Library;

// The most widgets of one layout, and items of one list, that are operated.
constexpr std::size_t mostWidgets = 300;
constexpr std::int32_t mostItems = 4;
constexpr std::size_t mostDialogs = 200;

constexpr int foreign = 42;

void type(Refhost::TextBoxNode& box) {
  for (const char16_t* text : {u"1", u"Check", u""}) {
    box.edit(text, Refhost::Edit::typed);
    box.edit(std::u16string(text) + u"2", Refhost::Edit::pasted);
    box.leave();
  }
}

void operate(Refhost::WidgetNode& widget) {
  if (auto* button = dynamic_cast<Refhost::Button*>(&widget)) button->click();
  if (auto* box = dynamic_cast<Refhost::CheckBox*>(&widget)) {
    box->click();
    box->click();
  }
  if (auto* radio = dynamic_cast<Refhost::RadioButton*>(&widget)) radio->choose();
  if (auto* list = dynamic_cast<Refhost::SelectorNode*>(&widget))
    for (std::int32_t i = std::min(list->items().count(), mostItems) - 1; i >= 0; --i) list->choose(i);
  if (auto* box = dynamic_cast<Refhost::TextBoxNode*>(&widget)) type(*box);
  if (auto* bar = dynamic_cast<Refhost::ScrollBar*>(&widget)) {
    bar->scroll(bar->most());
    bar->scroll(bar->least());
  }
  if (auto* picker = dynamic_cast<Refhost::ColorPicker*>(&widget)) picker->pick(0x123456);
}

// Operates the widgets of a layout, as long as it lasts.
void operateAll(Refhost::Layout& layout) {
  std::vector<Kiln::SmartPtr<Kiln::XUL::Widget>> held;
  std::vector<Refhost::WidgetNode*> widgets;
  Refhost::walk(*layout.root, [&](Refhost::WidgetNode& widget) {
    if (widgets.size() == mostWidgets) return;
    held.emplace_back(&widget.asWidget());
    widgets.push_back(&widget);
  });
  for (Refhost::WidgetNode* widget : widgets) operate(*widget);
}

// Ends the dialogs that open: by OK once their widgets are operated, or by Cancel at once.
class User {
 public:
  User(Opening& used, bool isThorough) : opening(used) {
    if (!isThorough) return;
    opening.face.onModal = [this](Refhost::Dialog& dialog) {
      if (++depth <= 2 && ++dialogs <= mostDialogs) {
        operateAll(dialog.layout());
        if (dialog.isOpen()) dialog.accept();
      }
      --depth;
    };
  }

  void operateTabs() {
    for (const Refhost::Layout& tab : opening.gui().tabs()) {
      Refhost::Layout layout = tab;
      opening.act([&] { operateAll(layout); });
    }
  }

 private:
  Opening& opening;
  int depth = 0;
  std::size_t dialogs = 0;
};

template <bool isThorough>
void survivesItsUser(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (const Refhost::Mode mode : {Refhost::Mode::docProp, Refhost::Mode::pdc}) {
    Opening opening(subject, *library, {.mode = mode});
    opening.open();
    User user(opening, isThorough);
    user.operateTabs();
  }
}

void answersThePanel(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.open();
  for (const char16_t* tab : {u"pro_tab_check", u""}) {
    opening.gui().panel().select(tab);
    opening.act([&] { opening.gui().panel().fireHelp(); });
  }
  opening.act([&] { opening.gui().panel().firePreAccept(); });
}

void takesPartInProfiles(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.open();
  const auto fire = [&](auto& signal, const std::optional<std::u16string>& userData) {
    const auto event =
        Refhost::make<Refhost::ProfileEvent>(opening.files(), subject.home / "localdata" / "Check", userData);
    opening.act([&] { signal.fire(event); });
  };
  for (const char16_t* userData : {u"True", u"False"}) fire(*opening.manager().profileExport, userData);
  fire(*opening.manager().profileImport, std::nullopt);
}

void leavesNoBlocks(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  const long before = Refhost::heap().blocks();
  {
    Opening opening(subject, *library);
    opening.open();
    try {
      User user(opening, true);
      user.operateTabs();
    } catch (const std::exception&) {  // of the other checks
    }
  }
  const long left = Refhost::heap().blocks() - before;
  demand(left == 0, std::to_string(left) + " blocks of the host's allocator are left after a user's actions.");
}

// Throws what no plug-in knows, while it is told to.
struct Thrower final : Kiln::SignalTarget {
  void onChange(Kiln::ModelSelectionChange&) {
    if (!isArmed) return;
    hasThrown = true;
    throw foreign;
  }

  bool isArmed = false;
  bool hasThrown = false;
};

// Operates the widget while the thrower throws.
void demandPassing(Opening& opening, Refhost::WidgetNode& widget, Thrower& thrower) {
  thrower.isArmed = true;
  thrower.hasThrown = false;
  bool hasPassed = false;
  try {
    opening.act([&] { operate(widget); });
  } catch (int) {
    hasPassed = true;
  }
  thrower.isArmed = false;
  demand(hasPassed == thrower.hasThrown,
         "A foreign exception of another handler does not pass through the plug-in when the widget " +
             Formats::toUtf8(widget.id()) + " is operated.");
}

void passesExceptionsOn(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  const long before = Refhost::heap().blocks();
  {
    Opening opening(subject, *library);
    opening.open();
    Thrower thrower;
    for (const auto& property : opening.model().description().properties)
      Kiln::connect(*opening.model().selectionChangeSignal(property.name), thrower, &Thrower::onChange);
    std::vector<Refhost::WidgetNode*> widgets;
    for (const Refhost::Layout& tab : opening.gui().tabs())
      Refhost::walk(*tab.root, [&widgets](Refhost::WidgetNode& widget) { widgets.push_back(&widget); });
    for (Refhost::WidgetNode* widget : widgets) {
      demandPassing(opening, *widget, thrower);
      opening.announce();
    }
  }
  const long left = Refhost::heap().blocks() - before;
  demand(left == 0, std::to_string(left) + " blocks of the host's allocator are left after foreign exceptions.");
}

}  // namespace

std::vector<Check> actionChecks() {
  return {{"actions/cancel", "lets each widget be operated, and each dialog be cancelled", survivesItsUser<false>},
          {"actions/accept", "lets each widget of each dialog be operated, and the dialog be accepted",
           survivesItsUser<true>},
          {"actions/panel", "answers the user's wish for help, and to accept", answersThePanel},
          {"actions/profiles", "takes part in the export and the import of a profile", takesPartInProfiles},
          {"actions/exception", "passes a foreign exception of another handler on, and goes on after it",
           passesExceptionsOn},
          {"actions/memory", "leaves no block of the host's allocator after a user's actions", leavesNoBlocks}};
}

}  // namespace Checking
