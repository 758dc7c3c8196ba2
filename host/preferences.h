// One opening of the preferences: a model, a plug-in, its tab, and what a user does with them.
#pragma once

#include "host/chrome/addresses.h"
#include "host/chrome/strings.h"
#include "host/face.h"
#include "host/gui.h"
#include "host/model/properties.h"
#include "host/trace.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Refhost {

class Disk;

using FontNames = std::function<std::optional<std::vector<std::u16string>>()>;

enum class Mode { docProp, pdc, prePrint, rootless };

struct Options {
  // The plug-in library.
  std::filesystem::path plugin;

  // The folder that holds the packages and the folder "models".
  std::filesystem::path resources;
  std::string model = "standard";
  Mode mode = Mode::docProp;
  bool active = true;

  // For everything that a user keeps; made when missing, as far as that is possible. Empty for a temporary one that
  // goes with the run.
  std::filesystem::path home;

  // Host settings on top of the host's own; without a value: the key does not exist.
  std::vector<std::pair<std::u16string, std::optional<std::u16string>>> settings;
  TracePairs properties;
  TracePairs customisation;
  std::string locale = "en-US";
  std::set<std::u16string, std::less<>> withoutWidgets;

  // The horizontal pixels per inch that the screen is to have; nothing: the system's, 96 where the host is free to say.
  std::optional<int> dpi;

  // Asked for the installed font face names when a plug-in wants them; they cannot be told where there is no function,
  // or it gives no list.
  FontNames fonts;

  // What the user's files lie on, for tests; null for the disk of the system.
  Disk* disk = nullptr;
};

class Preferences {
 public:
  // Opens nothing yet. `shownBy` outlives the preferences.
  Preferences(Options options, Face& shownBy);
  ~Preferences();
  Preferences(const Preferences&) = delete;
  Preferences& operator=(const Preferences&) = delete;

  // Loads the plug-in and opens the preferences; with mode prePrint this runs the print-time step. Throws
  // std::runtime_error: one sentence; nothing is half open then. What plug-in code throws goes to the face.
  void open();

  const Options& options() const { return runOptions; }
  Trace& trace() { return events; }
  const ChromeFolders& chrome() const { return folders; }

  // These are valid from open on, also after the preferences were accepted or cancelled.
  PropertyModel& model();
  const StringTables& strings() const;

  // A host setting; nothing when the key does not exist.
  std::optional<std::u16string> setting(std::u16string_view key) const;

  // The tabs and dialogs; null after accept or cancel, and in mode rootless.
  Gui* gui();

  // The folder for what the user keeps.
  const std::filesystem::path& home() const;

  // What a user does. accept fires the pre-accept first and is false when that is refused; the widgets are gone after
  // accept and cancel.
  bool accept();
  void cancel();
  void selectTab(const std::u16string& id);
  void help();
  bool canUndo() const;
  void undo();
  void restoreDefaults();

  // Gives a property a value through a transition of the host's own.
  void set(const std::u16string& name, const std::u16string& value);

  // The current PrintTicket, the plug-in's schema, and what the model can do now (PrintCapabilities), as documents.
  // Throw std::runtime_error: one sentence.
  std::string ticket();
  std::string ticketSchema();
  std::string capabilities();

  // Takes over a PrintTicket's settings, as a user's action that undo takes back. `source` names the document in
  // messages. Throws std::runtime_error, one sentence with source, line and name; nothing has changed then.
  void loadTicket(std::string_view document, const std::string& source);
  void loadTicketFile(const std::filesystem::path& file);

  // The driver writes the captured job into the file that OverlayDestFileName names, and beside it the picture of its
  // first page where it makes one. Throws std::runtime_error, one sentence; the file and the picture that were there
  // before are there then.
  void writeJob(std::string_view bytes, std::optional<std::string_view> picture = {});

  // Fires the profile export signal, and gives the folder that the plug-in's files of the profile go into; it is there
  // when the plug-in has asked for it. Nothing when the host has no local data. `target`:
  // host/profiles/profile_event.h. Throws std::runtime_error, one sentence, what the plug-in fails with or tells
  // meanwhile.
  std::optional<std::filesystem::path> exportProfile(const std::filesystem::path& target,
                                                     const std::u16string& includeUserdata);

  // Gives properties the values of a profile, those that a user may set on this model, and fires the profile import
  // signal: one action of the user's. The profile's files are in their places.
  void importProfile(const std::filesystem::path& target, const TracePairs& values);

  // By hand: an option's availability, the names that the "lock" attribute lists.
  void setAvailable(const std::u16string& name, const std::u16string& option, bool available);
  void lock(std::vector<std::u16string> names);

  // Runs what a user's action sets off: what plug-in code throws is told to the face, and the state before it can be
  // brought back by undo, unless the plug-in has changed files.
  void dispatch(const std::function<void()>& action);

 private:
  struct Run;

  void start();
  void tidyHome();
  void applyOptions();
  void loadDeviceTab();
  void close();

  Options runOptions;
  Face& face;
  Trace events;
  bool changesFiles = false;  // whether the user's action that is running has changed files
  ChromeFolders folders;
  std::unique_ptr<Run> run;
};

}  // namespace Refhost
