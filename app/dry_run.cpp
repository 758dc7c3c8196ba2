#include "app/dry_run.h"

#include "app/messages.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "press/job/overlay_words.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace App {
namespace {

std::string capitalised(std::string sentence) {
  if (!sentence.empty() && sentence.front() >= 'a' && sentence.front() <= 'z')
    sentence.front() = static_cast<char>(sentence.front() - 'a' + 'A');
  return sentence;
}

// Omits a zero fraction.
std::string number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

// Normalises to the range from 0 to below 360.
double wholeTurnsLess(double degrees) { return std::fmod(std::fmod(degrees, 360) + 360, 360); }

// Follows the look of a watermark; empty for the centre of the page.
std::string placeInWords(const Press::Watermark& mark) {
  using Press::Across;
  using Press::Down;
  if (mark.down == Down::upper) {
    if (mark.across == Across::left) return Formats::sentence(", at the upper left");
    return mark.across == Across::right ? Formats::sentence(", at the upper right") : Formats::sentence(", at the top");
  }
  if (mark.down == Down::lower) {
    if (mark.across == Across::left) return Formats::sentence(", at the lower left");
    return mark.across == Across::right ? Formats::sentence(", at the lower right")
                                        : Formats::sentence(", at the bottom");
  }
  if (mark.across == Across::centre) return {};
  return mark.across == Across::left ? Formats::sentence(", at the left") : Formats::sentence(", at the right");
}

std::string faceInWords(const Press::Watermark& mark) {
  if (mark.isBold && mark.isItalic) return Formats::sentence("{1} bold italic", mark.face);
  if (mark.isBold) return Formats::sentence("{1} bold", mark.face);
  return mark.isItalic ? Formats::sentence("{1} italic", mark.face) : mark.face;
}

bool contains(const std::vector<int>& numbers, int wanted) {
  return std::binary_search(numbers.begin(), numbers.end(), wanted);
}

// Describes the effects one after another.
class Description {
 public:
  Description(const Press::Plan& printed, const Press::Effects& wanted) : plan(printed), effects(wanted) {}

  std::vector<std::string> sentences() {
    job();
    if (!effects.any()) say(Formats::sentence("no effect changes them."));
    sayMarks(true);
    if (effects.pagesOnSheet > 1) saySheets();
    sayMarks(false);
    for (const Press::PageEffect& effect : Press::pageEffects)
      if (effects.*effect.isOn && !isIncludedInAnother(effect)) sayPageEffect(effect);
    for (const std::string& note : plan.notes) say(note);
    return std::move(lines);
  }

 private:
  void say(const std::string& sentence) { lines.push_back(Formats::printable(capitalised(sentence))); }

  Unit sheetUnit() const { return effects.pagesOnSheet > 1 ? Unit::sheet : Unit::page; }

  void saySheets() {
    if (plan.sheets == 1)
      say(Formats::sentence("{1} pages go on a sheet; that makes 1 sheet.", effects.pagesOnSheet));
    else
      say(Formats::sentence("{1} pages go on a sheet; that makes {2} sheets.", effects.pagesOnSheet, plan.sheets));
  }

  void job() {
    const int kept = static_cast<int>(plan.kept.size());
    if (plan.jobPages == 1) return say(Formats::sentence("the job has 1 page."));
    if (kept == plan.jobPages) return say(Formats::sentence("the job has {1} pages.", plan.jobPages));
    const auto isKept = [this](int page) { return contains(plan.kept, page); };
    const std::string pages = pagesInWords(plan.jobPages, Unit::page, isKept);
    if (kept == 1)
      say(Formats::sentence("the job has {1} pages, of which {2} is printed.", plan.jobPages, pages));
    else
      say(Formats::sentence("the job has {1} pages, of which {2} are printed; from here on they count from 1.",
                            plan.jobPages, pages));
  }

  // Describes the marks drawn before several pages are put on a sheet, or those drawn after.
  void sayMarks(bool areOnPages) {
    if (isOnPages(effects.overlaysOnEachPage) == areOnPages) sayOverlays();
    if (isOnPages(effects.watermark.onEachPage) == areOnPages && !effects.watermark.text.empty()) sayWatermark();
  }

  // Whether a mark is on each page instead of once per sheet.
  bool isOnPages(bool isOnEachPage) const { return isOnEachPage || effects.pagesOnSheet == 1; }

  template <class IsMeant>
  std::string places(bool isOnEachPage, const IsMeant& isMeant) const {
    return isOnPages(isOnEachPage) ? pagesInWords(static_cast<int>(plan.kept.size()), Unit::page, isMeant)
                                   : pagesInWords(plan.sheets, Unit::sheet, isMeant);
  }

  void sayOverlays() {
    for (const Press::Overlay& overlay : effects.overlays) sayOverlay(overlay);
    const std::string words = Press::overlaysInWords(effects, static_cast<int>(plan.kept.size()));
    if (effects.overlays.size() < 2 || words.empty()) return;
    say(Press::overlaysCountSheets(effects) ? Formats::sentence("overlays by sheet: {1}.", words)
                                            : Formats::sentence("overlays by page: {1}.", words));
  }

  void sayOverlay(const Press::Overlay& overlay) {
    const std::string name = inQuotes(Press::overlayName(overlay.file));
    const std::string where = places(effects.overlaysOnEachPage, [&](int page) { return overlay.pages.has(page); });
    say(effects.overlaysOverPage ? Formats::sentence("the overlay {1} goes over the content of {2}.", name, where)
                                 : Formats::sentence("the overlay {1} goes under the content of {2}.", name, where));
  }

  void sayWatermark() {
    const Press::Watermark& mark = effects.watermark;
    const std::string text = inQuotes(mark.text);
    if (!plan.drawsWatermark)
      return say(Formats::sentence("the watermark {1} draws nothing: nothing of its text can be seen.", text));
    const std::string where = places(mark.onEachPage, [&](int page) { return page == 1 || !mark.firstOnly; });
    const std::string look = lookOf(mark);
    say(mark.isUnderPage
            ? Formats::sentence("the watermark {1} goes under the content of {2}: {3}.", text, where, look)
            : Formats::sentence("the watermark {1} goes over the content of {2}: {3}.", text, where, look));
  }

  static std::string lookOf(const Press::Watermark& mark) {
    char colour[8];
    std::snprintf(colour, sizeof colour, "#%06X", static_cast<unsigned>(mark.colour));
    std::string look = Formats::sentence("{1}, {2} points, {3}", faceInWords(mark), number(mark.size), colour);
    if (const double angle = wholeTurnsLess(mark.angle); angle != 0)
      look += Formats::sentence(", turned by {1} degrees clockwise", number(angle));
    look += placeInWords(mark);
    if (mark.isOutlined) look += Formats::sentence(", in outline");
    if (mark.transparency != 0) look += Formats::sentence(", {1} percent transparent", number(mark.transparency));
    return look;
  }

  // Whether the effect, which is for A3 and Ledger, is done to every sheet by another one.
  bool isIncludedInAnother(const Press::PageEffect& effect) const {
    return effect.isForA3LedgerAlone && std::ranges::any_of(Press::pageEffects, [&](const Press::PageEffect& other) {
             return effects.*other.isOn && other.flip == effect.flip && !other.isForA3LedgerAlone;
           });
  }

  void sayPageEffect(const Press::PageEffect& effect) {
    const std::string result = Formats::sentence(effect.result);
    const auto isMeant = [&](int sheet) { return !effect.isForA3LedgerAlone || contains(plan.a3LedgerSheets, sheet); };
    const bool areSeveral = effect.isForA3LedgerAlone && plan.a3LedgerSheets.size() > 1 &&
                            plan.sheets > static_cast<int>(plan.a3LedgerSheets.size());
    const std::string pages = pagesInWords(plan.sheets, sheetUnit(), isMeant);
    say(areSeveral ? Formats::sentence("{1} are {2}.", pages, result)
                   : Formats::sentence("{1} is {2}.", pages, result));
  }

  const Press::Plan& plan;
  const Press::Effects& effects;
  std::vector<std::string> lines;
};

}  // namespace

std::vector<std::string> describe(const Press::Plan& plan, const Press::Effects& effects) {
  return Description(plan, effects).sentences();
}

}  // namespace App
