// The face of a run that has nobody to ask.
#pragma once

#include "host/face.h"

#include <optional>
#include <string>

namespace App {

// Dialogs are cancelled as they open, and what goes wrong is kept.
class SilentFace final : public Refhost::Face {
 public:
  // Throws std::runtime_error with the first failure since the last call, if there is one.
  void check();

  void runModally(Refhost::Dialog& dialog) override;
  void dialogOpened(Refhost::Dialog&) override {}
  void dialogClosed(Refhost::Dialog&) override {}
  void widgetChanged(Refhost::WidgetNode&) override {}
  void showHelp(const std::u16string&, const std::u16string&) override {}
  std::optional<std::u16string> askJobStep() override { return std::nullopt; }
  void showFailure(const std::string& sentence) override;
  void tell(const std::string& sentence) override;

 private:
  std::optional<std::string> failure;
};

}  // namespace App
