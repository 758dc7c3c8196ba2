#include "press/pictures/loader.h"

#include "files/module.h"
#include "files/product_files.h"
#include "files/system_reason.h"
#include "files/whole_file.h"
#include "formats/sentences.h"
#include "press/error.h"
#include "press/pictures/module.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>

namespace Press {
namespace {

namespace fs = std::filesystem;

KilnDrawPage load() {
  const fs::path file = Files::productModule("kiln-pictures.so");
  std::string reason;
  try {
    Files::Module library(file);
    library.keepLoaded();
    if (auto* function = library.function<std::remove_pointer_t<KilnDrawPage>>(drawPageSymbol)) return function;
    reason = Formats::sentence("it exports no {1}", drawPageSymbol);
  } catch (const std::runtime_error& problem) {
    reason = problem.what();
  }
  throw Error(Formats::sentence("{1} cannot be loaded ({2}): install the program again, with all of its files.",
                                quoted(file), reason));
}

struct Result {
  Picture picture;
  std::string error;
};

void receive(void* context, int width, int height, const std::uint32_t* argb, const char* error) {
  Result& result = *static_cast<Result*>(context);
  if (error)
    result.error = Formats::sentence(error);
  else
    result.picture = {width, height, {argb, argb + static_cast<std::size_t>(width) * static_cast<std::size_t>(height)}};
}

Result draw(const std::string& pdf, int page, double dpi, const char* png) {
  static const KilnDrawPage function = load();
  Result result;
  function(pdf.data(), pdf.size(), page, dpi, png, &receive, &result);
  return result;
}

// A file by name, of which the bytes come here. The drawing library tells of a full device itself, on the error output;
// there is always room in this one.
class Pipe {
 public:
  Pipe() {
    if (::pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
    reader = std::thread([this] {
      char block[1 << 16];
      for (ssize_t got = 0; (got = ::read(ends[0], block, sizeof block)) > 0 || (got < 0 && errno == EINTR);)
        if (got > 0) bytes.append(block, static_cast<std::size_t>(got));
    });
  }
  ~Pipe() {
    end();
    ::close(ends[0]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  std::string name() const { return "/proc/self/fd/" + std::to_string(ends[1]); }

  // What was written; nothing is written any more.
  const std::string& content() {
    end();
    return bytes;
  }

 private:
  void end() {
    if (!reader.joinable()) return;
    ::close(ends[1]);
    reader.join();
  }

  int ends[2] = {-1, -1};
  std::string bytes;
  std::thread reader;
};

}  // namespace

Picture drawPage(const std::string& pdf, int page, double dpi) {
  Result result = draw(pdf, page, dpi, nullptr);
  if (!result.error.empty())
    throw Error(
        Formats::sentence("Page {1} cannot be shown ({2}): try another page or a smaller size.", page, result.error));
  return std::move(result.picture);
}

void drawPageToPng(const std::string& pdf, int page, double dpi, const fs::path& png) {
  const auto demand = [&](const std::string& error) {
    if (!error.empty())
      throw Error(
          Formats::sentence("{1} cannot be made ({2}): choose another page, size or place.", quoted(png), error));
  };
  try {
    Files::PendingFile file(Files::realDisk(), Files::linkTarget(png));
    Pipe made;
    demand(draw(pdf, page, dpi, made.name().c_str()).error);
    file.write(made.content());
    file.finish();
    file.putInPlace();
  } catch (const Files::DiskError& problem) {
    if (!problem.code()) throw Error(problem.what());  // a sentence of its own
    demand(Files::systemReason(problem.code()));
  }
}

}  // namespace Press
