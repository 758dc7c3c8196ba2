#include "host/overlay_job.h"

#include "formats/names.h"

#include <utility>

namespace Refhost {
namespace {

namespace Prop = Formats::Prop;
namespace Value = Formats::Value;

// The options of a print-time job with the values of the preferences, but without those of an earlier overlay.
Options printTimeOptions(Preferences& preferences) {
  Options options = preferences.options();
  options.mode = Mode::prePrint;
  const TracePairs values = preferences.model().values();
  options.properties.insert(options.properties.end(), values.begin(), values.end());
  for (const auto& [name, value] :
       std::initializer_list<std::pair<Formats::Name, Formats::Name>>{{Prop::overlayImageName, {}},
                                                                      {Prop::overlayDestFileName, {}},
                                                                      {Prop::cancelJob, Value::no},
                                                                      {Prop::printJob, Value::overlayJob}})
    options.properties.emplace_back(name, value);
  return options;
}

// Another face, but for the name of what is created.
class NamingFace final : public Face {
 public:
  NamingFace(Face& shownBy, UserActions& told, std::u16string givenName)
      : face(shownBy),
        actions(told),
        name(std::move(givenName)) {}

  void runModally(Dialog& dialog) override { face.runModally(dialog); }
  void dialogOpened(Dialog& dialog) override { face.dialogOpened(dialog); }
  void dialogClosed(Dialog& dialog) override { face.dialogClosed(dialog); }
  void widgetChanged(WidgetNode& widget) override { face.widgetChanged(widget); }
  void showHelp(const std::u16string& url, const std::u16string& topic) override { face.showHelp(url, topic); }
  void showFailure(const std::string& sentence) override { face.showFailure(sentence); }
  void tell(const std::string& sentence) override { face.tell(sentence); }
  std::optional<std::u16string> askJobStep() override {
    actions.named(name);
    return name;
  }

 private:
  Face& face;
  UserActions& actions;
  std::u16string name;
};

}  // namespace

void writeOverlay(Preferences& job, const CapturedJob& captured) {
  try {
    job.writeJob(captured.pdf, captured.thumbnail);
  } catch (...) {
    job.set(std::u16string(Prop::cancelJob), std::u16string(Value::yes));
    throw;
  }
}

std::optional<std::u16string> printIntoOverlay(Preferences& preferences, Face& face, const CapturedJob& captured) {
  Preferences job(printTimeOptions(preferences), face);
  job.trace().listen([&preferences](const TraceEvent& event) { preferences.trace().record(event); });
  job.open();
  if (job.model().value(Prop::ovlDestCreated) != Value::yes) return {};
  try {
    writeOverlay(job, captured);
  } catch (...) {
    preferences.refreshStores();
    throw;
  }
  preferences.takeUpFiles(job.fileChanges());
  return job.model().value(Prop::overlayImageName).value_or(u"");
}

std::optional<std::u16string> printIntoOverlay(Preferences& preferences, Face& face, const CapturedJob& captured,
                                               const std::u16string& name) {
  NamingFace naming(face, preferences.actions(), name);
  return printIntoOverlay(preferences, naming, captured);
}

}  // namespace Refhost
