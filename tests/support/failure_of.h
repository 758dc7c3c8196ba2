// What an action fails with.
#pragma once

#include <exception>
#include <string>

namespace Testing {

// The message of an action's exception.
template <class Action>
std::string failureOf(const Action& action) {
  try {
    action();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "it did not fail";
}

}  // namespace Testing
