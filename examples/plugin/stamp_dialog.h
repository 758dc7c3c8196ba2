// The dialog that asks for the text of the stamp.
#pragma once

#include "kiln/plugin.h"

#include <optional>
#include <string>

namespace Stamp {

class StampDialog final : public Kiln::SignalTarget {
 public:
  // `allocator` outlives the object.
  explicit StampDialog(Kiln::Allocator& lender) : allocator(lender) {}

  // Shows the dialog with a text to begin with. Returns the text that the user has accepted; nothing after Cancel.
  std::optional<std::u16string> ask(Kiln::XUL::GUI& gui, const std::u16string& proposed);

 private:
  void onTyping(Kiln::SmartPtr<Kiln::XUL::TextChangeEventArg> change);
  void onOk(Kiln::XUL::SubDialogEventArg& event);

  Kiln::Allocator& allocator;
  Kiln::SmartPtr<Kiln::XUL::SubDialog> dialog;
  Kiln::SmartPtr<Kiln::XUL::TextBox> box;
  std::optional<std::u16string> accepted;
};

}  // namespace Stamp
