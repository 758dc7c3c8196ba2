// Model descriptions: the capabilities of a printer model, as data.
#pragma once

#include "files/layered_folder.h"
#include "host/documents/format.h"
#include "host/model/rules.h"

#include <string>
#include <vector>

namespace Refhost {

struct PropertyDescription {
  std::u16string name;
  std::u16string defaultValue;

  // Empty when any text is allowed.
  std::vector<std::u16string> options;

  // A read-only fact of the printer or the job; never saved with the settings.
  bool isContext = false;

  // The property of the feature that this one is a detail of; empty for none.
  std::u16string feature = {};
};

struct ModelDescription {
  std::u16string name;

  // The display name; may be a string-table reference.
  std::u16string label;
  std::vector<PropertyDescription> properties;
  std::vector<RuleDescription> rules;
};

// The format of a description.
extern const DocumentFormat modelFormat;

// Reads a description that ships with the host (`nameOrPath` without a folder or ending, case-insensitive, in
// `shipped`) or a user's file by its path. Throws std::runtime_error: one sentence with file and line.
ModelDescription readModel(const Files::LayeredFolder& shipped, const std::string& nameOrPath);

// The names of the shipped descriptions: "standard" first, the others sorted.
std::vector<std::string> shippedModels(const Files::LayeredFolder& shipped);

}  // namespace Refhost
