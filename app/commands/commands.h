// The subcommands of kiln.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>

namespace App {

// Executes the chosen subcommand; returns the exit status.
using Run = std::function<int()>;

// Each declares a subcommand that sets `run` when it is chosen. They do not throw; `run` throws Failure, or
// std::exception for exit status 1.
void addCheck(CLI::App& kiln, Run& run);
void addDrive(CLI::App& kiln, Run& run);
void addFilter(CLI::App& kiln, Run& run);
void addOverlay(CLI::App& kiln, Run& run);
void addOverlayCreation(CLI::App& overlay, Run& run);
void addPicture(CLI::App& kiln, Run& run);
void addPrint(CLI::App& kiln, Run& run);
void addProfile(CLI::App& kiln, Run& run);
void addQueue(CLI::App& kiln, Run& run);
void addSample(CLI::App& kiln, Run& run);
void addShow(CLI::App& kiln, Run& run);
void addTicket(CLI::App& kiln, Run& run);
void addWatermark(CLI::App& kiln, Run& run);

}  // namespace App
