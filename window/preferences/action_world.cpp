#include "window/preferences/action_world.h"

namespace Window {

bool ActionWorld::run(const std::function<void(const RunProgress&)>& task, const RunName& name,
                      const char* stopped) const {
  const RunResult result = runWithProgress(task, name, texts(), &window);
  switch (result.end) {
    case RunEnd::done: return true;
    case RunEnd::stopped:
      session.actions().failed("The user stopped it.");
      messages.announce({name.title, texts()(stopped)});
      break;
    case RunEnd::failed:
      session.actions().failed(result.failure.toStdString());
      messages.showFailure(result.failure.toStdString());
      break;
  }
  return false;
}

}  // namespace Window
