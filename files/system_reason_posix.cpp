#include "files/system_reason.h"

#include "formats/sentences.h"

namespace Files {
namespace {

// What the C library says in English of the failures that users meet.
[[maybe_unused]] constexpr std::string_view reasons[] = {
    Formats::sentenceTemplate("Operation not permitted"),
    Formats::sentenceTemplate("No such file or directory"),
    Formats::sentenceTemplate("Input/output error"),
    Formats::sentenceTemplate("Permission denied"),
    Formats::sentenceTemplate("Device or resource busy"),
    Formats::sentenceTemplate("File exists"),
    Formats::sentenceTemplate("Not a directory"),
    Formats::sentenceTemplate("Is a directory"),
    Formats::sentenceTemplate("Too many open files"),
    Formats::sentenceTemplate("File too large"),
    Formats::sentenceTemplate("No space left on device"),
    Formats::sentenceTemplate("Read-only file system"),
    Formats::sentenceTemplate("Broken pipe"),
    Formats::sentenceTemplate("File name too long"),
    Formats::sentenceTemplate("Too many levels of symbolic links"),
    Formats::sentenceTemplate("Disk quota exceeded"),
};

}  // namespace

std::string systemReason(std::error_code code) { return Formats::sentence(code.message()); }

}  // namespace Files
