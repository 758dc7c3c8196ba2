#include "app/silent_face.h"

#include "host/gui.h"

#include <stdexcept>
#include <utility>

namespace App {

void SilentFace::check() {
  if (const auto sentence = std::exchange(failure, std::nullopt)) throw std::runtime_error(*sentence);
}

void SilentFace::runModally(Refhost::Dialog& dialog) {
  try {
    if (inDialog) inDialog(dialog);
  } catch (const std::exception& error) {
    showFailure(error.what());
  }
  if (dialog.isOpen()) dialog.cancel();
}

void SilentFace::showFailure(const std::string& sentence) {
  if (!failure) failure = sentence;
}

void SilentFace::tell(const std::string& sentence) { say(sentence); }

}  // namespace App
