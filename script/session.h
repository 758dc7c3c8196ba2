// One run of a script: the face of the host's core, operated by commands.
//
// At most one command is unanswered at a time. A modal dialog that opens answers it and executes the following
// commands; the command that closes the dialog stays unanswered until the code that opened the dialog ends or opens
// another modal dialog. A veto or an exception in between belongs to that command.
#pragma once

#include "files/temporary_folder.h"
#include "host/face.h"
#include "host/gui.h"
#include "host/preferences.h"
#include "script/json.h"
#include "script/run.h"

#include <fstream>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Script {

class Session final : public Refhost::Face {
 public:
  // Called with each answer; returns false to end the script.
  using Answered = std::function<bool(const Json& answer)>;

  Session(const Request& scriptRequest, std::istream& commandLines, Answered toHear);

  // Opens the preferences, executes the script and closes them. False when a command failed. Throws std::runtime_error
  // when the preferences cannot be opened.
  bool run();

  // The objects that commands act on. Throw std::runtime_error, one sentence, when they do not exist: after a failed
  // reload, and for the user interface also after OK or Cancel, or in mode rootless.
  Refhost::Preferences& preferences();
  Refhost::Gui& gui();

  // The topmost open dialog, also of a job that the preferences print into an overlay; null when none is open.
  Refhost::Dialog* topmost();

  // The widget with that id in the topmost dialog, or in the tabs when no dialog is open. Throws when there is none.
  Refhost::WidgetNode& widget(const std::u16string& id);

  // Presses OK of a dialog or of the preferences; a veto is reported in the answer of the current command.
  void accept(Refhost::Dialog& dialog);
  void acceptPreferences();

  // Whether a job may be printed now; a veto is reported like that of OK.
  bool mayPrint();

  // Closes the preferences and reopens them with the same home and options.
  void reload();

  // The same for another model and language, and with these initial values instead of those of the options.
  void reopen(const std::string& model, const std::string& locale, const Refhost::TracePairs& values);

  void setJobStep(std::optional<std::u16string> name) { jobStep = std::move(name); }

  // The events since the last call.
  Json takeEvents();

  // Refhost::Face
  void runModally(Refhost::Dialog& dialog) override;
  void dialogOpened(Refhost::Dialog&) override {}
  void dialogClosed(Refhost::Dialog&) override {}
  void widgetChanged(Refhost::WidgetNode&) override {}
  void showHelp(const std::u16string&, const std::u16string&) override {}
  std::optional<std::u16string> askJobStep() override { return jobStep; }
  void showFailure(const std::string& sentence) override;
  void tell(const std::string& sentence) override;

 private:
  // The answer to a command, as far as known.
  struct Answer {
    std::size_t command;
    std::optional<std::string> error;
    Json members;
  };

  void open();
  void close();
  void openFirst();
  void runCommands(Refhost::Dialog& dialog);
  bool nextCommand(std::string& line);
  void execute(const std::string& line);
  void fail(const std::string& sentence);
  void addVeto();
  void send();
  void record(const Refhost::TraceEvent& event);

  Refhost::Options options;
  std::istream& commands;
  Answered answered;
  std::ofstream traceFile;
  std::optional<Files::TemporaryFolder> temporaryHome;
  std::unique_ptr<Refhost::Preferences> opened;
  std::optional<std::u16string> jobStep;
  Json events = Json::array();

  // The running dialogs of preferences other than those opened, the innermost last.
  std::vector<Kiln::SmartPtr<Refhost::Dialog>> dialogsOfJob;

  std::optional<Answer> unanswered;
  std::size_t commandsRead = 0;
  bool allOk = true;
  bool isEnded = false;  // whether no more commands are wanted

  // A modal dialog that opened while no command was unanswered; the next answer reports it.
  std::optional<std::u16string> dialogToTell;

  // Failures while no command was unanswered: during the opening, or after the end of the script.
  std::vector<std::string> failures;
  int dialogsAfterEnd = 0;
};

}  // namespace Script
