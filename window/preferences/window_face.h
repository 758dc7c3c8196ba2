// The window as the host's core sees it: shows dialogs, changes, help and failures, and asks for names.
#pragma once

#include "host/face.h"
#include "window/dialogs/dialog_windows.h"
#include "window/page/page_panel.h"
#include "window/preferences/help.h"
#include "window/preferences/messages.h"
#include "window/preferences/plugin_tabs.h"
#include "window/preferences/session.h"

namespace Window {

class WindowFace final : public Refhost::Face {
 public:
  struct World {
    QWidget& window;
    Session& session;
    PluginTabs& tabs;
    const PagePanel& pages;
    Messages& messages;
    Help& help;
  };

  // All of `faceWorld` outlives the face.
  explicit WindowFace(const World& faceWorld) : world(faceWorld) {}

  void runModally(Refhost::Dialog& dialog) override;
  void dialogOpened(Refhost::Dialog& dialog) override;
  void dialogClosed(Refhost::Dialog& dialog) override;
  void widgetChanged(Refhost::WidgetNode& widget) override;
  void showHelp(const std::u16string& url, const std::u16string& topic) override;
  std::optional<std::u16string> askJobStep() override;
  void showFailure(const std::string& sentence) override;

 private:
  Surroundings surroundings() const;

  World world;
  DialogWindows dialogs;
};

}  // namespace Window
