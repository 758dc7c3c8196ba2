// How a host is packaged for `kiln check --host`: a library that exports createHost.
//
//   1. createHost makes the host. The checks open and close its preferences, one opening at a time, each with a plug-in
//      of theirs, and play the user;
//   2. the host's model has, among its own, the properties of check/content/model.xml, in that order;
//   3. it reads layouts, string tables and the ticket schema from chrome://check/content/, which is the folder
//      check/content of the resources.
//
// The checks call on the thread that called createHost. Nothing here is a part of the contract of plug-ins.
#pragma once

#include "kiln/plugin.h"

namespace Checking {

enum class Opened : std::int32_t { docProp, pdc, prePrint, rootless };

// The user whom the checks play. Implemented by the checks.
class PlayedUser {
 public:
  // Called while a modal dialog waits for the user. A dialog that is still open when this returns is cancelled.
  virtual void operateDialog() = 0;

 protected:
  PlayedUser() = default;
  PlayedUser(const PlayedUser&) = default;
  PlayedUser& operator=(const PlayedUser&) = default;
  ~PlayedUser() = default;
};

// The host under test. Implemented by the library.
class HostUnderTest {
 public:
  HostUnderTest() = default;
  HostUnderTest(const HostUnderTest&) = delete;
  HostUnderTest& operator=(const HostUnderTest&) = delete;
  virtual ~HostUnderTest() = default;

  // Opens the preferences with the plug-in that `createPlugin` makes, as if a library exported it; returns once the
  // initial state was announced. Throws std::exception with the sentence that ends the opening.
  virtual void open(Kiln::CreatePlugin& createPlugin, Opened mode) = 0;

  // Closes the preferences, if they are open, and releases all that belongs to them.
  virtual void close() = 0;

  // What the user does to a widget of the topmost dialog, or of the tabs when there is none. What a handler throws
  // stops here, and the user is told.
  virtual void click(Kiln::WStringView id) = 0;  // a button, check box or radio button
  virtual void choose(Kiln::WStringView id, std::int32_t item) = 0;
  virtual void type(Kiln::WStringView id, Kiln::WStringView text) = 0;
  virtual void paste(Kiln::WStringView id, Kiln::WStringView text) = 0;
  virtual void leave(Kiln::WStringView id) = 0;
  virtual void scroll(Kiln::WStringView id, std::int32_t position) = 0;
  virtual void pick(Kiln::WStringView id, std::uint32_t colour) = 0;

  // OK and Cancel of the topmost dialog.
  virtual void acceptDialog() = 0;
  virtual void cancelDialog() = 0;

  // OK of the preferences; false when they stay open. And the wish for help.
  virtual bool accept() = 0;
  virtual void help() = 0;

  // The user saves a profile, and loads it again.
  virtual void exportProfile() = 0;
  virtual void importProfile() = 0;

  // The first sentence that the user was told since the last call; empty for none.
  virtual Kiln::String told() = 0;
};

// The exported function "createHost". `resources` is the folder with the packages, and `home` an empty one for what the
// user keeps, both in UTF-8. `user` outlives the host. The checks delete it.
using CreateHost = HostUnderTest*(PlayedUser& user, const char* resources, const char* home);

}  // namespace Checking
