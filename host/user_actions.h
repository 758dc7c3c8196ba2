// What the user does with the preferences, told as the commands of the drive script (docs/drive.md) that repeat it.
//
// At most one action is unanswered at a time. A modal dialog that opens answers it, and the actions in the dialog
// follow; the action that closes the dialog stays unanswered until the code that opened the dialog ends or opens
// another modal dialog. A veto or a failure in between belongs to that action.
#pragma once

#include "host/trace.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Refhost {

class Dialog;

// Where an action has a text of the user's own, such as a name or a path: in its last argument and in the answer, or in
// the answer alone.
enum class OwnText { none, argument, answer };

struct UserAction {
  // The command's name, and what follows it.
  std::string command;
  std::vector<std::u16string> arguments = {};
  OwnText ownText = OwnText::none;
};

struct ActionAnswer {
  // The members besides "ok" and "error".
  std::vector<std::pair<std::string, TraceValue>> members;

  // One sentence; empty on success.
  std::string failure;
};

class ActionListener {
 public:
  virtual ~ActionListener() = default;

  // An action begins; it is answered before the next one begins.
  virtual void begins(const UserAction& action) = 0;
  virtual void answered(const ActionAnswer& answer) = 0;
};

// The preferences act through this, and faces operate widgets through it.
class UserActions {
 public:
  using Members = std::vector<std::pair<std::string, TraceValue>>;

  UserActions() = default;
  UserActions(const UserActions&) = delete;
  UserActions& operator=(const UserActions&) = delete;

  // Null for nobody. The listener outlives the actions.
  void tell(ActionListener* toTell) { listener = toTell; }

  // Does an action. One that is done as a part of another, without a dialog in between, is not told. Exceptions
  // propagate, and fail the action.
  void act(const UserAction& action, const std::function<void()>& deed);

  // The same, for an action that has a name asked: it is told once that is known, after it.
  void actWithName(const UserAction& action, const std::function<void()>& deed);

  // The outermost and the innermost of the actions that are being done; null for none. Valid while it is being done.
  const UserAction* outermost() const { return doing.empty() ? nullptr : doing.front(); }
  const UserAction* innermost() const { return doing.empty() ? nullptr : doing.back(); }

  // Adds a member to the answer of the action that is done; not once that was answered, when a dialog opened.
  void answer(const std::string& name, TraceValue value);

  // The user entered a name that the action has asked for, or none.
  void named(const std::optional<std::u16string>& name);

  // The latest of these names: nothing when there was none.
  const std::optional<std::u16string>& latestName() const { return givenName; }

  // The deed was vetoed, or failed: belongs to the action that is unanswered.
  void vetoed();
  void failed(const std::string& sentence);

  // Runs the loop of a modal dialog, in which the user acts.
  void inDialog(const Dialog& dialog, const std::function<void()>& loop);

  // The user's actions on widgets: as the operations of these. Without an effect, and not told, when the user cannot
  // operate the widget.
  void click(Button& button);
  void click(CheckBox& box);
  void click(RadioButton& button);
  void choose(SelectorNode& list, std::int32_t index);
  bool type(TextBoxNode& box, std::u16string_view text, Edit how);
  void leave(TextBoxNode& box);
  void scroll(ScrollBar& bar, std::int32_t position);
  void pick(ColorPicker& picker, std::uint32_t colour);
  void drop(ImageBox& image, const std::u16string& value);
  void chooseFromMenu(ImageBox& image, const std::u16string& text);

 private:
  struct Unanswered {
    std::size_t number;
    ActionAnswer answer;
  };

  enum class Name { none, asked };

  void act(const UserAction& action, Name name, const std::function<void()>& deed);
  void actAndTell(const UserAction& action, Name name, const std::function<void()>& deed);
  void onWidget(WidgetNode& widget, const UserAction& action, const std::function<void()>& deed);
  void begin(const UserAction& action);
  void tellHeld();
  void send();

  ActionListener* listener = nullptr;
  std::vector<const UserAction*> doing;  // the innermost last
  std::vector<const Dialog*> running;    // the modal dialogs, the innermost last
  bool isActing = false;                 // whether an action is being done in the innermost dialog
  std::size_t current = 0;               // the number of the action being done there
  std::size_t count = 0;
  std::optional<Unanswered> unanswered;
  std::optional<UserAction> held;  // the unanswered action, while it has not been told
  std::optional<std::u16string> givenName;

  // A modal dialog that opened while no action was unanswered; the next answer tells of it.
  std::optional<std::u16string> dialogToTell;
};

}  // namespace Refhost
