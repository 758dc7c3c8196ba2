#include "window/preferences/session.h"

#include "files/language.h"
#include "formats/papers.h"
#include "formats/text.h"
#include "host/kept_settings.h"
#include "host/kept_watermark.h"
#include "window/page/paper.h"

#include <map>
#include <utility>

namespace Window {
namespace {

// The command that reopens the preferences like this.
Refhost::UserAction reopening(const Refhost::Options& options, const Refhost::ModelDescription& model) {
  Refhost::UserAction action{"reopen", {Formats::toUtf16(options.model), Formats::toUtf16(options.locale)}};
  for (const auto& [name, value] : Refhost::changedValues(options.properties, model))
    action.arguments.push_back(name + u'=' + value);
  return action;
}

}  // namespace

Session::Session(Refhost::Options runOptions, Refhost::Face& theFace) : options(std::move(runOptions)), face(theFace) {
  if (options.home.empty()) options.home = homeOfThisRun.path().toStdU16String();
  if (!options.actions) options.actions = std::make_shared<Refhost::UserActions>();
}

void Session::open() {
  start({});
  valuesWhenKept = userValues(false);
}

void Session::reopen(std::string model, std::string locale) {
  const bool sameModel = model == options.model;
  const bool wasChanged = isChanged();
  const Refhost::TracePairs all = userValues(false);
  const Refhost::TracePairs carried = sameModel ? all : userValues(true);
  const std::string formerModel = std::exchange(options.model, std::move(model));
  const std::string formerLocale = std::exchange(options.locale, std::move(locale));
  try {
    start(carried, formerLocale != options.locale);
  } catch (...) {
    options.model = formerModel;
    options.locale = formerLocale;
    start(all);
    throw;
  }
  if (!wasChanged)
    valuesWhenKept = userValues(false);  // differs in texts that the plug-in writes in the user's language
  else if (!sameModel)
    valuesWhenKept.clear();  // changes carried to another model are not saved yet
}

// Opens with the model's saved settings, then the run's options, then the carried values.
void Session::start(const Refhost::TracePairs& carried, bool isOtherLanguage) {
  const Refhost::ModelDescription model = Refhost::readModel(options.resources / "models", options.model);
  const Refhost::KeptSettings kept = Refhost::readSettings(
      Refhost::settingsFile(options.home, model.name), [this](const std::string& sentence) { face.tell(sentence); });
  Refhost::Options now = options;
  now.properties = Refhost::applicable(kept.values, model);
  now.properties.insert(now.properties.end(), options.properties.begin(), options.properties.end());
  const Refhost::TracePairs also = Refhost::applicable(carried, model);
  now.properties.insert(now.properties.end(), also.begin(), also.end());

  if (opened)
    options.actions->act(reopening(now, model), [&] {
      open(now);
      if (isOtherLanguage) Refhost::keepWatermarkText(*opened, now.properties);
    });
  else
    open(now);
  if (!kept.setAside.empty() && onSetAside) onSetAside(kept.setAside);
}

void Session::open(const Refhost::Options& now) {
  opened.reset();
  Files::speak(now.locale);
  opened = std::make_unique<Refhost::Preferences>(now, face);
  if (onOpening) onOpening(*opened);
  opened->open();
}

Surroundings Session::surroundings() {
  return {.texts = texts(),
          .chrome = opened->chrome(),
          .paper = paperOf(opened->model().value(Formats::Prop::paperSize).value_or(u"")),
          .actions = opened->options().actions};
}

Press::Effects Session::effects() {
  std::map<std::string, std::string> values;
  for (const auto& [name, value] : opened->model().printedValues())
    values[Formats::toUtf8(name)] = Formats::toUtf8(value);
  return Press::effectsFromProperties(values);
}

Refhost::TracePairs Session::userValues(bool changedOnly) {
  Refhost::TracePairs values;
  const Refhost::PropertyModel& model = opened->model();
  for (const Refhost::PropertyDescription& property : model.description().properties) {
    const std::u16string value = model.value(property.name).value_or(property.defaultValue);
    if (!property.isContext && (!changedOnly || value != property.defaultValue))
      values.emplace_back(property.name, value);
  }
  return values;
}

bool Session::isChanged() { return userValues(false) != valuesWhenKept; }

bool Session::keep() {
  if (!opened->accept()) return false;
  const Refhost::TracePairs values = userValues(false);
  Refhost::writeSettings(Refhost::settingsFile(options.home, opened->model().description().name), values);
  valuesWhenKept = values;
  return true;
}

}  // namespace Window
