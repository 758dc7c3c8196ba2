// Formats options in help texts: with their values, and the default at the end of the description.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace App {

class HelpFormatter final : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(30); }

  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string type = option->get_type_name();
    const bool isRepeatable = option->get_items_expected_max() > 1;
    return (type.empty() ? "" : ' ' + type) + (isRepeatable ? " ..." : "");
  }

  std::string make_option_desc(const CLI::Option* option) const override {
    const std::string standard = option->get_default_str();
    return option->get_description() + (standard.empty() ? "" : "; default " + standard);
  }
};

}  // namespace App
