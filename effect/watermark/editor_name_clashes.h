// Asks whether other watermarks may be replaced, when the edited one is accepted with their name.
#pragma once

#include "effect/watermark/editor_context.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Kiln::XUL {

// The ids of the watermarks with a name that a new one with that name would replace.
using IdsOfName = std::function<std::vector<std::u16string>(std::u16string_view name)>;

class EditorNameClashes final : public SignalTarget {
 public:
  EditorNameClashes(const EditorContext& shared, bool isNewRecord, IdsOfName stored)
      : editor(shared),
        isNew(isNewRecord),
        idsOfName(std::move(stored)) {}

  // Keeps the dialog open when the user declines.
  void ask(SubDialogEventArg& event);

  // The ids of the watermarks that the user has agreed to replace, at the last OK.
  const std::vector<std::u16string>& replaced() const { return agreed; }

  // Whether the user has declined at the last OK.
  bool isDeclined() const { return declined; }

 private:
  void askAboutEntries(ListBox& list, WStringView name, std::int32_t own);
  void askAboutOthers(WStringView name);
  bool askAbout(std::u16string_view id, WStringView name);
  void onOverwriteOk(SubDialogEventArg& event);
  bool confirmOverwrite(WStringView name);

  const EditorContext& editor;
  const bool isNew;
  const IdsOfName idsOfName;
  std::vector<std::u16string> asked;  // the edited record's own id, and those that the user was asked about
  std::vector<std::u16string> agreed;
  bool declined = false;
  bool overwriteConfirmed = false;
};

}  // namespace Kiln::XUL
