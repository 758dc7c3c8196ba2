// What a plug-in did with the host, and what the host fired, as events in order.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Refhost {

using TracePairs = std::vector<std::pair<std::u16string, std::u16string>>;
using TraceValue = std::variant<std::u16string, bool, double, TracePairs>;

// One event: its operation ("connect", "transition" ...) and its members by name, in order. docs/drive.md lists them.
struct TraceEvent {
  std::string op;
  std::vector<std::pair<std::string, TraceValue>> members;
};

// Tells each event to its listeners at once; keeps none itself.
class Trace {
 public:
  using Listener = std::function<void(const TraceEvent&)>;

  // Listeners stay for the life of the trace and must not record events themselves.
  void listen(Listener listener) { listeners.push_back(std::move(listener)); }

  void record(const TraceEvent& event) const {
    for (const Listener& listener : listeners) listener(event);
  }

 private:
  std::vector<Listener> listeners;
};

}  // namespace Refhost
