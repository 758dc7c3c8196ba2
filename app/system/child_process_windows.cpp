#include "app/system/child_process.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace App {
namespace {

// What abort ends a process with.
constexpr DWORD abortStatus = 3;

std::wstring wide(const std::string& text) {
  const std::u16string units = Formats::toUtf16(text);
  return {units.begin(), units.end()};
}

// An argument of a command line: quotation marks, and backslashes before them, are escaped.
std::wstring inQuotes(const std::wstring& word) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : word) {
    if (unit == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    quoted += unit;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

class Handle {
 public:
  explicit Handle(HANDLE opened) : handle(opened) {}
  ~Handle() { CloseHandle(handle); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  const HANDLE handle;
};

HANDLE openNowhere() {
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  return CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                     OPEN_EXISTING, 0, nullptr);
}

std::wstring thisProgram() {
  std::array<wchar_t, 32768> path;
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return {path.data(), length};
}

}  // namespace

ProcessEnd runThisProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds longest) {
  const std::wstring program = thisProgram();
  std::wstring line = inQuotes(program);
  for (const std::string& word : arguments) line += L' ' + inQuotes(wide(word));
  const Handle nowhere(openNowhere());
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = startup.hStdOutput = startup.hStdError = nowhere.handle;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started))
    throw std::runtime_error(Formats::sentence("A process cannot be started: system error {1}.", GetLastError()));
  const Handle thread(started.hThread);
  const Handle process(started.hProcess);
  if (WaitForSingleObject(process.handle, static_cast<DWORD>(longest.count())) != WAIT_OBJECT_0) {
    TerminateProcess(process.handle, 1);
    WaitForSingleObject(process.handle, INFINITE);
    return {ProcessEnd::How::stopped};
  }
  DWORD status = 0;
  GetExitCodeProcess(process.handle, &status);
  const bool isCrash = status >= 0xC0000000 || status == abortStatus;
  return {isCrash ? ProcessEnd::How::crashed : ProcessEnd::How::ended, status};
}

std::string nameOfCrash(unsigned long code) {
  if (code == abortStatus) return "abort";
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "exception 0x%08lX", code);
  return text.data();
}

void crashQuietly() { SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX); }

}  // namespace App
