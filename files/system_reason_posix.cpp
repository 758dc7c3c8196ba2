#include "files/system_reason.h"

namespace Files {

std::string systemReason(std::error_code code) { return code.message(); }

}  // namespace Files
