#include "check/check.h"

#include <exception>
#include <new>

namespace Checking {

std::string sentenceOfCurrentException() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return "std::bad_alloc";
  } catch (const std::exception& error) {
    return *error.what() == '\0' ? "an exception without a sentence" : error.what();
  } catch (...) {
    return "an exception that is no std::exception";
  }
}

}  // namespace Checking
