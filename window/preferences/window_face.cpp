#include "window/preferences/window_face.h"

#include "formats/overlay_index.h"
#include "window/dialogs/name_question.h"
#include "window/dialogs/subject.h"
#include "window/preferences/overlay_naming.h"

namespace Window {

// Dialogs show the page that is shown beside the tabs.
Surroundings WindowFace::surroundings() const {
  Surroundings around = world.session.surroundings();
  around.page = world.pages.plainPage();
  if (const QSizeF size = world.pages.plainSize(); !size.isEmpty()) around.paper = size;
  return around;
}

void WindowFace::runModally(Refhost::Dialog& dialog) {
  const QString subject = subjectOf(dialog, world.session.preferences().gui(), world.session.actions());
  dialogs.runModally(dialog, subject, surroundings(), &world.window);
}

void WindowFace::dialogOpened(Refhost::Dialog& dialog) { dialogs.open(dialog, surroundings(), &world.window); }

void WindowFace::dialogClosed(Refhost::Dialog& dialog) { dialogs.closed(dialog); }

void WindowFace::widgetChanged(Refhost::WidgetNode& widget) {
  world.tabs.updateView(widget);
  dialogs.update(widget);
}

void WindowFace::showHelp(const std::u16string& url, const std::u16string& topic) { world.help.show(url, topic); }

// Offers the existing names for completion: entering one recreates that overlay.
std::optional<std::u16string> WindowFace::askJobStep() {
  const Texts texts = world.session.texts();
  const NameQuestion question{.topic = "printIntoOverlay",
                              .title = texts("OVERLAY_TITLE"),
                              .label = texts("JOB_STEP"),
                              .longest = int{Formats::overlayNameUnits},
                              .offered = overlaysListed(world.session),
                              .judge = judgeOfNew(world.session),
                              .note = effectsInOverlay(world.session)};
  const auto name = askForName(question, &world.window);
  const auto given = name ? std::optional(toWide(*name)) : std::nullopt;
  world.session.actions().named(given);
  return given;
}

void WindowFace::showFailure(const std::string& sentence) { world.messages.showFailure(sentence); }

}  // namespace Window
