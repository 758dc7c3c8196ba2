// Failures of a plug-in, as sentences.
#pragma once

#include "host/plugin_calls.h"

#include <exception>
#include <functional>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace Refhost {

// Says of a failure which library it comes from, and which call into it: "Zorvueffect.so, configureUI: It has failed."
// What an operation of the host has thrown is not a failure of the plug-in that passes it on: its sentence, which is
// for users, stays as it is.
class PluginFailures {
 public:
  // `libraryName` is its file name. `pluginCalls` outlives this object.
  PluginFailures(std::string libraryName, PluginCalls& pluginCalls)
      : library(std::move(libraryName)),
        calls(pluginCalls) {}

  // Runs an action; returns its failure as a sentence, empty on success. Exceptions are destroyed when it returns:
  // their code may be in the library.
  std::string sentenceOf(const std::function<void()>& action);

  // The same for work with a result. Throws std::runtime_error with the sentence.
  template <class Work>
  auto orSentence(const Work& work) {
    std::optional<decltype(work())> result;
    const std::string sentence = sentenceOf([&] { result.emplace(work()); });
    if (!sentence.empty()) throw std::runtime_error(sentence);
    return std::move(*result);
  }

  // A sentence that the plug-in has got from the host. It may repeat it later, with more after it.
  void noteTold(std::string sentence) { told.insert(std::move(sentence)); }

 private:
  std::string attributed(std::string_view sentence);
  std::string sentenceFor(const std::exception& error);

  std::string library;
  PluginCalls& calls;
  std::set<std::string> told;
};

}  // namespace Refhost
