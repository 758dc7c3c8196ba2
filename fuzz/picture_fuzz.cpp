// Any bytes as a picture that is to become an overlay: one that is taken is a document of one page.
#include "fuzz/fuzzing.h"
#include "press/error.h"
#include "press/job/form_file.h"
#include "press/job/print.h"
#include "press/pictures/image.h"

namespace {

using Fuzzing::demand;

template <class Read>
void check(const Read& read) {
  try {
    const Press::Image image = read();
    demand(image.width > 0 && image.height > 0 && image.across > 0 && image.down > 0);
    demand(image.orientation >= 1 && image.orientation <= 8);
    demand(!image.entries.empty());
  } catch (const Press::ImageProblem&) {
  }
}

void checkForm(std::string_view bytes) {
  const std::filesystem::path file = Fuzzing::folder() / "picture";
  Fuzzing::write(file, bytes);
  try {
    const Press::FormFile form(file, {{200, 100}, bytes.size() % 2 == 0});
    if (form.isPicture()) demand(Press::Job(form.pdf()).pageCount() == 1);
  } catch (const Press::Error&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = Fuzzing::text(data, size);
  check([bytes] { return Press::readPng(bytes); });
  check([bytes] { return Press::readJpeg(std::string(bytes)); });
  checkForm(bytes);
  return 0;
}
