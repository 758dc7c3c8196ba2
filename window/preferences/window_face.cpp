#include "window/preferences/window_face.h"

#include "formats/names.h"
#include "host/gui.h"
#include "host/widgets/list.h"
#include "window/dialogs/name_question.h"

namespace Window {
namespace {

// The overlays in the tab's list, after the entries for none and for several.
QStringList overlayNames(Refhost::Preferences& preferences) {
  QStringList names;
  Refhost::Gui* gui = preferences.gui();
  auto* list =
      gui == nullptr ? nullptr : dynamic_cast<Refhost::SelectorNode*>(gui->find(Formats::WidgetId::overlayList));
  for (int i = 0; list != nullptr && i < list->items().count(); ++i) {
    const auto item = list->items().at(i);
    const std::u16string value = item->value().str();
    if (value != Formats::Value::none && value != Formats::Value::multiple) names << toQt(item->displayedText().view());
  }
  return names;
}

}  // namespace

void WindowFace::runModally(Refhost::Dialog& dialog) {
  dialogs.runModally(dialog, world.session.surroundings(), &world.window);
}

void WindowFace::dialogOpened(Refhost::Dialog& dialog) {
  dialogs.open(dialog, world.session.surroundings(), &world.window);
}

void WindowFace::dialogClosed(Refhost::Dialog& dialog) { dialogs.closed(dialog); }

void WindowFace::widgetChanged(Refhost::WidgetNode& widget) {
  world.tabs.updateView(widget);
  dialogs.update(widget);
}

void WindowFace::showHelp(const std::u16string& url, const std::u16string& topic) { world.help.show(url, topic); }

// Offers the existing names for completion: entering one recreates that overlay.
std::optional<std::u16string> WindowFace::askJobStep() {
  const Texts texts = world.session.texts();
  const NameQuestion question{texts("OVERLAY_TITLE"), texts("JOB_STEP"), overlayNames(world.session.preferences())};
  const auto name = askForName(question, &world.window);
  const auto given = name ? std::optional(toWide(*name)) : std::nullopt;
  world.session.actions().named(given);
  return given;
}

void WindowFace::showFailure(const std::string& sentence) { world.messages.showFailure(sentence); }

}  // namespace Window
