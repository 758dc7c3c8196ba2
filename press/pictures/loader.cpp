#include "press/pictures/loader.h"

#include "files/module.h"
#include "files/whole_file.h"
#include "press/error.h"
#include "press/pictures/module.h"

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace Press {
namespace {

namespace fs = std::filesystem;

KilnDrawPage load() {
  const fs::path file = Files::programFolder() / "kiln-pictures.so";
  std::string reason;
  try {
    Files::Module library(file);
    library.keepLoaded();
    if (auto* function = library.function<std::remove_pointer_t<KilnDrawPage>>(drawPageSymbol)) return function;
    reason = std::string("it exports no ") + drawPageSymbol;
  } catch (const std::runtime_error& problem) {
    reason = problem.what();
  }
  throw Error(quoted(file) + " cannot be loaded (" + reason +
              "): install the program again, all of its files in one folder.");
}

struct Result {
  Picture picture;
  std::string error;
};

void receive(void* context, int width, int height, const std::uint32_t* argb, const char* error) {
  Result& result = *static_cast<Result*>(context);
  if (error)
    result.error = error;
  else
    result.picture = {width, height, {argb, argb + static_cast<std::size_t>(width) * static_cast<std::size_t>(height)}};
}

Result draw(const std::string& pdf, int page, double dpi, const char* png) {
  static const KilnDrawPage function = load();
  Result result;
  function(pdf.data(), pdf.size(), page, dpi, png, &receive, &result);
  return result;
}

}  // namespace

Picture drawPage(const std::string& pdf, int page, double dpi) {
  Result result = draw(pdf, page, dpi, nullptr);
  if (!result.error.empty())
    throw Error("Page " + std::to_string(page) + " cannot be shown (" + result.error +
                "): try another page or a smaller size.");
  return std::move(result.picture);
}

void drawPageToPng(const std::string& pdf, int page, double dpi, const fs::path& png) {
  const auto demand = [&](const std::string& error) {
    if (!error.empty())
      throw Error(quoted(png) + " cannot be made (" + error + "): choose another page, size or place.");
  };
  try {
    Files::PendingFile file(Files::realDisk(), Files::linkTarget(png));
    demand(draw(pdf, page, dpi, file.temporary().string().c_str()).error);
    file.finish();
    file.putInPlace();
  } catch (const Files::DiskError& problem) {
    demand(problem.code() ? problem.code().message() : problem.what());
  }
}

}  // namespace Press
