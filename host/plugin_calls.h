// Calls into a plug-in by name, so that a failure can tell where it comes from.
#pragma once

#include "formats/text.h"

#include <string>
#include <string_view>
#include <utility>

namespace Refhost {

// The call that an exception has left. An outer call takes the place of an inner one: what stays is what the host did.
class PluginCalls {
 public:
  // Runs a call into the plug-in.
  template <class Work>
  decltype(auto) run(std::string_view name, const Work& work) {
    try {
      return work();
    } catch (...) {
      noteFailed(name);
      throw;
    }
  }

  // An exception has left the call: "configureUI", or "click" of the widget "btn_ok". Without memory for its name the
  // call stays unknown.
  void noteFailed(std::string_view name, std::u16string_view owner = {}) noexcept {
    try {
      failed = name;
      if (!owner.empty()) failed.append(" of ").append(Formats::toUtf8(owner));
    } catch (...) {
      failed.clear();
    }
  }

  // The name of the call that failed; empty when the exception comes from none. Forgets it.
  std::string takeFailed() { return std::exchange(failed, {}); }

 private:
  std::string failed;
};

}  // namespace Refhost
