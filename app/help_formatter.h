// Formats options in help texts: with their values, and the default at the end of the description.
#pragma once

#include "formats/sentences.h"

#include <CLI/CLI.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace App {

class HelpFormatter final : public CLI::Formatter {
  // The parser's own words in a help text.
  static constexpr std::string_view words[] = {
      Formats::sentenceTemplate("Usage"),       Formats::sentenceTemplate("Options"),
      Formats::sentenceTemplate("OPTIONS"),     Formats::sentenceTemplate("Positionals"),
      Formats::sentenceTemplate("Subcommands"), Formats::sentenceTemplate("SUBCOMMAND"),
  };

 public:
  HelpFormatter() {
    column_width(30);
    for (const std::string_view word : words) label(std::string(word), Formats::sentence(word));
  }

  std::string make_group(std::string group, bool isPositional, std::vector<const CLI::Option*> options) const override {
    return CLI::Formatter::make_group(Formats::sentence(group), isPositional, std::move(options));
  }

  // The parser has no label for the heading of subcommands.
  std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override {
    constexpr std::string_view heading = "Subcommands";
    std::string text = CLI::Formatter::make_subcommands(app, mode);
    if (const std::size_t at = text.find(heading); at != text.npos)
      text.replace(at, heading.size(), Formats::sentence(heading));
    return text;
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
