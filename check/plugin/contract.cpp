// What createPlugin answers, and what the library exports.
#include "check/exports.h"
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"

#include <string>

namespace Checking {
namespace {

using Refhost::Library;

std::string shown(const Kiln::ContractVersion& version) {
  return std::to_string(version.major) + "." + std::to_string(version.minor);
}

void exportsOnlyCreatePlugin(const Subject& subject) {
  for (const std::string& name : exportsOf(subject.library))
    demand(name == "createPlugin", "The library exports " + name + ", which is not createPlugin.");
}

void answersVersion(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  Kiln::VersionExchange versions;
  const auto made = opening.create(nullptr, Kiln::versionQuestion, &versions);
  demand(versions.plugin.major != 0, "createPlugin leaves the version at 0.0 when it is asked for it.");
  demand(versions.plugin.worksWith(versions.host), "The library speaks version " + shown(versions.plugin) +
                                                       " of the contract, and this program version " +
                                                       shown(versions.host) + ".");
  demand(versions.host.major == Kiln::contractVersion.major && versions.host.minor == Kiln::contractVersion.minor,
         "createPlugin changes the version that the host has told.");
  demand(!made, "createPlugin returns a plug-in when it is asked for its version; expected null.");
}

void knowsItsNameAlone(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.makePlugin();
  demand(opening.isMade(), "createPlugin makes no plug-in of the name \"" + subject.plugin + "\".");
  for (const std::string& name : {std::string(), subject.plugin + " ", "x" + subject.plugin, std::string("kiln.other"),
                                  std::string(Kiln::versionQuestion)})
    demand(!opening.create(opening.givenManager(), name, nullptr),
           "createPlugin makes a plug-in of the name \"" + name + "\"; expected null.");
}

void ignoresReserved(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.makePlugin();
  Kiln::VersionExchange versions;
  demand(bool(opening.create(opening.givenManager(), subject.plugin, &versions)),
         "createPlugin makes no plug-in when its reserved argument is not null.");
  demand(versions.plugin.major == 0, "createPlugin writes to its reserved argument though it was asked for a plug-in.");
  const auto nowhere = reinterpret_cast<void*>(std::uintptr_t{16});  // NOLINT(performance-no-int-to-ptr)
  demand(bool(opening.create(opening.givenManager(), subject.plugin, nowhere)),
         "createPlugin makes no plug-in when its reserved argument points nowhere.");
}

void makesNewPlugins(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.makePlugin();
  demand(opening.isMade(), "createPlugin makes no plug-in of the name \"" + subject.plugin + "\".");
  const int references = opening.plugin().references();
  demand(references == 1,
         "createPlugin returns a plug-in with a count of " + std::to_string(references - 1) + "; expected 0.");
  const auto second = opening.create(opening.givenManager(), subject.plugin, nullptr);
  demand(second.get() != &opening.plugin(), "createPlugin returns the same plug-in twice; expected a new one.");
}

void keepsWhatItInherits(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (const bool isActive : {true, false}) {
    Opening opening(subject, *library, {.active = isActive});
    opening.makePlugin();
    opening.begin();
    demand(opening.plugin().propertyManager() == opening.givenManager(),
           "propertyManager returns another manager than the one that createPlugin was given.");
    demand(opening.plugin().isActive() == isActive,
           std::string("isActive returns ") + (isActive ? "false" : "true") + ", and the host says otherwise.");
  }
}

void answersInterfaces(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  Opening opening(subject, *library);
  opening.makePlugin();
  opening.begin();
  for (const char* name : {"", "PTPlugi", "PTPlugin2", "kiln.version", "Widget"})
    demand(opening.plugin().queryInterface(name) == nullptr,
           std::string("The plug-in says that it has an interface of the name \"") + name + "\"; expected null.");
  demand(opening.plugin().queryInterface("PTPlugin") == opening.plugin().queryInterface("PTPlugin"),
         "The plug-in answers twice differently whether it has the interface PTPlugin.");
}

}  // namespace

std::vector<Check> contractChecks() {
  return {{"contract/version", "tells its version of the contract when it is asked, and returns null", answersVersion},
          {"contract/exports", "exports createPlugin and nothing else", exportsOnlyCreatePlugin},
          {"contract/name", "makes no plug-in of an unknown name", knowsItsNameAlone},
          {"contract/reserved", "ignores the reserved argument otherwise", ignoresReserved},
          {"contract/new", "makes a new plug-in each time, with a count of 0", makesNewPlugins},
          {"contract/inherited", "inherits propertyManager and isActive unchanged", keepsWhatItInherits},
          {"contract/interfaces", "answers null for interfaces that it does not have", answersInterfaces}};
}

}  // namespace Checking
