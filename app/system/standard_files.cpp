#include "app/system/standard_files.h"

#include "app/failure.h"
#include "app/host_options.h"
#include "files/system_reason.h"
#include "formats/sentences.h"
#include "press/error.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace App {
namespace {

std::string lastReason() { return Files::systemReason({errno, std::generic_category()}); }

// Waits until a short read or write will not block. Polls, since a signal may arrive just before the wait.
void waitFor(int handle, short event, const Interruption& interruption) {
  constexpr int milliseconds = 100;
  pollfd waiting = {handle, event, 0};
  int ready = 0;
  while (ready == 0) {
    if (interruption.signal() != 0) throw Press::Stopped();
    ready = poll(&waiting, 1, milliseconds);
    if (ready < 0 && errno == EINTR) ready = 0;
  }
}

class OpenFile {
 public:
  explicit OpenFile(const std::filesystem::path& file) : handle(open(file.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~OpenFile() {
    if (handle >= 0) close(handle);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  const int handle;
};

void writeAll(const char* bytes, std::size_t size, const Interruption& interruption) {
  while (size > 0) {
    waitFor(STDOUT_FILENO, POLLOUT, interruption);
    // A larger write could block, for example on a printer that is off, and delay the handling of signals.
    const ssize_t written = write(STDOUT_FILENO, bytes, std::min<std::size_t>(size, PIPE_BUF));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0)
      throw std::runtime_error(Formats::sentence("Standard output cannot be written ({1}).", lastReason()));
    bytes += written;
    size -= static_cast<std::size_t>(written);
  }
}

void replaceAll(std::string& sentence, const std::string& from, const std::string& to) {
  for (auto at = sentence.find(from); at != std::string::npos; at = sentence.find(from, at + to.size()))
    sentence.replace(at, from.size(), to);
}

}  // namespace

StandardFiles::StandardFiles(const std::string& in, const std::string& out, const Interruption& wishToStop,
                             std::string outputName)
    : interruption(wishToStop),
      input(toPath(in)),
      output(toPath(out)),
      hasInput(in == "-"),
      nameOfOutput(std::move(outputName)) {
  // When the reader of standard output exits, writing must fail with an error.
  std::signal(SIGPIPE, SIG_IGN);
  if (in == "-" || out == "-") folder.emplace();
  if (out == "-") output = folder->path() / "out.pdf";
  if (hasInput) input = folder->path() / "in.pdf";
}

void StandardFiles::receive() const {
  if (!hasInput) return;
  std::ofstream file(input, std::ios::binary);
  char block[1 << 16];
  for (;;) {
    waitFor(STDIN_FILENO, POLLIN, interruption);
    const ssize_t size = read(STDIN_FILENO, block, sizeof block);
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) throw std::runtime_error(Formats::sentence("Standard input cannot be read ({1}).", lastReason()));
    if (size == 0) break;
    file.write(block, size);
  }
  file.close();
  if (!file)
    throw std::runtime_error(
        Formats::sentence("Standard input cannot be kept in {1}: make room there.", input.parent_path().string()));
}

void StandardFiles::deliver() const {
  if (!folder || output.parent_path() != folder->path()) return;
  const auto demand = [this](bool isRead) {
    if (!isRead)
      throw std::runtime_error(
          Formats::sentence("The printed pages in {1} cannot be read ({2}).", output.string(), lastReason()));
  };
  const OpenFile file(output);
  demand(file.handle >= 0);
  char block[1 << 16];
  for (;;) {
    const ssize_t size = read(file.handle, block, sizeof block);
    demand(size >= 0);
    if (size == 0) return;
    writeAll(block, static_cast<std::size_t>(size), interruption);
  }
}

std::string StandardFiles::inUsersWords(std::string sentence) const {
  if (!folder) return sentence;
  replaceAll(sentence, Press::quoted(folder->path() / "in.pdf"), Formats::sentence("Standard input"));
  replaceAll(sentence, Press::quoted(folder->path() / "out.pdf"), nameOfOutput);
  return sentence;
}

void demandNoTerminal() {
  if (isatty(STDOUT_FILENO) != 1) return;
  throw Failure(wrongUsage,
                Formats::sentence("Standard output is a terminal, which cannot show a PDF: name a file, or send it on, "
                                  "by \"| lp\" for example."));
}

}  // namespace App
