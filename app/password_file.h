// The password of a job, from a file: in an argument of a command anybody on the machine could see it.
#pragma once

#include "press/error.h"

#include <CLI/CLI.hpp>

#include <string>

namespace App {

// Declares the option, which names the file.
void addPasswordFile(CLI::App& command, std::string& file);

// The first line of the file; empty when `file` is empty. Throws std::runtime_error, one sentence, when there is no
// password in it.
std::string passwordIn(const std::string& file);

// The sentence of an error for users of commands: how to give a password that is missing.
std::string inWordsOfCommands(const Press::Error& error);

}  // namespace App
