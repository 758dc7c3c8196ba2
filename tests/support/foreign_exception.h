// Exceptions that another compiler made. They unwind the stack, but run no destructors of ours and no catch on the way.
#pragma once

#include <functional>

namespace Testing {

// Throws one.
void throwForeignException();

// Does the work; whether such an exception ended it.
bool endsByForeignException(const std::function<void()>& work);

}  // namespace Testing
