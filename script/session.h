// One run of a script: the face that the host's core sees while commands operate it.
//
// At most one command is unanswered at a time. A modal dialog that opens answers it and takes the commands that follow;
// the command that closes the dialog stays unanswered while the code that opened the dialog runs on, to its end or to
// the next modal dialog. What comes to light meanwhile, a veto or an exception, belongs to that command.
#pragma once

#include "host/face.h"
#include "host/preferences.h"
#include "host/temporary_folder.h"
#include "script/json.h"
#include "script/run.h"

#include <fstream>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Script {

class Session final : public Refhost::Face {
 public:
  Session(const Request& scriptRequest, std::istream& commandLines, std::ostream& answerLines);

  // Opens the preferences, obeys the script to its end and closes them. False when a command was not answered with
  // "ok". Throws std::runtime_error when the preferences cannot be opened.
  bool run();

  // What commands act on. They throw std::runtime_error, one sentence, when there is nothing to act on: after a reload
  // that failed, and, for the user interface, also after OK or Cancel and where there is none.
  Refhost::Preferences& preferences();
  Refhost::Gui& gui();

  // The topmost open dialog; null when none is open.
  Refhost::Dialog* topmost();

  // The widget of that id where a user looks: in the topmost dialog, or in the tabs. Throws when there is none.
  Refhost::WidgetNode& widget(const std::u16string& id);

  // Presses OK of a dialog or of the preferences; a veto is told by the command that is unanswered when it falls.
  void accept(Refhost::Dialog& dialog);
  void acceptPreferences();

  // Closes the preferences and opens them again on the same home and options.
  void reload();

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
  // What a command is answered with, as far as it is known.
  struct Answer {
    std::size_t command;
    std::optional<std::string> error;
    Json members;
  };

  void open();
  void close();
  void openFirst();
  bool nextCommand(std::string& line);
  void execute(const std::string& line);
  void fail(const std::string& sentence);
  void addVeto();
  void send();
  void record(const Refhost::TraceEvent& event);

  Refhost::Options options;
  std::istream& commands;
  std::ostream& answers;
  std::ofstream traceFile;
  std::optional<Refhost::TemporaryFolder> temporaryHome;
  std::unique_ptr<Refhost::Preferences> opened;
  std::optional<std::u16string> jobStep;
  Json events = Json::array();

  std::optional<Answer> unanswered;
  std::size_t commandsRead = 0;
  bool allOk = true;

  // A modal dialog that opened while no command was unanswered; the next answer tells of it.
  std::optional<std::u16string> dialogToTell;

  // What failed while no command was unanswered: while opening, or after the end of the script.
  std::vector<std::string> failures;
  int dialogsAfterEnd = 0;
};

}  // namespace Script
