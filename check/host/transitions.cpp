// What submit does, rule by rule (kiln/property.h).
#include "check/host/groups.h"
#include "check/host/play.h"

#include <algorithm>

namespace Checking {
namespace {

using Change = Kiln::ModelSelectionChange;

// The log of one submit, in an opening in which the plug-in follows all properties.
void demandSubmit(const Subject& subject, const Play::Pairs& before, const Play::Pairs& pairs,
                  const std::vector<std::string>& expected, const std::string& what) {
  Play play(subject);
  play.openAndTry([&] {
    if (!before.empty()) play.submit(before);
    play.followProperties();
    play.log.clear();
    play.submit(pairs);
    demandLog(play.log, expected, what);
  });
}

void assignsFirst(const Subject& subject) {
  std::string found;
  Play play(subject);
  play.openAndTry([&] {
    play.submit({{u"CheckSize", u"Large"}});
    play.follow<Change&>(play.model()->selectionChangeSignal(u"CheckText"), [&](Change&) {
      found = play.value(u"CheckSwitch") + " " + play.value(u"CheckSize") + " " + play.value(u"CheckColour");
    });
    play.submit({{u"CheckText", u"New"}, {u"CheckSwitch", u"On"}});
    demand(found == "On Small Green",
           "When the first signal fires, not all pairs are assigned, with the constraints run: expected On Small Green "
           "(the default, and the first available option); found " +
               found + ".");
  });
}

void enablesFirst(const Subject& subject) {
  demandSubmit(subject, {}, {{u"CheckText", u"New"}, {u"CheckSwitch", u"On"}},
               {"CheckSize.Large-", "CheckColour.Red-", "CheckText=New", "CheckSwitch=On", "CheckColour=Green"},
               "The signals of a submit by which options become unavailable");
}

void firesInOrder(const Subject& subject) {
  demandSubmit(subject, {}, {{u"CheckSize", u"Large"}, {u"CheckText", u"A"}, {u"CheckSize", u"Small"}},
               {"CheckSize=Small", "CheckText=A"}, "The signals of pairs, the last of which counts");
}

void firesForTheSameValue(const Subject& subject) {
  demandSubmit(subject, {}, {{u"CheckText", u"Start"}}, {"CheckText=Start"},
               "The signals of a pair with the value that the property has");
}

void allowsWritingBack(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    play.follow<Change&>(play.model()->selectionChangeSignal(u"CheckText"), [&](Change& change) {
      play.note("told");
      if (play.log.size() < 5) {
        const auto back = play.manager()->transition(u"CheckText", change.value);
        play.manager()->submit(back);
      }
    });
    play.log.clear();
    play.submit({{u"CheckText", u"New"}});
    demandLog(play.log, {"told"}, "The signals when a handler writes back what it was told");
  });
}

void announcesAgain(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    play.submit({{u"CheckSwitch", u"On"}});
    play.submit({{u"CheckSize", u"Small"}});
    play.manager()->modelProperties()->child(u"CheckSize")->setValue(u"Large");
    play.followProperties();
    play.log.clear();
    play.submit({{u"CheckSwitch", u"Off"}});
    demandLog(play.log, {"CheckSize.Large+", "CheckColour.Red+", "CheckSwitch=Off", "CheckSize=Large"},
              "The signals when an option becomes available while it is chosen");
  });
}

void overtakes(const Subject& subject) {
  bool isNested = false;
  Play play(subject);
  play.openAndTry([&] {
    play.follow<Change&>(play.model()->selectionChangeSignal(u"CheckText"), [&](Change&) {
      if (std::exchange(isNested, true)) return;
      play.submit({{u"CheckSize", u"Small"}});
    });
    play.followProperties();
    play.log.clear();
    play.submit({{u"CheckText", u"New"}, {u"CheckSize", u"Large"}});
    demandLog(play.log, {"CheckSize=Small", "CheckText=New"},
              "The signals when a handler submits what is still to be fired");
  });
}

void passesExceptions(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    play.follow<Change&>(play.model()->selectionChangeSignal(u"CheckText"),
                         [&](Change&) { throw Kiln::Exception(play.host().allocator(), "Stop."); });
    play.followProperties();
    play.log.clear();
    const auto sentence = exceptionOf([&] { play.submit({{u"CheckText", u"New"}, {u"CheckSize", u"Large"}}); });
    demand(sentence == "Stop.", "The exception of a handler does not pass through submit.");
    demandLog(play.log, {}, "The signals after the exception of a handler");
    demand(play.value(u"CheckText") == "New" && play.value(u"CheckSize") == "Large",
           "The values do not stay assigned when a handler throws.");
  });
}

void refusesInvalidTransitions(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto manager = play.manager();
    const auto twice = manager->transition(u"CheckText", u"A");
    manager->submit(twice);
    demand(exceptionOf([&] { manager->submit(twice); }).has_value(), "A transition can be submitted twice.");
    const auto isKeyError = [](const std::function<void()>& work) {
      try {
        work();
      } catch (const Kiln::XUL::KeyError&) {
        return true;
      }
      return false;
    };
    demand(isKeyError([&] { manager->transition(u"Nothing", u"A"); }),
           "transition throws no KeyError for an unknown property.");
    const auto another = manager->transition(u"CheckText", u"A");
    demand(isKeyError([&] { another->add(u"Nothing", u"A"); }), "add throws no KeyError for an unknown property.");
    demand(isKeyError([&] { play.model()->selectionChangeSignal(u"Nothing"); }),
           "selectionChangeSignal throws no KeyError for an unknown property.");
    demand(isKeyError([&] { play.model()->enableChangeSignal(u"Nothing"); }),
           "enableChangeSignal throws no KeyError for an unknown property.");
  });
}

void tellsWhatIsAllowed(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto manager = play.manager();
    demand(manager->valueAllowed(u"CheckSize", u"Large"), "An available option is not allowed.");
    demand(!manager->valueAllowed(u"CheckSize", u"Huge"), "An unknown option is allowed.");
    demand(!manager->valueAllowed(u"Nothing", u"Large"), "A value of an unknown property is allowed.");
    play.submit({{u"CheckSwitch", u"On"}});
    demand(!manager->valueAllowed(u"CheckSize", u"Large"), "An unavailable option is allowed.");
  });
}

void hasLastingProperties(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto model = play.model();
    demand(model == play.model(), "modelProperties returns another object each time.");
    demand(!model->child(u"Nothing") && !model->hasChild(u"Nothing"), "The model has a property that there is not.");
    const auto property = model->child(u"CheckSwitch");
    demand(property && model->hasChild(u"CheckSwitch"), "The model has no property CheckSwitch.");
    play.followProperties();
    play.log.clear();
    property->setValue(u"True");
    demandLog(play.log, {}, "The signals of a value that is written directly");
    demand(property->boolValue() && property->equals(u"True") && !property->equals(u"true") &&
               property->wideValue().view() == u"True" && property->narrowValue().view() == "True",
           "A property does not have the value that was written.");
    demand(!play.manager()->configuration()->child(u"check.nothing"), "A setting that is not set has a child.");
  });
}

void callsSlotsInOrder(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto signal = play.model()->selectionChangeSignal(u"CheckText");
    for (const char* line : {"first", "second", "third"})
      play.follow<Change&>(signal, [&play, line](Change&) { play.note(line); });
    play.log.clear();
    play.submit({{u"CheckText", u"New"}});
    demandLog(play.log, {"first", "second", "third"}, "The slots of a signal, in the order of their connection");
    demand(&signal->allocator() == &play.host().allocator(), "A signal has another allocator than the host.");
  });
}

}  // namespace

std::vector<Check> transitionChecks() {
  return {
      {"transition/assigned", "assigns all pairs and runs the constraints before a signal fires", assignsFirst},
      {"transition/enable-first", "fires enable changes first, then selection changes", enablesFirst},
      {"transition/order", "fires selection changes in the order of the properties' first pairs", firesInOrder},
      {"transition/same-value", "fires a selection change even when the value is the old one", firesForTheSameValue},
      {"transition/write-back", "fires nothing for what a handler writes back to the same property", allowsWritingBack},
      {"transition/available-again", "announces a chosen option that becomes available again", announcesAgain},
      {"transition/overtaken", "fires no signal that a nested transition has overtaken", overtakes},
      {"transition/exception", "passes a handler's exception on, and keeps the values", passesExceptions},
      {"transition/refused", "refuses unknown properties, and a transition for the second time",
       refusesInvalidTransitions},
      {"properties/allowed", "tells which values are allowed", tellsWhatIsAllowed},
      {"properties/values", "has properties that last, and tell their values", hasLastingProperties},
      {"signals/order", "calls the slots of a signal in the order of their connection", callsSlotsInOrder}};
}

}  // namespace Checking
