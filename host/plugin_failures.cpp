#include "host/plugin_failures.h"

#include "formats/sentences.h"
#include "host/object.h"

#include <algorithm>

namespace Refhost {

std::string PluginFailures::sentenceOf(const std::function<void()>& action) {
  calls.takeFailed();
  try {
    action();
  } catch (const HostsOwn& error) {
    calls.takeFailed();
    return error.sentence();
  } catch (const std::exception& error) {
    return sentenceFor(error);
  } catch (...) {
    return attributed(Formats::sentence("An exception was thrown that is no std::exception."));
  }
  return {};
}

std::string PluginFailures::attributed(std::string_view sentence) {
  const std::string call = calls.takeFailed();
  return call.empty() ? std::string(sentence) : Formats::sentence("{1}, {2}: {3}", library, call, sentence);
}

std::string PluginFailures::sentenceFor(const std::exception& error) {
  const std::string_view text = error.what();
  if (text.empty()) return attributed(Formats::sentence("An exception was thrown without a message."));
  const bool isTold = std::ranges::any_of(told, [text](const auto& sentence) { return text.starts_with(sentence); });
  return isTold ? std::string(text) : attributed(text);
}

}  // namespace Refhost
