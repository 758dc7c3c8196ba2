#include "host/overlay_job.h"

namespace Refhost {
namespace {

// The options of a print-time job with the values of the preferences, but without those of an earlier overlay.
Options printTimeOptions(Preferences& preferences) {
  Options options = preferences.options();
  options.mode = Mode::prePrint;
  const TracePairs values = preferences.model().values();
  options.properties.insert(options.properties.end(), values.begin(), values.end());
  options.properties.insert(
      options.properties.end(),
      {{u"OverlayImageName", u""}, {u"OverlayDestFileName", u""}, {u"CancelJob", u"False"}, {u"PrintJob", u"Overlay"}});
  return options;
}

}  // namespace

void writeOverlay(Preferences& job, const CapturedJob& captured) {
  try {
    job.writeJob(captured.pdf, captured.thumbnail);
  } catch (...) {
    job.set(u"CancelJob", u"True");
    throw;
  }
}

std::optional<std::u16string> printIntoOverlay(Preferences& preferences, Face& face, const CapturedJob& captured) {
  Preferences job(printTimeOptions(preferences), face);
  job.trace().listen([&preferences](const TraceEvent& event) { preferences.trace().record(event); });
  job.open();
  if (job.model().value(u"OvlDestCreated") != u"True") return {};
  try {
    writeOverlay(job, captured);
  } catch (...) {
    preferences.refreshStores();
    throw;
  }
  preferences.refreshStores();
  return job.model().value(u"OverlayImageName").value_or(u"");
}

}  // namespace Refhost
