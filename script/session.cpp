#include "script/session.h"

#include "files/path_text.h"
#include "formats/printable.h"
#include "formats/text.h"
#include "host/kept_watermark.h"
#include "script/commands.h"
#include "script/describe.h"
#include "script/words.h"

#include <algorithm>
#include <iostream>
#include <istream>
#include <stdexcept>
#include <utility>

namespace Script {
namespace {

// Prevents an endless loop with a plug-in that opens a dialog whenever one is cancelled.
constexpr int mostDialogsAfterEnd = 100;

// Far more than any command needs.
constexpr std::size_t mostBytesOfLine = std::size_t{1} << 20;

// Reads to the end of the line, but stores only the start of one that is too long; false at the end of the script.
bool readLine(std::istream& lines, std::string& line) {
  line.clear();
  bool isAtEnd = true;
  for (char unit = 0; lines.get(unit); isAtEnd = false) {
    if (unit == '\n') return true;
    if (line.size() <= mostBytesOfLine + 1) line += unit;  // a carriage return may follow
  }
  return !isAtEnd && !lines.bad();
}

}  // namespace

Session::Session(const Request& request, std::istream& commandLines, Answered toHear)
    : options(request.preferences),
      commands(commandLines),
      answered(std::move(toHear)),
      jobStep(request.jobStep) {
  if (options.home.empty()) options.home = temporaryHome.emplace().path();
  if (request.trace.empty()) return;
  traceFile.open(request.trace, std::ios::binary | std::ios::trunc);
  if (!traceFile) throw std::runtime_error("The trace file " + Files::shownPath(request.trace) + " cannot be written.");
}

bool Session::run() {
  openFirst();
  std::string line;
  while (nextCommand(line)) {
    execute(line);
    send();
  }
  close();
  for (const std::string& failure : failures) tell(failure);
  if (commands.bad()) throw std::runtime_error("The commands cannot be read to their end.");
  return allOk;
}

Refhost::Preferences& Session::preferences() {
  if (!opened) throw std::runtime_error("The preferences could not be opened.");
  return *opened;
}

Refhost::Gui& Session::gui() {
  Refhost::Gui* gui = preferences().gui();
  if (gui != nullptr) return *gui;
  throw std::runtime_error(options.mode == Refhost::Mode::rootless
                               ? "There is no user interface in mode rootless."
                               : "The preferences were closed by OK or Cancel; \"reload\" opens them anew.");
}

Refhost::Dialog* Session::topmost() {
  if (!dialogsOfJob.empty()) return dialogsOfJob.back().get();
  return !opened || opened->openDialogs().empty() ? nullptr : opened->openDialogs().back().get();
}

Refhost::WidgetNode& Session::widget(const std::u16string& id) {
  Refhost::Dialog* dialog = topmost();
  if (Refhost::WidgetNode* found = dialog != nullptr ? dialog->layout().find(id) : gui().find(id)) return *found;
  const std::string place = dialog != nullptr ? "the dialog " + Formats::toUtf8(dialog->url()) : "the preferences";
  throw std::runtime_error("There is no widget \"" + Formats::toUtf8(id) + "\" in " + place + ".");
}

void Session::accept(Refhost::Dialog& dialog) {
  const Kiln::SmartPtr<Refhost::Dialog> held(&dialog);
  if (!dialog.ok().isOperable())
    throw std::runtime_error("OK of the dialog " + Formats::toUtf8(dialog.url()) + " cannot be pressed now.");
  if (!dialog.accept()) addVeto();
}

void Session::acceptPreferences() {
  gui();
  if (!preferences().accept()) addVeto();
}

bool Session::mayPrint() {
  gui();
  const bool isAllowed = preferences().mayPrint();
  if (!isAllowed) addVeto();
  return isAllowed;
}

void Session::reload() {
  opened.reset();
  try {
    open();
  } catch (...) {
    opened.reset();
    throw;
  }
}

void Session::reopen(const std::string& model, const std::string& locale, const Refhost::TracePairs& values) {
  const bool isOtherLanguage = std::exchange(options.locale, locale) != locale;
  options.model = model;
  options.properties = values;
  reload();
  if (isOtherLanguage) Refhost::keepWatermarkText(*opened, values);
}

Json Session::takeEvents() { return std::exchange(events, Json::array()); }

void Session::runModally(Refhost::Dialog& dialog) {
  const Kiln::SmartPtr<Refhost::Dialog> held(&dialog);
  const bool isOfJob = opened && std::ranges::find(opened->openDialogs(), held) == opened->openDialogs().end();
  if (isOfJob) dialogsOfJob.push_back(held);
  runCommands(dialog);
  if (isOfJob) std::erase(dialogsOfJob, held);
}

void Session::runCommands(Refhost::Dialog& dialog) {
  if (unanswered) {
    unanswered->members["modal"] = text(dialog.url());
    send();
  } else {
    dialogToTell = dialog.url();
  }
  std::string line;
  while (dialog.isOpen() && nextCommand(line)) {
    execute(line);
    if (dialog.isOpen()) send();
  }
  if (!dialog.isOpen()) return;
  if (++dialogsAfterEnd > mostDialogsAfterEnd)
    throw std::runtime_error("The plug-in keeps opening dialogs after the end of the script.");
  while (dialog.isOpen()) {
    // Destroying the preferences cancels dialogs too, and then their handlers may open this one.
    const Kiln::SmartPtr<Refhost::Dialog> innermost(opened ? topmost() : &dialog);
    innermost->cancel();
    innermost->close();
  }
}

void Session::showFailure(const std::string& sentence) { fail(sentence); }

void Session::tell(const std::string& sentence) { std::cerr << "kiln: " + Formats::printable(sentence) + '\n'; }

void Session::open() {
  opened = std::make_unique<Refhost::Preferences>(options, *this);
  opened->trace().listen([this](const Refhost::TraceEvent& event) { record(event); });
  opened->open();
  if (const std::string& unread = opened->unread(); !unread.empty()) throw std::runtime_error(unread);
}

void Session::close() {
  if (opened) opened->cancelDialogs();
  opened.reset();
}

// A modal dialog during the opening may have executed commands already. Their answers are written even if the opening
// fails.
void Session::openFirst() {
  try {
    open();
    if (!failures.empty()) throw std::runtime_error(failures.front());
  } catch (const std::exception& error) {
    opened.reset();
    if (commandsRead == 0) throw;
    fail(error.what());
  }
  send();
}

bool Session::nextCommand(std::string& line) {
  while (!isEnded && readLine(commands, line)) {
    if (line.ends_with('\r')) line.pop_back();
    if (!isComment(line)) return true;
  }
  return false;
}

void Session::execute(const std::string& line) {
  const std::size_t command = ++commandsRead;
  unanswered = Answer{command, std::nullopt, Json::object()};
  if (dialogToTell) unanswered->members["modal"] = text(*std::exchange(dialogToTell, std::nullopt));
  try {
    if (line.size() > mostBytesOfLine)
      throw std::runtime_error("The line is longer than " + std::to_string(mostBytesOfLine) + " bytes.");
    const Json members = obey(*this, splitWords(line));
    if (unanswered && unanswered->command == command) unanswered->members.update(members);
  } catch (const std::exception& error) {
    fail(error.what());
  }
}

void Session::fail(const std::string& sentence) {
  if (!unanswered)
    failures.push_back(sentence);
  else if (!unanswered->error)
    unanswered->error = sentence;
}

// An exception takes precedence over a veto.
void Session::addVeto() {
  if (unanswered && !unanswered->error) unanswered->members["vetoed"] = true;
}

void Session::send() {
  if (!unanswered) return;
  Json line = {{"ok", !unanswered->error}};
  if (unanswered->error) line["error"] = *unanswered->error;
  line.update(unanswered->members);
  allOk = allOk && !unanswered->error;
  unanswered.reset();
  if (!answered(line)) isEnded = true;
}

void Session::record(const Refhost::TraceEvent& event) {
  events.push_back(describe(event));
  if (traceFile.is_open()) traceFile << toLine(events.back()) << '\n' << std::flush;
}

int run(const Request& request, std::istream& commands, std::ostream& answers) {
  const auto answered = [&answers](const Json& answer) {
    answers << toLine(answer) << '\n' << std::flush;
    return true;
  };
  return Session(request, commands, answered).run() ? 0 : 1;
}

}  // namespace Script
