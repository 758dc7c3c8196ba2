// The face of a run that has nobody to ask.
#pragma once

#include "host/face.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace App {

// What goes wrong is kept. Dialogs are cancelled as they open, unless there is somebody for them.
class SilentFace final : public Refhost::Face {
 public:
  // `messageStart` goes before each line that it writes on standard error.
  explicit SilentFace(std::string messageStart) : start(std::move(messageStart)) {}

  // What is done in dialogs that open from now on, before they are cancelled if they are still open; empty for nothing.
  // What it throws is a failure.
  void operateDialogs(std::function<void(Refhost::Dialog&)> operation) { inDialog = std::move(operation); }

  // What the host's job step is answered with.
  std::optional<std::u16string> jobStep;

  // Throws std::runtime_error with the first failure since the last call, if there is one.
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
  std::string start;
  std::function<void(Refhost::Dialog&)> inDialog;
  std::optional<std::string> failure;
};

}  // namespace App
