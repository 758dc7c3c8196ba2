#include "app/system/platform.h"
#include "formats/text.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <memory>

namespace App {

// The arguments of main are in the system's narrow encoding, which cannot represent all texts.
std::vector<std::string> arguments(int, char**) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                              &LocalFree);
  std::vector<std::string> narrow;
  for (int i = 1; i < count; ++i) {
    const std::wstring_view word = words.get()[i];
    narrow.push_back(Formats::toUtf8(std::u16string(word.begin(), word.end())));
  }
  return narrow;
}

void prepareStreams() {
  for (FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  SetConsoleCP(CP_UTF8);
  SetConsoleOutputCP(CP_UTF8);
}

void prepareScreen(int pixelsPerInch) {
  const HDC screen = CreateICW(L"DISPLAY", nullptr, nullptr, nullptr);
  const int reported = GetDeviceCaps(screen, LOGPIXELSX);
  DeleteDC(screen);
  if (reported != pixelsPerInch) SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE);
}

void prepareMemory() {}  // nothing to do

// A Windows console must be switched to interpret control sequences.
bool isErrorSeen() {
  const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace App
