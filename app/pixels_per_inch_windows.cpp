// Windows reads the resolution at log-on, Wine at the start of each process, from the same registry value. So Windows
// allows two values: 96 for programs that are not DPI-aware, like kiln, and the screen's own for others. Wine allows
// any value: it is set only while a second process starts.
#include "app/pixels_per_inch.h"

#include <windows.h>

#include <array>
#include <string>

namespace App {
namespace {

// The environment variable with the name of the event that signals that the second process has read the value.
constexpr const wchar_t* startedVariable = L"KILN_PIXELS_PER_INCH_READ";

constexpr const wchar_t* desktopKey = L"Control Panel\\Desktop";
constexpr const wchar_t* pixelsValue = L"LogPixels";

class Handle {
 public:
  explicit Handle(HANDLE opened) : handle(opened) {}
  ~Handle() {
    if (handle != nullptr) CloseHandle(handle);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  explicit operator bool() const { return handle != nullptr; }
  HANDLE get() const { return handle; }

 private:
  HANDLE handle;
};

int reported() {
  const HDC screen = CreateICW(L"DISPLAY", nullptr, nullptr, nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  DeleteDC(screen);
  return dpi;
}

bool isWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

// A lock: one process at a time sets the value; the others wait until it is restored.
class Turn {
 public:
  Turn() : mutex(CreateMutexW(nullptr, FALSE, L"Local\\KilnPixelsPerInch")) {
    WaitForSingleObject(mutex.get(), INFINITE);
  }
  ~Turn() { ReleaseMutex(mutex.get()); }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  Handle mutex;
};

// Sets the value in the registry; the destructor restores it.
class Setting {
 public:
  explicit Setting(int pixelsPerInch) {
    DWORD size = sizeof before;
    isSetBefore = RegGetValueW(HKEY_CURRENT_USER, desktopKey, pixelsValue, RRF_RT_REG_DWORD, nullptr, &before, &size) ==
                  ERROR_SUCCESS;
    set(static_cast<DWORD>(pixelsPerInch));
  }
  ~Setting() {
    if (isSetBefore)
      set(before);
    else
      RegDeleteKeyValueW(HKEY_CURRENT_USER, desktopKey, pixelsValue);
  }
  Setting(const Setting&) = delete;
  Setting& operator=(const Setting&) = delete;

 private:
  static void set(DWORD value) {
    RegSetKeyValueW(HKEY_CURRENT_USER, desktopKey, pixelsValue, REG_DWORD, &value, sizeof value);
  }

  DWORD before = 0;
  bool isSetBefore = false;
};

// Starts this command again on the same standard streams; null on failure.
HANDLE startAgain() {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  for (const HANDLE stream : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
    SetHandleInformation(stream, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  std::wstring line = GetCommandLineW();
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started))
    return nullptr;
  CloseHandle(started.hThread);
  return started.hProcess;
}

// Ends the process when the job's handle is closed, also when this process is killed.
void bind(HANDLE process, HANDLE job) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  AssignProcessToJobObject(job, process);
}

// Starts the command at another resolution; returns when the new process has read it.
HANDLE startAgainAt(int pixelsPerInch, HANDLE job) {
  const std::wstring eventName = L"Local\\KilnPixelsPerInch" + std::to_wstring(GetCurrentProcessId());
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, eventName.c_str()));
  SetEnvironmentVariableW(startedVariable, eventName.c_str());
  const Turn turn;
  const Setting setting(pixelsPerInch);
  const HANDLE process = startAgain();
  if (process == nullptr) return nullptr;
  bind(process, job);
  const HANDLE awaited[] = {event.get(), process};
  WaitForMultipleObjects(2, awaited, FALSE, INFINITE);
  return process;
}

}  // namespace

std::optional<int> reportPixelsPerInch(int wanted) {
  std::array<wchar_t, 64> name{};
  if (GetEnvironmentVariableW(startedVariable, name.data(), static_cast<DWORD>(name.size())) != 0) {
    const Handle event(OpenEventW(EVENT_MODIFY_STATE, FALSE, name.data()));
    SetEvent(event.get());
    return std::nullopt;
  }
  if (reported() == wanted) return std::nullopt;
  if (!isWine()) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE);
    return std::nullopt;
  }
  const Handle job(CreateJobObjectW(nullptr, nullptr));
  const Handle process(startAgainAt(wanted, job.get()));
  if (!process) return std::nullopt;
  DWORD status = 1;
  WaitForSingleObject(process.get(), INFINITE);
  GetExitCodeProcess(process.get(), &status);
  return static_cast<int>(status);
}

}  // namespace App
