// One opening of the preferences: a model, a plug-in, its tab, and the user's actions.
#pragma once

#include "files/home_lock.h"
#include "host/chrome/addresses.h"
#include "host/chrome/strings.h"
#include "host/documents/file_changes.h"
#include "host/face.h"
#include "host/gui.h"
#include "host/mode.h"
#include "host/model/properties.h"
#include "host/preset_choice.h"
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

class UndoHistory;

using FontNames = std::function<std::optional<std::vector<std::u16string>>()>;

struct Options {
  // The plug-in library.
  std::filesystem::path plugin;

  // The folders with the packages and the folder "models".
  Files::LayeredFolder resources;
  std::string model = "standard";
  Mode mode = Mode::docProp;
  bool active = true;

  // The folder for all user data; created if possible when missing. Empty for a temporary one that is deleted after the
  // run.
  std::filesystem::path home;

  // Local data that an administrator provides for every user: one folder for each provider. Used where it exists and
  // the home has no local data of its own; its entries are marked as downloaded. Empty for none.
  std::filesystem::path sharedData = {};

  // Host settings that override the defaults; without a value the key does not exist.
  std::vector<std::pair<std::u16string, std::optional<std::u16string>>> settings;
  TracePairs properties;
  TracePairs customisation;
  std::string locale = "en-US";
  std::set<std::u16string, std::less<>> withoutWidgets;

  // The screen's horizontal pixels per inch; when empty, the system's, or 96 if the host decides.
  std::optional<int> dpi;

  // Returns the installed font face names when a plug-in asks for them; unknown when this is empty or returns nothing.
  FontNames fonts;

  // The disk for user files, for tests; null for the file system.
  Files::Disk* disk = nullptr;

  // Where the user's actions are told; null for nowhere.
  std::shared_ptr<UserActions> actions = {};

  // The longest wait for other programs that are changing the home.
  std::chrono::milliseconds longestWait = Files::longestLockWait;
};

class Preferences {
 public:
  // Does not open anything yet. `shownBy` outlives the preferences.
  Preferences(Options options, Face& shownBy);
  ~Preferences();
  Preferences(const Preferences&) = delete;
  Preferences& operator=(const Preferences&) = delete;

  // Loads the plug-in and opens the preferences; in mode prePrint, runs the print-time step. On std::runtime_error (one
  // sentence) nothing is open. Exceptions of plug-in code are reported to the face.
  void open();

  const Options& options() const { return runOptions; }
  Trace& trace() { return events; }
  const ChromeFolders& chrome() const { return folders; }

  // Valid after open, also after accept or cancel.
  PropertyModel& model();
  const StringTables& strings() const;

  // The user's actions on the widgets of the tabs and dialogs.
  UserActions& actions() { return *runOptions.actions; }

  // A host setting; nothing when the key does not exist.
  std::optional<std::u16string> setting(std::u16string_view key) const;

  // The tabs and their dialogs; null after accept or cancel, and in mode rootless.
  Gui* gui();

  // Open dialogs, the topmost last. A plug-in can open dialogs even after accept or cancel.
  const std::vector<Kiln::SmartPtr<Dialog>>& openDialogs() const;

  // Cancels every open dialog, innermost first; closes one whose handler throws.
  void cancelDialogs();

  // The folder for user data.
  const std::filesystem::path& home() const;

  // Why the first file, of those that the plug-in could not look at or read so far, could not be; empty when there is
  // none. Then watermarks or overlays may be missing from what the tabs show. Local data that this user has no
  // permission to read does not count.
  const std::string& unread() const;

  // User actions. accept fires the pre-accept signal first and returns false when vetoed; accept and cancel close the
  // tabs.
  bool accept();
  void cancel();

  // Whether the plug-in would accept OK now, which is the condition for printing a job; fires the pre-accept signal.
  bool mayPrint();
  void selectTab(const std::u16string& id);
  void help();
  void restoreDefaults();

  // Undo takes the latest action back, with what it has changed of the user's watermarks and overlays, and redo does it
  // again. Files that another program has changed since are left as they are: then the face shows a failure, and
  // nothing is left to undo. `nextTo...` are what the user did, empty when not known; null when there is nothing.
  bool canUndo() const;
  void undo();
  const UserAction* nextToUndo() const;
  bool canRedo() const;
  void redo();
  const UserAction* nextToRedo() const;

  // Called after each user action, when what can be undone may have changed. May be empty.
  std::function<void()> onHistory;

  // The values of the properties that a user may set.
  TracePairs userValues() const;

  // Applies those of the values that a user may set on this model, as one user action.
  void apply(const TracePairs& values);

  // The presets of the home. Valid while the preferences are open.
  PresetChoice& presets();

  // Sets a property in a transition of the host.
  void set(const std::u16string& name, const std::u16string& value);

  // The current PrintTicket, the plug-in's schema, and the current PrintCapabilities, as documents. Throw
  // std::runtime_error: one sentence.
  std::string ticket();
  std::string ticketSchema();
  std::string capabilities();

  // Applies a PrintTicket as a user action that can be undone. `source` is the document's name in messages. Throws
  // std::runtime_error, one sentence with source, line and name, without a change.
  void loadTicket(std::string_view document, const std::string& source);
  void loadTicketFile(const std::filesystem::path& file);

  // Writes the captured job to the file that OverlayDestFileName names, and the picture of its first page, if any,
  // beside it. On std::runtime_error (one sentence) the previous file and picture are kept, or restored as soon as no
  // other program keeps the home's lock.
  void writeJob(std::string_view bytes, std::optional<std::string_view> picture = {});

  // Fires the profile export signal and returns the folder for the plug-in's files, which exists if the plug-in has
  // asked for it. Nothing when the host has no local data. `target`: host/profiles/profile_event.h. Throws
  // std::runtime_error, one sentence, with the plug-in's failure or report.
  std::optional<std::filesystem::path> exportProfile(const std::filesystem::path& target,
                                                     const std::u16string& includeUserdata);

  // Applies the values of a profile that a user may set on this model, and fires the profile import signal, as one user
  // action. The profile's files must be in place; `target` may be empty when they have been merged into the home, which
  // has made `changes`.
  void importProfile(const std::filesystem::path& target, const TracePairs& values, const FileChanges& changes = {});

  // Makes the plug-in read the user's watermarks and overlays again, after others have changed them on disk, as one
  // user action.
  void refreshStores();

  // The same after preferences of another opening have changed them, so that undo takes the changes back.
  void takeUpFiles(const FileChanges& changes);

  // What this opening has changed of the user's files.
  FileChanges fileChanges() const;

  // Makes a new content of a file's, under the home's lock.
  using NewContent = std::function<std::string(const FileContent& present)>;

  // Replaces a file of the user's watermarks or overlays, and makes the plug-in read it again, as one user action.
  void changeFile(const std::filesystem::path& file, const NewContent& change);

  // Manual overrides: an option's availability, and the names in the "lock" attribute.
  void setAvailable(const std::u16string& name, const std::u16string& option, bool available);
  void lock(std::vector<std::u16string> names);

  // Runs a user action: reports exceptions of plug-in code to the face, and saves the previous state for undo.
  void dispatch(const std::function<void()>& action);

 private:
  struct Run;

  void start();
  void dispatch(const std::function<void()>& action, std::optional<TracePairs> valuesBefore);
  void travel(UndoHistory& from, UndoHistory& to, FileChanges::State state);
  bool firePreAccept();
  void applyOptions();
  void loadDeviceTab();
  void close();

  Options runOptions;
  Face& face;
  Trace events;
  ChromeFolders folders;
  std::unique_ptr<Run> run;
};

}  // namespace Refhost
