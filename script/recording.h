// A session of the user as a drive script with the answers, written as it happens. docs/drive.md describes its form.
#pragma once

#include "host/preferences.h"
#include "host/user_actions.h"

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Script {

// What a line of a recording begins with: a fact of the run, and the answer to the command above it.
inline constexpr std::string_view factMark = "#: ";
inline constexpr std::string_view answerMark = "#= ";

// A fact of a run: "model" and its name, "property" and NAME=VALUE. Names of options of "kiln drive" are the options
// with which the recording is replayed.
struct Fact {
  std::string name;
  std::string value;
};
using Facts = std::vector<Fact>;

struct RecordedAction {
  Refhost::UserAction action;

  // Nothing until it is answered.
  std::optional<Refhost::ActionAnswer> answer = {};
};

// The facts of preferences that are about to open. Of their properties, those that are not the model's defaults.
Facts factsOf(const Refhost::Options& opening);

// Lines of a recording, with line breaks.
std::string toLines(const Facts& facts);
std::string toLines(const RecordedAction& recorded);

class Recording final : public Refhost::ActionListener {
 public:
  // `versions` come first in the recording. At most so many bytes of actions are kept; the oldest are forgotten.
  explicit Recording(Facts versionFacts, std::size_t mostKept = std::size_t{4} << 20);

  // Also writes the recording to a file, from the opening on. Throws std::runtime_error, one sentence, when it cannot
  // be.
  void writeTo(const std::filesystem::path& file);

  // Called once with a sentence, when the file cannot be written to its end.
  std::function<void(const std::string& sentence)> onFailure;

  // The properties as they are now. Once it is set, the commands that ask for what an action has changed follow the
  // action, so that a replay compares the values, too.
  std::function<Refhost::TracePairs()> propertiesNow;

  // Call before the preferences open; later openings are actions.
  void opens(const Refhost::Options& opening);

  // Refhost::ActionListener
  void begins(const Refhost::UserAction& action) override;
  void answered(const Refhost::ActionAnswer& answer) override;

  // Valid after opens.
  Facts facts() const;

  // What is kept, and whether that is everything.
  const std::deque<RecordedAction>& actions() const { return kept; }
  bool isWhole() const { return !isCut; }

  const std::filesystem::path& home() const { return opened->home; }

 private:
  void addChanges();
  void write(const std::string& lines);
  void forgetOldest();

  Facts versions;
  std::size_t most;
  std::optional<Refhost::Options> opened;
  std::string homeHeld;
  std::deque<RecordedAction> kept;
  std::size_t bytes = 0;
  bool isCut = false;
  Refhost::TracePairs before;  // the properties before the action that is done
  std::filesystem::path path;
  std::ofstream file;
};

}  // namespace Script
