#include "window/preferences/overlay_making.h"

#include "formats/overlay_index.h"
#include "formats/papers.h"
#include "host/overlay_job.h"
#include "host/overlay_names.h"
#include "press/error.h"
#include "press/job/capture.h"
#include "press/job/form_file.h"
#include "press/job/print.h"
#include "window/dialogs/file_question.h"
#include "window/dialogs/name_question.h"
#include "window/dialogs/new_overlay_dialog.h"
#include "window/preferences/overlay_naming.h"

#include <QScopeGuard>

#include <memory>

namespace Window {
namespace {

// The making of one overlay from a file.
class OverlayMaking {
 public:
  OverlayMaking(const ActionWorld& actionWorld, std::filesystem::path formFile)
      : world(actionWorld),
        file(std::move(formFile)),
        fileName(toQt(file.filename().u16string())),
        title(world.texts()("NEW_OVERLAY_TITLE")) {}

  void run() {
    const auto form = formOf(false);
    if (!form) return;
    NewOverlayDialog dialog({.fileName = fileName,
                             .name = toQt(file.stem().u16string()).trimmed().left(int{Formats::overlayNameUnits}),
                             .offered = overlaysListed(world.session),
                             .judge = judgeOfNew(world.session),
                             .form = *form,
                             .remake = [this](bool fills) { return formOf(fills); },
                             .make = [this](const NewOverlay& chosen) { return make(chosen); }},
                            world.texts(), &world.window);
    if (dialog.exec() != QDialog::Accepted || notes.empty()) return;
    world.messages.announce({title, world.texts()("NEW_OVERLAY_DONE").arg(made), notes});
  }

 private:
  // The forms so far stay until the dialog is closed: its picture may still be drawn of one.
  std::optional<OverlayForm> formOf(bool fills) {
    OverlayForm form;
    std::shared_ptr<Press::FormFile> read;
    const Formats::Paper paper =
        Formats::paperOf(world.preferences().model().value(Formats::Prop::paperSize).value_or(u""));
    const auto task = [&](const RunProgress& progress) {
      read = std::make_shared<Press::FormFile>(file, Press::PicturePage{paper, fills});
      form = {read->pdf(), Press::Job(read->pdf()).pageCount(), read->isPicture()};
      if (!progress(1, 1)) throw Press::Stopped();
    };
    if (!world.run(task, {title, world.texts()("OVERLAY_MAKING").arg(fileName)}, "OVERLAY_STOPPED")) return {};
    files.push_back(read);
    return form;
  }

  bool make(const NewOverlay& chosen) {
    Press::Capture capture;
    const auto task = [&](const RunProgress& progress) {
      capture = Press::captureOverlay(chosen.pdf, {}, chosen.page);
      if (!progress(1, 1)) throw Press::Stopped();
    };
    if (!world.run(task, {title, world.texts()("OVERLAY_MAKING").arg(fileName)}, "OVERLAY_STOPPED")) return false;
    bool isMade = false;
    world.messages.guarded([&] {
      const auto name = storeOverlay(world, capture, toWide(chosen.name));
      if (!name) return;
      isMade = true;
      made = toQt(*name);
      notes = capture.notes;
      choose(*name);
    });
    return isMade;
  }

  void choose(const std::u16string& name) const {
    Refhost::SelectorNode* const list = Refhost::overlayList(world.preferences());
    const std::u16string stored = Formats::storableName(name);
    for (std::int32_t i = 0; list != nullptr && i < list->items().count(); ++i) {
      const auto item = list->items().at(i);
      if (Refhost::isOverlay(*item) && !item->isMarked() && item->text().view() == stored)
        return world.session.actions().choose(*list, i);
    }
  }

  const ActionWorld& world;
  std::filesystem::path file;
  QString fileName;
  QString title;
  QString made;
  std::vector<std::string> notes;
  std::vector<std::shared_ptr<Press::FormFile>> files;
};

}  // namespace

void newOverlay(const ActionWorld& world) {
  const FileQuestion question{.title = "NEW_OVERLAY_TITLE", .files = "FORM_FILES", .folder = world.job.folder()};
  if (const auto file = askForFile(question, world.texts(), &world.window)) newOverlayOf(world, *file);
}

void newOverlayOf(const ActionWorld& world, const std::filesystem::path& file) { OverlayMaking(world, file).run(); }

std::optional<std::u16string> storeOverlay(const ActionWorld& world, const Press::Capture& capture,
                                           const std::optional<std::u16string>& name) {
  // The overlay may be on the page, replaced or restored.
  const auto redraw = qScopeGuard([&world] { world.pages.redraw(); });
  std::optional<std::u16string> stored;
  Refhost::UserActions& actions = world.session.actions();
  actions.actWithName({"print-overlay"}, [&] {
    const Refhost::CapturedJob job{capture.pdf, capture.thumbnail};
    stored = name ? Refhost::printIntoOverlay(world.preferences(), world.face, job, *name)
                  : Refhost::printIntoOverlay(world.preferences(), world.face, job);
    actions.answer("created", stored.has_value());
  });
  return stored;
}

bool mayRenameOverlay(const ActionWorld& world) {
  Refhost::SelectorNode* const list = Refhost::overlayList(world.preferences());
  const auto item = list == nullptr ? Kiln::SmartPtr<Kiln::XUL::ListItem>() : list->items().at(list->selection());
  return item && Refhost::isOverlay(*item) && !item->isMarked();
}

void renameOverlay(const ActionWorld& world) {
  if (!mayRenameOverlay(world)) return;
  Refhost::SelectorNode& list = *Refhost::overlayList(world.preferences());
  const std::int32_t index = list.selection();
  const Texts texts = world.texts();
  const NameQuestion question{.topic = "renameOverlay",
                              .title = texts("RENAME_OVERLAY_TITLE"),
                              .label = texts("JOB_STEP"),
                              .longest = int{Formats::overlayNameUnits},
                              .name = toQt(list.items().at(index)->text().view()),
                              .judge = judgeOfRenamed(world.session, index)};
  const auto name = askForName(question, &world.window);
  if (!name) return;
  Refhost::renameOverlay(world.preferences(), index, toWide(*name));
  world.pages.redraw();
}

}  // namespace Window
