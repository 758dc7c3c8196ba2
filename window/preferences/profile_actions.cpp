#include "window/preferences/profile_actions.h"

#include "formats/names.h"
#include "host/profiles/profile.h"
#include "window/dialogs/file_question.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>

#include <optional>

namespace Window {
namespace {

// Asks whether to export, and what; nothing when the user cancels.
std::optional<Refhost::UserData> askWhatToExport(const ActionWorld& world) {
  const Texts texts = world.texts();
  QMessageBox question(QMessageBox::Question, texts("EXPORT_TITLE"), texts("EXPORT_QUESTION"), QMessageBox::NoButton,
                       &world.window);
  question.setObjectName("profile");
  auto* userData = new QCheckBox(texts("INCLUDE_USER_DATA"), &question);
  userData->setChecked(true);
  question.setCheckBox(userData);
  QPushButton* go = question.addButton(texts("EXPORT_BUTTON"), QMessageBox::AcceptRole);
  question.setEscapeButton(question.addButton(texts("CANCEL"), QMessageBox::RejectRole));
  question.setDefaultButton(go);
  question.exec();
  if (question.clickedButton() != go) return {};
  return userData->isChecked() ? Refhost::UserData::included : Refhost::UserData::leftOut;
}

}  // namespace

void exportProfile(const ActionWorld& world) {
  const auto userData = askWhatToExport(world);
  if (!userData) return;
  const Texts texts = world.texts();
  const auto file =
      askForFile({.title = "EXPORT_TITLE", .files = "PROFILE_FILES", .ending = "zip", .offered = texts("PROFILE_NAME")},
                 texts, &world.window);
  if (!file) return;
  // The folder is one of this run.
  std::optional<Refhost::ProfileExport> profile;
  const bool isIncluded = *userData == Refhost::UserData::included;
  world.session.actions().act(
      {"export", {u"profile", std::u16string(isIncluded ? Formats::Value::yes : Formats::Value::no)}},
      [&] { profile.emplace(world.preferences(), *userData); });
  const QString title = texts("EXPORT_TITLE");
  const QString name = toQt(file->filename().u16string());
  const auto task = [&](const RunProgress& progress) { profile->pack(*file, progress); };
  if (world.run(task, {title, texts("EXPORTING").arg(name)}, "EXPORT_STOPPED"))
    world.messages.announce({title, texts("EXPORT_DONE").arg(name)});
}

void importProfile(const ActionWorld& world) {
  const Texts texts = world.texts();
  const auto file = askForFile({.title = "IMPORT_TITLE", .files = "PROFILE_FILES"}, texts, &world.window);
  if (!file) return;
  const QString title = texts("IMPORT_TITLE");
  const QString name = toQt(file->filename().u16string());
  std::vector<std::string> notes;
  Refhost::ProfileHome home = Refhost::ProfileHome::of(world.preferences());
  home.tell = [&notes](const std::string& sentence) { notes.push_back(sentence); };
  Refhost::Manifest profile;
  const auto task = [&](const RunProgress& progress) {
    profile = Refhost::importProfile(Files::realDisk(), *file, home, progress);
  };
  bool isDone = false;
  world.session.actions().act({"import-profile", {Files::pathText(*file)}, Refhost::OwnText::argument}, [&] {
    isDone = world.run(task, {title, texts("IMPORTING").arg(name)}, "IMPORT_STOPPED");
    if (isDone) world.preferences().importProfile({}, profile.values, *home.changes);
  });
  if (!isDone) return;
  world.pages.redraw();
  world.messages.announce({title, texts("IMPORT_DONE").arg(name), notes});
}

}  // namespace Window
