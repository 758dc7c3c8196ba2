// The effects that jobs of a queue may choose: as options of its description, and as choices of a job.
#pragma once

#include "app/queue/description.h"
#include "app/silent_run.h"

#include <map>
#include <string>
#include <vector>

namespace App {

// Throws std::runtime_error, one sentence, when jobs must not set the property: those with any text could pass paths
// and texts to a process that runs as another user.
void demandAllowable(const std::string& property, const Refhost::PropertyModel& model);

// The properties of all effects that the model can do.
std::vector<std::string> offeredProperties(SilentRun& run);

// The options for those of the properties that dialogs can offer, with what `run` has set as defaults, and with what
// the model's rules say of them and of the printer's own options. Chooses marks in `run`.
QueueEffects offer(SilentRun& run, const std::vector<std::string>& allowed, const std::string& description);

// Option keywords and their choices.
using OptionChoices = std::map<std::string, std::string>;

// The choices among a job's options. Options that are switches become "True" and "False".
OptionChoices offeredChoices(const std::vector<std::pair<std::string, std::string>>& jobOptions);

// Applies the choices, as if made in the preferences; those that are `defaults` change nothing. Throws
// std::runtime_error, one sentence, for one that is not offered.
void chooseOffered(SilentRun& run, const std::vector<std::string>& allowed, const OptionChoices& defaults,
                   const OptionChoices& choices);

}  // namespace App
