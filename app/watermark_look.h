// How a watermark looks, from a command line.
#pragma once

#include "host/trace.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace App {

// The limits are those of the watermark editor.
struct WatermarkLook {
  std::optional<std::string> font;
  std::optional<std::string> style;
  std::optional<std::string> size;
  std::optional<std::string> colour;
  std::optional<std::string> angle;
  std::optional<std::string> place;
  std::optional<std::string> transparency;
  bool isOutline = false;

  // Declares the options, whose names begin so, on a command. This object must live until the command runs.
  void declare(CLI::App& command, const std::string& start);

  // Whether the command line has any of them.
  bool isGiven() const;

  // Throws std::runtime_error, one sentence, when a value is out of its range.
  void demandValid() const;

  // Two letters: upper, centre or lower, and left, centre or right. Valid with a valid place.
  std::u16string position() const;

  // What to set so that a watermark prints like this.
  Refhost::TracePairs properties() const;
};

// The names of the styles and of the places on a page.
std::vector<std::string> watermarkStyles();
std::vector<std::string> watermarkPlaces();

// Throws std::runtime_error, one sentence, when no watermark can have that text.
void demandWatermarkText(const std::string& text);

}  // namespace App
