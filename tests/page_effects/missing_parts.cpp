#include "tests/page_effects/missing_parts.h"

#include "formats/letter_case.h"
#include "formats/text.h"
#include "host/chrome/layout.h"
#include "host/chrome/strings.h"
#include "host/model/description.h"
#include "tests/support/host_world.h"

#include <algorithm>

namespace {

using Refhost::WidgetNode;

bool contains(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

// A text that a widget of the tab has, in lower case.
std::u16string lower(std::u16string text) {
  std::ranges::transform(text, text.begin(), Formats::lowerCase);
  return text;
}

class Search {
 public:
  Search(const Formats::PageEffect& wanted, const EffectSources& from)
      : effect(wanted),
        sources(from),
        chrome(from.resources),
        property(Formats::toUtf8(wanted.property)) {}

  std::vector<std::string> run() {
    models();
    tab();
    schema();
    print();
    for (const char* document : {"printing.md", "print-ticket.md"})
      demand(contains(pageOf(document), '`' + property + '`'), "is not in docs/" + std::string(document));
    return std::move(sentences);
  }

 private:
  void demand(bool isThere, const std::string& otherwise) {
    if (!isThere) sentences.push_back(property + " " + otherwise + ".");
  }

  std::string pageOf(const std::string& name) const { return Testing::bytesOf(sources.documents / name); }

  // The models up to the first that lacks something: others extend it.
  void models() {
    const auto folder = sources.resources / "models";
    for (const std::string& name : Refhost::shippedModels(folder)) {
      model(Refhost::readModel(folder, name), "host/models/" + name + ".xml");
      if (!sentences.empty()) return;
    }
  }

  void model(const Refhost::ModelDescription& description, const std::string& file) {
    const auto found = std::ranges::find(description.properties, effect.property, &Refhost::PropertyDescription::name);
    if (found == description.properties.end()) return demand(false, "is no property of " + file);
    for (const Formats::Name value : {Formats::Value::none, effect.on})
      demand(std::ranges::find(found->options, value) != found->options.end(),
             "has no option \"" + Formats::toUtf8(value) + "\" in " + file);
    demand(found->defaultValue == Formats::Value::none, "is not \"None\" at first in " + file);
  }

  void tab() {
    const Refhost::Trace trace;
    const Refhost::StringTables english(chrome, "en-US");
    Refhost::WidgetWorld world{trace, english, {}, [](const auto& action) { action(); }, [](auto&) {}};
    const auto layout = Refhost::LayoutReader(chrome, {}).read(Formats::Address::tabLayout, world);
    auto* box = dynamic_cast<Refhost::CheckBox*>(layout.find(effect.box));
    demand(box != nullptr, "has no check box " + Formats::toUtf8(effect.box) +
                               " in effect/content/tab_effect.xul, which names its texts");
    if (box == nullptr) return;
    std::map<std::string, std::u16string> references = {
        {"label", box->label()}, {"access key", box->attribute("accesskey")}, {"tip", box->attribute("tooltiptext")}};
    for (const auto& [part, reference] : references)
      demand(!Refhost::referencedName(reference).empty(), "has no " + part + " in effect/content/tab_effect.xul");
    const std::u16string label(Refhost::referencedName(references["label"]));
    references["help"] = u"$" + label + u"_HELP;";
    help(label);
    for (const std::string& locale : chrome.locales("effect")) {
      texts(references, locale);
      accessKey(*box, *layout.root, locale);
    }
  }

  void help(const std::u16string& label) {
    const std::string name = Formats::toUtf8(label);
    const std::string entry = "<dt><b>$" + name + ";</b></dt>\n<dd>$" + name + "_HELP;</dd>\n";
    demand(contains(Testing::bytesOf(sources.resources / "effect/content/help/pro_tab_effect.html"), entry),
           "has no entry in effect/content/help/pro_tab_effect.html");
  }

  void texts(const std::map<std::string, std::u16string>& references, const std::string& locale) {
    const std::string file = "effect/content/" + locale + "/strings.dtd";
    const auto table = Refhost::readStrings(sources.resources / file);
    for (const auto& [part, reference] : references) {
      const std::u16string_view name = Refhost::referencedName(reference);
      if (name.empty()) continue;
      const auto found = table.find(name);
      demand(found != table.end() && !found->second.empty(), "has no " + part + " in " + file);
    }
  }

  // The key is in the label, and no other control of the tab has it.
  void accessKey(WidgetNode& box, WidgetNode& root, const std::string& locale) {
    const Refhost::StringTables strings(chrome, locale);
    const auto keyOf = [&strings](WidgetNode& widget) { return lower(strings.resolve(widget.attribute("accesskey"))); };
    const std::u16string key = keyOf(box);
    if (key.size() != 1) return;  // none; told by others
    const std::string words = "the access key \"" + Formats::toUtf8(key) + "\" in " + locale;
    demand(lower(strings.resolve(box.label())).find(key) != std::u16string::npos,
           "has " + words + ", which its label has not");
    Refhost::walk(root, [&](WidgetNode& other) {
      if (&other != &box && keyOf(other) == key)
        demand(false, "has " + words + ", as " + Formats::toUtf8(other.id()) + " has");
    });
  }

  // Each feature that carries the property has both values, and is in the document.
  void schema() {
    const std::string file = "effect/content/schema_effect.xml";
    const std::string text = Testing::bytesOf(sources.resources / file);
    const std::string attribute = " property=\"" + property + '"';
    std::size_t place = text.find(attribute);
    demand(place != text.npos, "has no feature in " + file);
    for (; place != text.npos; place = text.find(attribute, place + 1)) {
      const std::string feature = text.substr(place, text.find("</feature>", place) - place);
      const std::size_t name = text.rfind("name=\"", place) + 6;
      const std::string keyword = text.substr(name, text.find('"', name) - name);
      for (const Formats::Name value : {Formats::Value::none, effect.on})
        demand(contains(feature, "value=\"" + Formats::toUtf8(value) + '"'),
               "has no option for \"" + Formats::toUtf8(value) + "\" in " + keyword + " in " + file);
      demand(contains(pageOf("print-ticket.md"), '`' + keyword + '`'),
             "is in tickets as " + keyword + ", which is not in docs/print-ticket.md");
    }
  }

  void print() {
    const std::string file = "press/job/effects.h";
    const auto found = std::ranges::find(sources.printed, effect, &Press::PageEffect::setting);
    if (found == sources.printed.end()) return demand(false, "is not printed: it is not in the table of " + file);
    demand(!found->result.empty(), "has no words for a dry run in " + file);
    demand(found->flip != Press::Flip::none || !found->paint.blendMode.empty(), "changes nothing on a page in " + file);
  }

  const Formats::PageEffect& effect;
  const EffectSources& sources;
  const Refhost::ChromeFolders chrome;
  const std::string property;
  std::vector<std::string> sentences;
};

}  // namespace

std::vector<std::string> missingParts(const Formats::PageEffect& effect, const EffectSources& sources) {
  return Search(effect, sources).run();
}
