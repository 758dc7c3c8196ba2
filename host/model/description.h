// Model descriptions: what a printer model can do, as data.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Refhost {

struct PropertyDescription {
  std::u16string name;
  std::u16string defaultValue;

  // Empty where any text is allowed.
  std::vector<std::u16string> options;

  // A fact of the printer or the job, which no user changes, and which no settings keep.
  bool isContext = false;
};

// Makes an option unavailable while every condition holds.
struct RuleDescription {
  struct Condition {
    std::u16string property;
    std::u16string value;
  };
  std::u16string property;
  std::u16string option;
  std::vector<Condition> conditions;
};

struct ModelDescription {
  std::u16string name;

  // What people call it; may be a string-table reference.
  std::u16string label;
  std::vector<PropertyDescription> properties;
  std::vector<RuleDescription> rules;
};

// Reads a description that ships with the host (`nameOrPath` without a folder or ending, whatever its case, looked up
// in `shipped`) or one of the user's, by its path. Throws std::runtime_error: one sentence with file and line.
ModelDescription readModel(const std::filesystem::path& shipped, const std::string& nameOrPath);

// The names of the shipped descriptions, "standard" first, then in order.
std::vector<std::string> shippedModels(const std::filesystem::path& shipped);

}  // namespace Refhost
