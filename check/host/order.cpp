// The order of a host's calls, from the version to the end.
#include "check/host/groups.h"
#include "check/host/play.h"

#include <algorithm>

namespace Checking {
namespace {

using Log = std::vector<std::string>;

// The lines that the plug-in has noted before its end.
Log opened(Play& play, Opened mode) {
  play.open(mode);
  return play.log;
}

void asksForTheVersionFirst(const Subject& subject) {
  Play play(subject);
  const Log log = opened(play, Opened::docProp);
  demand(!log.empty() && log.front() == "version",
         "The first call of createPlugin is not the question for the version, with null for the manager and the "
         "library: " +
             shown(log) + ".");
}

void refusesOtherVersions(const Subject& subject) {
  for (const Kiln::ContractVersion version : {Kiln::ContractVersion{Kiln::contractVersion.major + 1, 0}, {1, 0}, {}}) {
    Play play(subject);
    play.version = version;
    bool isRefused = false;
    try {
      play.open();
    } catch (const std::exception&) {
      isRefused = true;
    }
    demand(isRefused && std::count(play.log.begin(), play.log.end(), "createPlugin") == 0,
           "The host opens with a plug-in of version " + std::to_string(version.major) + ".0 of the contract.");
  }
}

void callsInOrder(const Subject& subject) {
  for (const Opened mode : {Opened::docProp, Opened::pdc, Opened::prePrint}) {
    Play play(subject);
    Log log = opened(play, mode);
    std::erase(log, "version");
    demandLog(log, {"createPlugin", "create", "initialise", "configureUI", "ready"}, "The order of calls");
  }
}

void startsWithoutGui(const Subject& subject) {
  Play play(subject);
  int calls = 0;
  play.onRootless = [&calls] { return ++calls < 3; };
  Log log = opened(play, Opened::rootless);
  std::erase(log, "version");
  demandLog(log,
            {"createPlugin", "create", "initialise", "rootlessActivation", "rootlessActivation", "rootlessActivation"},
            "The calls without a GUI, of a plug-in that asks for three");
}

void endsRootlessActivation(const Subject& subject) {
  Play play(subject);
  play.onRootless = [] { return true; };
  try {
    play.open(Opened::rootless);
  } catch (const std::exception&) {  // as it should be
  }
  const auto calls = std::count(play.log.begin(), play.log.end(), "rootlessActivation");
  demand(calls <= 100, "The host calls rootlessActivation " + std::to_string(calls) + " times; expected 100 at most.");
}

void endsOpeningByExceptions(const Subject& subject) {
  constexpr const char* sentence = "The check does not open.";
  for (std::function<void()> Play::* step : {&Play::onCreate, &Play::onInitialise, &Play::onConfigure}) {
    Play play(subject);
    play.*step = [&play] { throw Kiln::Exception(play.host().allocator(), "The check does not open."); };
    std::string found = "nothing";
    try {
      play.open();
    } catch (const std::exception& error) {
      found = error.what();
    }
    demand(found.find(sentence) != found.npos,
           "An exception of the plug-in does not end the opening with its sentence; found " + found + ".");
    demand(play.log.back() == "destroyed", "The plug-in is not released after an opening that it has ended.");
  }
}

void releasesThePluginFirst(const Subject& subject) {
  Play play(subject);
  bool isAlive = false;
  Kiln::IPropertyManager* manager = nullptr;
  play.onReady = [&] {
    manager = play.manager().get();
    play.followProperties();
  };
  play.onDestroy = [&] { isAlive = manager->references() > 0; };
  play.open();
  play.close();
  demand(play.log.back() == "destroyed", "The plug-in is not destroyed at the end.");
  demand(isAlive, "The property manager is gone before the plug-in is.");
}

void announcesTheInitialState(const Subject& subject) {
  Play play(subject);
  play.onReady = [&] { play.followProperties(); };
  play.open();
  Log log = play.log;
  log.erase(log.begin(), std::find(log.begin(), log.end(), "ready") + 1);
  demandLog(log, {"CheckText=Start", "CheckSwitch=Off", "CheckSize=Small", "CheckColour=Red"}, "The initial state");
}

void announcesToTheEnd(const Subject& subject) {
  Play play(subject);
  play.onReady = [&] {
    play.follow<Kiln::ModelSelectionChange&>(
        play.model()->selectionChangeSignal(u"CheckText"),
        [&](Kiln::ModelSelectionChange&) { throw Kiln::Exception(play.host().allocator(), "First."); });
    play.followProperties();
  };
  play.open();
  demand(play.log.back() == "CheckColour=Red",
         "The initial state is not announced to the end when a handler throws; the last is " + play.log.back() + ".");
  const std::string told(play.user().told().view());
  demand(told.find("First.") != told.npos, "The user is not told the exception of a handler of the initial state.");
}

void stopsExceptionsOfActions(const Subject& subject) {
  Play play(subject);
  int kind = 0;
  play.onReady = [&] {
    play.follow<Kiln::XUL::EventArg<Kiln::XUL::Button>>(play.widget<Kiln::XUL::Button>(u"btn")->clickSignal(),
                                                        [&](const auto&) {
                                                          play.note("clicked");
                                                          if (kind == 0)
                                                            throw Kiln::Exception(play.host().allocator(), "Zero.");
                                                          if (kind == 1) throw std::bad_alloc();
                                                          if (kind == 2) throw 42;
                                                        });
  };
  play.open();
  for (kind = 0; kind < 3; ++kind) {
    play.user().told();
    play.user().click(u"btn");
    demand(!play.user().told().empty(), "The user is not told when a handler throws.");
  }
  play.user().click(u"btn");
  demand(std::count(play.log.begin(), play.log.end(), "clicked") == 4, "A click after exceptions does not arrive.");
}

}  // namespace

std::vector<Check> orderChecks() {
  return {{"order/version", "asks for the version before any other call", asksForTheVersionFirst},
          {"order/other-version", "refuses a plug-in of another version, or of none", refusesOtherVersions},
          {"order/calls", "calls create, initialise, configureUI, and fires the ready signal, once each", callsInOrder},
          {"order/rootless", "calls rootlessActivation until it returns false, and no configureUI", startsWithoutGui},
          {"order/rootless-limit", "calls rootlessActivation 100 times at most", endsRootlessActivation},
          {"order/exception", "ends the opening with the sentence of an exception of create, initialise or configureUI",
           endsOpeningByExceptions},
          {"order/release", "releases the plug-in before what it is connected to", releasesThePluginFirst},
          {"order/initial-state", "announces every property after the ready signal, in the model's order",
           announcesTheInitialState},
          {"order/initial-exception", "announces to the end when a handler throws, and tells the first exception",
           announcesToTheEnd},
          {"order/action-exception", "stops exceptions of handlers where it has dispatched the user's action",
           stopsExceptionsOfActions}};
}

}  // namespace Checking
