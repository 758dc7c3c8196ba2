// The face of a run without user interaction.
#pragma once

#include "app/messages.h"
#include "host/face.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace App {

// Records failures. Cancels dialogs when they open, unless an operation is set.
class SilentFace final : public Refhost::Face {
 public:
  // `tellUser` takes the host's sentences.
  explicit SilentFace(Tell tellUser) : say(tellUser) {}

  // Called for dialogs that open from now on; a dialog still open afterwards is cancelled. Empty for no operation. Its
  // exceptions are recorded as failures.
  void operateDialogs(std::function<void(Refhost::Dialog&)> operation) { inDialog = std::move(operation); }

  // The answer to the host's job step.
  std::optional<std::u16string> jobStep;

  // Throws std::runtime_error with the first failure since the last call, if any.
  void check();

  void runModally(Refhost::Dialog& dialog) override;
  void dialogOpened(Refhost::Dialog&) override {}
  void dialogClosed(Refhost::Dialog&) override {}
  void widgetChanged(Refhost::WidgetNode&) override {}
  void showHelp(const std::u16string&, const std::u16string&) override {}
  std::optional<std::u16string> askJobStep() override { return jobStep; }
  void showFailure(const std::string& sentence) override;
  void tell(const std::string& sentence) override;

 private:
  Tell say;
  std::function<void(Refhost::Dialog&)> inDialog;
  std::optional<std::string> failure;
};

}  // namespace App
