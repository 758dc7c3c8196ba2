// Messages to the user, over the window.
#pragma once

#include "window/preferences/session.h"

#include <QStringList>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace Window {

// A message about a finished action.
struct News {
  QString title;
  QString sentence;

  // Deviations from what was requested, as sentences.
  std::vector<std::string> notes = {};

  // The resulting file, which the message offers to show; empty for none.
  std::filesystem::path file = {};
};

// The message boxes are modeless.
class Messages {
 public:
  // Both outlive the object.
  Messages(QWidget& parent, Session& windowSession) : window(parent), session(windowSession) {}

  void announce(const News& news);

  // Returns before the message is shown, so that the failed action can return first.
  void showFailure(const std::string& sentence);

  // Runs an action and shows its failure, since exceptions must not propagate through Qt.
  void guarded(const std::function<void()>& action);

  // All failures so far, each as one sentence.
  const QStringList& failures() const { return told; }

 private:
  QWidget& window;
  Session& session;
  QStringList told;
};

}  // namespace Window
