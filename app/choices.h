// The settings that a command line names, made as a user would make them.
#pragma once

#include "app/silent_face.h"
#include "host/preferences.h"

namespace App {

// Throws std::runtime_error, one sentence, when the model has no property of that name, or one that no user sets.
void demandSettable(const Refhost::PropertyModel& model, const std::u16string& name);

// Gives the properties their values, one after another, each as if it had been chosen in the preferences: the plug-in's
// handlers and the model's rules run. Throws std::runtime_error, one sentence, for a property that the model does not
// have or no user sets, for an option that cannot be chosen, and when the rules have not kept a choice.
void choose(Refhost::Preferences& preferences, SilentFace& face, const Refhost::TracePairs& choices);

}  // namespace App
