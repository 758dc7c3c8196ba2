#include "formats/text.h"
#include "tests/script/process.h"

#include <windows.h>

#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <utility>

namespace {

std::wstring wide(const std::string& text) {
  const std::u16string units = Formats::toUtf16(text);
  return {units.begin(), units.end()};
}

// Quotes an argument for a Windows command line: escapes quotation marks, and backslashes before them.
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

// A file as a standard stream of a new process.
class Stream {
 public:
  Stream(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    // System processes may still have the previous process's files open.
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    handle = CreateFileW(file.c_str(), access, share, &inheritable, disposition, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw std::runtime_error(file.string() + " cannot be opened.");
  }
  ~Stream() { CloseHandle(handle); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  HANDLE handle;
};

// Sets environment variables for new processes during the object's lifetime.
class Environment {
 public:
  explicit Environment(const std::vector<std::string>& settings) {
    for (const std::string& setting : settings) {
      const std::wstring name = wide(setting.substr(0, setting.find('=')));
      before.emplace_back(name, valueOf(name));
      SetEnvironmentVariableW(name.c_str(), wide(setting.substr(setting.find('=') + 1)).c_str());
    }
  }
  ~Environment() {
    for (const auto& [name, value] : before) SetEnvironmentVariableW(name.c_str(), value ? value->c_str() : nullptr);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  static std::optional<std::wstring> valueOf(const std::wstring& name) {
    const wchar_t* value = _wgetenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::wstring>(value);
  }

  std::vector<std::pair<std::wstring, std::optional<std::wstring>>> before;
};

}  // namespace

int runProcess(const std::vector<std::string>& words, const std::vector<std::string>& environment,
               const StandardFiles& files) {
  const Environment changed(environment);
  std::wstring line;
  for (const std::string& word : words) line += inQuotes(wide(word)) + L' ';
  const Stream in(files.in, GENERIC_READ, OPEN_EXISTING);
  const Stream out(files.out, GENERIC_WRITE, CREATE_ALWAYS);
  const Stream err(files.err, GENERIC_WRITE, CREATE_ALWAYS);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = in.handle;
  startup.hStdOutput = out.handle;
  startup.hStdError = err.handle;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started))
    throw std::runtime_error("The process cannot be started: system error " + std::to_string(GetLastError()) + ".");
  CloseHandle(started.hThread);
  WaitForSingleObject(started.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(started.hProcess, &status);
  CloseHandle(started.hProcess);
  return static_cast<int>(status);
}
