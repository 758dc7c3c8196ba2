// Applies settings of a command line as a user would.
#pragma once

#include "app/silent_face.h"
#include "host/preferences.h"

namespace App {

// Throws std::runtime_error, one sentence, when the model has no such property, or users may not set it.
void demandSettable(const Refhost::PropertyModel& model, const std::u16string& name);

// Sets the properties one by one, as if chosen in the preferences: the plug-in's handlers and the model's rules run.
// Throws std::runtime_error, one sentence, for a property that does not exist or that users may not set, for an
// unavailable option, and when a rule has overridden a choice.
void choose(Refhost::Preferences& preferences, SilentFace& face, const Refhost::TracePairs& choices);

}  // namespace App
