// Exceptions of another compiler. They unwind the stack without running our destructors and catch blocks.
#pragma once

#include <functional>

namespace Testing {

// Throws one.
void throwForeignException();

// Runs the work; whether such an exception ended it.
bool endsByForeignException(const std::function<void()>& work);

}  // namespace Testing
