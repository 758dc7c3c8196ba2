// The version of this contract, and how a host and a plug-in tell each other theirs.
//
//   1. before any other call, the host calls createPlugin with the name `versionQuestion`, and a VersionExchange as the
//      argument that is reserved otherwise; the manager and the library are null;
//   2. createPlugin hands both to answerVersion, which fills in the plug-in's version, and returns null;
//   3. the host refuses a plug-in unless the two versions work together (worksWith), with one sentence that has both.
//
// A library that leaves the plug-in's version at 0.0 was built before versions were told, for version 1.
#pragma once

#include "kiln/text.h"

namespace Kiln {

// `major` changes when a class of the contract changes: its operations, their order, their meaning or their arguments.
// `minor` grows when something is added that is asked for by name (RefCount::queryInterface, Host::queryInterface): a
// plug-in asks, and does without when the answer is null.
struct ContractVersion {
  std::int32_t major = 0;
  std::int32_t minor = 0;

  constexpr bool worksWith(const ContractVersion& other) const noexcept { return major == other.major; }
};

// The version that these headers declare.
inline constexpr ContractVersion contractVersion{2, 0};

// What a host and a plug-in of different versions tell each other; its members never change.
struct VersionExchange {
  ContractVersion host = contractVersion;  // in
  ContractVersion plugin = {};             // out
};

// No plug-in has this name.
inline constexpr const char* versionQuestion = "kiln.version";

// For createPlugin: whether it was asked for the contract's version, which is answered then. `reserved` is looked at
// only when it was. [plug-in]
inline bool answerVersion(StringView name, void* reserved) noexcept {
  if (name.view() != versionQuestion || reserved == nullptr) return false;
  static_cast<VersionExchange*>(reserved)->plugin = contractVersion;
  return true;
}

}  // namespace Kiln
