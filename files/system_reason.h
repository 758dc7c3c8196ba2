// The system's errors in words.
#pragma once

#include <string>
#include <system_error>

namespace Files {

// The reason in the user's language, UTF-8, without a full stop.
std::string systemReason(std::error_code code);

}  // namespace Files
