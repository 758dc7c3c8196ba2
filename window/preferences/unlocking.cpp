#include "window/preferences/unlocking.h"

#include "press/error.h"
#include "press/pdf/job_file.h"
#include "window/dialogs/background_run.h"
#include "window/dialogs/password_question.h"

namespace Window {
namespace {

enum class Lock { open, closed, wrongPassword, unknown };

// Looks at the job in the background: a damaged one may take long.
Lock lockOf(const Press::JobFile& job, const QString& name, const Texts& texts, QWidget* parent) {
  Lock lock = Lock::open;
  const auto task = [&](const RunProgress& progress) {
    try {
      Press::demandPassword(job);
    } catch (const Press::PasswordNeeded& needed) {
      lock = needed.isWrong() ? Lock::wrongPassword : Lock::closed;
    }
    if (!progress(1, 1)) throw Press::Stopped();
  };
  const RunName looking{texts("OPEN_TITLE"), texts("LOOKING_AT").arg(name)};
  const RunResult result = runWithProgress(task, looking, texts, parent);
  return result.end == RunEnd::stopped ? Lock::unknown : lock;
}

}  // namespace

std::optional<Press::JobFile> unlocked(Press::JobFile job, const Texts& texts, QWidget* parent) {
  const QString name = toQt(job.file.filename().u16string());
  for (;;) {
    const Lock lock = lockOf(job, name, texts, parent);
    if (lock == Lock::open) return job;
    if (lock == Lock::unknown) return {};
    const auto password = askForPassword(name, lock == Lock::wrongPassword, texts, parent);
    if (!password) return {};
    job.password = *password;
  }
}

}  // namespace Window
