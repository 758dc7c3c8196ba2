// The watermarks and overlays of the preferences' lists, as choices of a queue's options.
#pragma once

#include "app/queue/effects.h"
#include "app/silent_run.h"

#include <cstdint>
#include <string>
#include <vector>

namespace App {

// The choices for no mark, and for the queue's ticket with a mark that is in no list.
inline constexpr const char* noMark = "None";
inline constexpr const char* markOfTicket = "Ticket";

// A mark of the list. Its keyword is made from its name alone, so that a mark that comes or goes takes no other's.
struct Mark {
  std::string keyword;
  std::string name;
  std::u16string value;
  std::int32_t index = 0;
};

// Of several with one name, the last one: the administrator's.
std::vector<Mark> marksOf(SilentRun& run, const OfferedEffect& effect);

// Choose in the list. Throw std::runtime_error, one sentence, when that cannot be chosen now.
void chooseMark(SilentRun& run, const OfferedEffect& effect, const Mark& mark);
void chooseNoMark(SilentRun& run, const OfferedEffect& effect);

// Whether two choices are the same to the print service.
bool isSameChoice(std::string_view one, std::string_view other);

}  // namespace App
