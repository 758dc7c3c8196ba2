// What the actions of the window work on.
#pragma once

#include "script/recording.h"
#include "window/dialogs/background_run.h"
#include "window/page/page_panel.h"
#include "window/preferences/job.h"
#include "window/preferences/messages.h"
#include "window/preferences/session.h"

#include <functional>

namespace Window {

struct ActionWorld {
  QWidget& window;
  Refhost::Face& face;
  Session& session;
  Job& job;
  PagePanel& pages;
  Messages& messages;
  const Script::Recording& recording;

  Refhost::Preferences& preferences() const { return session.preferences(); }
  Texts texts() const { return session.texts(); }

  // Runs a long task in the background; true when it is done. Otherwise tells the user that it was stopped, in the text
  // named `stopped`, or why it failed.
  bool run(const std::function<void(const RunProgress&)>& task, const RunName& name, const char* stopped) const;
};

}  // namespace Window
