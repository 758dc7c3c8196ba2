// Runs scripts in this process, with the fake plug-in.
#pragma once

#include "tests/support/scripted_run.h"

#include <filesystem>

inline Script::Request fakeRequest() {
  Script::Request request;
  request.preferences.plugin = FAKE_PLUGIN;
  request.preferences.resources = FAKE_RESOURCES;
  return request;
}

inline Scripted runScript(const std::string& script) { return runScript(script, fakeRequest()); }

// What is told of an exception that leaves a call into the fake plug-in.
inline std::string failedAt(const std::string& call, const std::string& text) {
  return std::filesystem::path(FAKE_PLUGIN).filename().string() + ", " + call + ": " + text;
}
