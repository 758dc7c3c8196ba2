// Formats options in help texts: with their values, and the default at the end of the description.
#pragma once

#include "formats/sentences.h"

#include <CLI/CLI.hpp>

#include <string>

namespace App {

class HelpFormatter final : public CLI::Formatter {
  // The parser's own words in a help text.
  static constexpr std::string_view words[] = {
      Formats::sentenceTemplate("Usage"),       Formats::sentenceTemplate("Options"),
      Formats::sentenceTemplate("OPTIONS"),     Formats::sentenceTemplate("Positionals"),
      Formats::sentenceTemplate("Subcommands"), Formats::sentenceTemplate("SUBCOMMAND"),
      Formats::sentenceTemplate("SUBCOMMANDS"), Formats::sentenceTemplate("REQUIRED"),
  };

 public:
  HelpFormatter() {
    column_width(30);
    for (const std::string_view word : words) label(std::string(word), Formats::sentence(word));
  }

  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string type = option->get_type_name();
    const bool isRepeatable = option->get_items_expected_max() > 1;
    return (type.empty() ? "" : ' ' + type) + (isRepeatable ? " ..." : "");
  }

  std::string make_option_desc(const CLI::Option* option) const override {
    const std::string standard = option->get_default_str();
    return standard.empty() ? option->get_description()
                            : Formats::sentence("{1}; default {2}", option->get_description(), standard);
  }
};

}  // namespace App
