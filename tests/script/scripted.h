// Runs scripts in this process, with the fake plug-in.
#pragma once

#include "tests/support/scripted_run.h"

inline Script::Request fakeRequest() {
  Script::Request request;
  request.preferences.plugin = FAKE_PLUGIN;
  request.preferences.resources = FAKE_RESOURCES;
  return request;
}

inline Scripted runScript(const std::string& script) { return runScript(script, fakeRequest()); }
