// Any bytes as a job that is printed with effects, which the last byte chooses; a line feed chooses them all. The job
// is printed, and so is what comes out, or is refused with a sentence and leaves the file as it was.
#include "fuzz/fuzzing.h"
#include "press/job/print.h"
#include "press/job/sample.h"

namespace {

using Fuzzing::demand;
using Fuzzing::folder;

enum Choice : unsigned {
  withoutMirror = 1,
  withoutPaint = 2,
  withoutRotation = 4,
  withoutWatermark = 8,
  withoutOverlay = 16,
  overPage = 32,
  severalPages = 64,
  ownFormAsOverlay = 128,
};

Press::Effects effectsBy(unsigned choice) {
  Press::Effects effects;
  for (const Press::PageEffect& effect : Press::pageEffects) {
    const bool isTurn = effect.flip == Press::Flip::halfTurn;
    const unsigned without = isTurn ? withoutRotation : effect.flip == Press::Flip::none ? withoutPaint : withoutMirror;
    effects.*effect.isOn = (choice & without) == 0;
  }
  if ((choice & withoutWatermark) == 0) {
    effects.watermark.text = "Draft";
    effects.watermark.face = "DejaVu Sans";
    effects.watermark.angle = 315;
    effects.watermark.transparency = 50;
    effects.watermark.isUnderPage = (choice & overPage) != 0;
  }
  if ((choice & withoutOverlay) == 0)
    effects.overlays.push_back({folder() / ((choice & ownFormAsOverlay) != 0 ? "in.pdf" : "form.pdf"), {}});
  effects.overlaysOverPage = (choice & overPage) != 0;
  if ((choice & severalPages) != 0) effects.pagesOnSheet = (choice & overPage) != 0 ? 4 : 2;
  return effects;
}

void demandSentence(const Press::Error& error) {
  const std::string_view sentence = error.what();
  demand(sentence.ends_with('.') && sentence.find('\n') == sentence.npos);
}

void demandNoLeftovers() {
  for (const auto& entry : std::filesystem::directory_iterator(folder())) {
    const auto name = entry.path().filename();
    demand(name == "tmp" || name == "in.pdf" || name == "out.pdf" || name == "page.pdf" || name == "form.pdf");
  }
}

// What was printed prints.
void checkPrinted(const Press::Effects& effects) {
  const int pages = Press::Job(folder() / "in.pdf").pageCount();
  Press::Job printed(folder() / "out.pdf");
  demand(printed.pageCount() == (pages + effects.pagesOnSheet - 1) / effects.pagesOnSheet);
  Fuzzing::write(folder() / "page.pdf", printed.printPage(1, {}));
  demand(Press::Job(folder() / "page.pdf").pageCount() == 1);
  Fuzzing::write(folder() / "page.pdf", Press::printPage(folder() / "in.pdf", pages, effects));
  demand(Press::Job(folder() / "page.pdf").pageCount() == 1);
}

void check(std::string_view bytes) {
  static const bool hasForm = (Fuzzing::write(folder() / "form.pdf", Press::samplePdf()), true);
  static_cast<void>(hasForm);
  const std::string_view before = "as it was";
  Fuzzing::write(folder() / "in.pdf", bytes);
  Fuzzing::write(folder() / "out.pdf", before);
  const unsigned last = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.back());
  bool isPrinted = false;
  const Press::Effects effects = effectsBy(last ^ '\n');
  try {
    Press::printPdf(folder() / "in.pdf", folder() / "out.pdf", effects);
    isPrinted = true;
  } catch (const Press::Error& error) {
    demandSentence(error);
    demand(Fuzzing::read(folder() / "out.pdf") == before);
  }
  if (isPrinted) checkPrinted(effects);
  demandNoLeftovers();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check(Fuzzing::text(data, size));
  return 0;
}
