// The order of calls, in every mode, and what is left of the plug-in afterwards.
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"
#include "host/profiles/profile_event.h"

#include <string>

namespace Checking {
namespace {

using Refhost::Library;
using Refhost::Mode;

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

void demandNothingTold(const Opening& opening) {
  if (!opening.face.told.empty()) throw Failed("The plug-in tells the user: " + opening.face.told.front());
}

// Opens, and ends, by these conditions.
void opens(const Subject& subject, const Conditions& conditions) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library, conditions);
  opening.open();
  demandNothingTold(opening);
  opening.release();
}

template <Mode mode, bool isActive>
void opensIn(const Subject& subject) {
  opens(subject, {.mode = mode, .active = isActive});
}

void isMadeAndReleased(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.makePlugin();
  opening.release();
  opening.makePlugin();
  opening.begin();
  opening.release();
}

void survivesOtherModes(const Subject& subject) {
  for (const auto& mode : {std::optional<std::u16string>(), std::optional<std::u16string>(u""),
                           std::optional<std::u16string>(u"docprop"), std::optional<std::u16string>(u"Unknown")})
    opens(subject, {.uiMode = mode});
}

void opensSideBySide(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening first(subject, *library);
  first.open();
  Opening second(subject, *library);
  second.open();
  first.release();
  second.announce();
  second.release();
  Opening third(subject, *library);
  third.open();
}

const std::vector<Conditions>& everyMode() {
  static const std::vector<Conditions> all = {{.mode = Mode::docProp},
                                              {.mode = Mode::pdc},
                                              {.mode = Mode::prePrint},
                                              {.mode = Mode::rootless},
                                              {.active = false}};
  return all;
}

void callsNothingBeforeReady(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (const Conditions& conditions : everyMode()) {
    Opening opening(subject, *library, conditions);
    opening.open();
    demand(opening.callsBeforeReady().empty(),
           "The plug-in calls " + joined(opening.callsBeforeReady()) + " before the GUI's ready signal.");
  }
}

void destructorIsSilent(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (const Conditions& conditions : everyMode()) {
    Opening opening(subject, *library, conditions);
    opening.open();
    opening.release();
    demand(opening.callsOfDestructor().empty(),
           "The plug-in's destructor calls " + joined(opening.callsOfDestructor()) + ".");
  }
}

void keepsNoReference(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (const Conditions& conditions : everyMode()) {
    Opening opening(subject, *library, conditions);
    opening.open();
    opening.release();
    const auto names = opening.stillReferenced();
    demand(names.empty(), "After the plug-in's release there are still references to " + joined(names) + ".");
  }
}

// Fires every signal that a plug-in connects, after its release.
void isDisconnected(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (const Conditions& conditions : everyMode()) {
    Opening opening(subject, *library, conditions);
    opening.open();
    opening.release();
    const int calls = opening.calls();
    opening.act([&] { opening.model().announce(); });
    if (opening.hasTabs())
      for (const Refhost::Layout& layout : opening.gui().tabs())
        Refhost::walk(*layout.root, [&](Refhost::WidgetNode& widget) {
          if (auto* box = dynamic_cast<Refhost::CheckBox*>(&widget)) box->click();
          if (auto* button = dynamic_cast<Refhost::Button*>(&widget)) button->click();
        });
    opening.act([&] { opening.gui().panel().fireHelp(); });
    opening.act([&] { opening.gui().panel().firePreAccept(); });
    const auto event = Refhost::make<Refhost::ProfileEvent>(opening.files(), subject.home / "profile", std::nullopt);
    opening.act([&] { opening.manager().profileImport->fire(event); });
    demand(opening.calls() == calls,
           "A signal still reaches the plug-in after its release: it calls " + opening.lastCall() + ".");
  }
}

void leavesNoBlocks(const Subject& subject) {
  for (const Conditions& conditions : everyMode()) {
    const long before = Refhost::heap().blocks();
    {
      const auto library = Refhost::make<Library>(subject.library);
      Opening opening(subject, *library, conditions);
      opening.open();
    }
    const long left = Refhost::heap().blocks() - before;
    demand(left == 0, std::to_string(left) + " blocks of the host's allocator are left after the end.");
  }
}

}  // namespace

std::vector<Check> lifeCycleChecks() {
  return {
      {"life-cycle/create", "is made, created and initialised, and released again", isMadeAndReleased},
      {"life-cycle/doc-prop", "opens in the mode DocProp", opensIn<Mode::docProp, true>},
      {"life-cycle/doc-prop-inactive", "opens in the mode DocProp when it is inactive", opensIn<Mode::docProp, false>},
      {"life-cycle/pdc", "opens in the mode PDC", opensIn<Mode::pdc, true>},
      {"life-cycle/pdc-inactive", "opens in the mode PDC when it is inactive", opensIn<Mode::pdc, false>},
      {"life-cycle/pre-print", "opens in the mode PrePrint", opensIn<Mode::prePrint, true>},
      {"life-cycle/pre-print-inactive", "opens in the mode PrePrint when it is inactive",
       opensIn<Mode::prePrint, false>},
      {"life-cycle/rootless", "starts without a GUI", opensIn<Mode::rootless, true>},
      {"life-cycle/rootless-inactive", "starts without a GUI when it is inactive", opensIn<Mode::rootless, false>},
      {"life-cycle/other-mode", "opens in a mode that it does not know, and without one", survivesOtherModes},
      {"life-cycle/side-by-side", "opens again while another one of it is open, and after it", opensSideBySide},
      {"life-cycle/before-ready", "calls before the ready signal what may be called then", callsNothingBeforeReady},
      {"life-cycle/destructor", "calls nothing of the host from its destructor", destructorIsSilent},
      {"life-cycle/references", "keeps no reference to the host's objects past its end", keepsNoReference},
      {"life-cycle/disconnected", "is reached by no signal after its release", isDisconnected},
      {"life-cycle/memory", "leaves no block of the host's allocator", leavesNoBlocks}};
}

}  // namespace Checking
