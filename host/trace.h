// The operations of a plug-in on the host and the signals that the host fires, as events in order.
#pragma once

#include "host/plugin_calls.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Refhost {

// A class of its own: g++ 12's variant of nothing but the library's types destroys what is not there when a copy runs
// out of memory.
struct TracePairs : std::vector<std::pair<std::u16string, std::u16string>> {
  using vector::vector;
};
using TraceValue = std::variant<std::u16string, bool, double, TracePairs>;

// One event: its operation ("connect", "transition" and so on) and its members in order. docs/drive.md lists them.
struct TraceEvent {
  std::string op;
  std::vector<std::pair<std::string, TraceValue>> members;
};

// Forwards each event to its listeners immediately; stores none.
class Trace {
 public:
  using Listener = std::function<void(const TraceEvent&)>;

  // Listeners live as long as the trace and must not record events themselves.
  void listen(Listener listener) { listeners.push_back(std::move(listener)); }

  void record(const TraceEvent& event) const {
    for (const Listener& listener : listeners) listener(event);
  }

  // The host's calls into the plug-in. They do not change what is traced.
  PluginCalls& calls() const { return pluginCalls; }

 private:
  std::vector<Listener> listeners;
  mutable PluginCalls pluginCalls;
};

}  // namespace Refhost
