#include "app/dry_run.h"

#include "app/messages.h"
#include "formats/printable.h"
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

// Empty for the centre of the page.
std::string placeInWords(const Press::Watermark& mark) {
  std::string side = mark.across == Press::Across::left ? "left" : mark.across == Press::Across::right ? "right" : "";
  if (mark.down == Press::Down::centre) return side;
  const bool isUpper = mark.down == Press::Down::upper;
  if (side.empty()) return isUpper ? "top" : "bottom";
  return (isUpper ? "upper " : "lower ") + side;
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
    if (!effects.any()) say("no effect changes them.");
    sayMarks(true);
    if (effects.pagesOnSheet > 1)
      say(std::to_string(effects.pagesOnSheet) + " pages go on a sheet; that makes " + std::to_string(plan.sheets) +
          (plan.sheets == 1 ? " sheet." : " sheets."));
    sayMarks(false);
    for (const Press::PageEffect& effect : Press::pageEffects)
      if (effects.*effect.isOn && !isIncludedInAnother(effect)) sayPageEffect(effect);
    for (const std::string& note : plan.notes) say(note);
    return std::move(lines);
  }

 private:
  void say(const std::string& sentence) { lines.push_back(Formats::printable(capitalised(sentence))); }

  std::string sheetWord() const { return effects.pagesOnSheet > 1 ? "sheet" : "page"; }

  void job() {
    const int kept = static_cast<int>(plan.kept.size());
    const std::string has = "the job has " + std::to_string(plan.jobPages) + (plan.jobPages == 1 ? " page" : " pages");
    if (kept == plan.jobPages) return say(has + ".");
    const auto isKept = [this](int page) { return contains(plan.kept, page); };
    say(has + ", of which " + pagesInWords(plan.jobPages, "page", isKept) +
        (kept == 1 ? " is printed." : " are printed; from here on they count from 1."));
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
    return isOnPages(isOnEachPage) ? pagesInWords(static_cast<int>(plan.kept.size()), "page", isMeant)
                                   : pagesInWords(plan.sheets, "sheet", isMeant);
  }

  void sayOverlays() {
    for (const Press::Overlay& overlay : effects.overlays) sayOverlay(overlay);
    const std::string words = Press::overlaysInWords(effects, static_cast<int>(plan.kept.size()));
    const std::string unit = Press::overlaysCountSheets(effects) ? "sheet" : "page";
    if (effects.overlays.size() > 1 && !words.empty()) say("overlays by " + unit + ": " + words + ".");
  }

  void sayOverlay(const Press::Overlay& overlay) {
    say("the overlay " + inQuotes(Press::overlayName(overlay.file)) + " goes " +
        (effects.overlaysOverPage ? "over" : "under") + " the content of " +
        places(effects.overlaysOnEachPage, [&](int page) { return overlay.pages.has(page); }) + ".");
  }

  void sayWatermark() {
    const Press::Watermark& mark = effects.watermark;
    if (!plan.drawsWatermark)
      return say("the watermark " + inQuotes(mark.text) + " draws nothing: nothing of its text can be seen.");
    std::string look = mark.face + (mark.isBold ? " bold" : "") + (mark.isItalic ? " italic" : "") + ", " +
                       number(mark.size) + " points";
    char colour[8];
    std::snprintf(colour, sizeof colour, "#%06X", static_cast<unsigned>(mark.colour));
    look += std::string(", ") + colour;
    if (const double angle = wholeTurnsLess(mark.angle); angle != 0)
      look += ", turned by " + number(angle) + " degrees clockwise";
    if (const std::string place = placeInWords(mark); !place.empty()) look += ", at the " + place;
    if (mark.isOutlined) look += ", in outline";
    if (mark.transparency != 0) look += ", " + number(mark.transparency) + " percent transparent";
    say("the watermark " + inQuotes(mark.text) + " goes " + (mark.isUnderPage ? "under" : "over") + " the content of " +
        places(mark.onEachPage, [&](int page) { return page == 1 || !mark.firstOnly; }) + ": " + look + ".");
  }

  // Whether the effect, which is for A3 and Ledger, is done to every sheet by another one.
  bool isIncludedInAnother(const Press::PageEffect& effect) const {
    return effect.isForA3LedgerAlone && std::ranges::any_of(Press::pageEffects, [&](const Press::PageEffect& other) {
             return effects.*other.isOn && other.flip == effect.flip && !other.isForA3LedgerAlone;
           });
  }

  void sayPageEffect(const Press::PageEffect& effect) {
    const std::string result(effect.result);
    if (!effect.isForA3LedgerAlone) return say("every " + sheetWord() + " is " + result + ".");
    const auto isMeant = [this](int sheet) { return contains(plan.a3LedgerSheets, sheet); };
    const bool areSeveral =
        plan.a3LedgerSheets.size() > 1 && plan.sheets > static_cast<int>(plan.a3LedgerSheets.size());
    say(pagesInWords(plan.sheets, sheetWord(), isMeant) + (areSeveral ? " are " : " is ") + result + ".");
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
