// What a user sends when something is wrong: their session as a drive script, and the settings at the end.
#pragma once

#include "host/model/properties.h"
#include "script/recording.h"

#include <string>

namespace Script {

// Whether a report has the texts of the user: those that they typed, names, paths of files. Otherwise "text 1" and so
// on stand in their places, the same for the same text. Numbers stay, and so do choices among what everybody has.
enum class UserTexts { included, replaced };

// The report as text for people to read and for "kiln drive --expect" to replay.
std::string reportOf(const Recording& recording, const Refhost::PropertyModel& settings, UserTexts texts);

}  // namespace Script
