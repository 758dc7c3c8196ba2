#include "host/chrome/layout.h"

#include "formats/text.h"
#include "host/chrome/strings.h"
#include "host/documents/xml.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <stdexcept>

namespace Refhost {
namespace {

constexpr std::string_view containers = "tabpanel dialog vbox hbox groupbox radiogroup";
constexpr std::string_view ofWidgets = "id hidden disabled flex width height tooltiptext";

constexpr ElementFormat layoutElements[] = {
    {"tabpanel", "", "label orient align pack", ofWidgets},
    {"dialog", "", "title buttons buttonlabelaccept buttonlabelcancel defaultbutton orient align pack", ofWidgets},
    {"vbox", containers, "align pack dir", ofWidgets},
    {"hbox", containers, "align pack dir", ofWidgets},
    {"groupbox", containers, "align pack label", ofWidgets},
    {"spacer", containers, "", ofWidgets},
    {"caption", containers, "label accesskey control align", ofWidgets},
    {"label", containers, "value accesskey control align", ofWidgets},
    {"description", containers, "value accesskey control align", ofWidgets},
    {"image", containers, "src label droptarget", ofWidgets},
    {"button", containers, "label accesskey dlgtype", ofWidgets},
    {"checkbox", containers, "label accesskey checked", ofWidgets},
    {"listbox", containers, "label rows iconsize draggable", ofWidgets},
    {"menulist", containers, "label property fontpreview preview", ofWidgets},
    {"radiogroup", containers, "orient align pack", ofWidgets},
    {"radio", containers, "label accesskey selected", ofWidgets},
    {"textbox", containers, "label value type maxlength min max increment", ofWidgets},
    {"scrollbar", containers, "label orient minpos maxpos curpos shownfrom", ofWidgets},
    {"colorpicker", containers, "label accesskey list", ofWidgets},
    {"wmpreview", containers, "label outlined places turned", ofWidgets},
    {"listitem", "listbox", "label value"},
    {"menuitem", "menulist menupopup", "label value"},
    {"menupopup", "image", ""},
};

struct ElementKind {
  std::string_view element;
  WidgetKind kind;
  std::string_view labelAttribute;  // the attribute with the displayed text
};

constexpr ElementKind elementKinds[] = {
    {"vbox", WidgetKind::box, ""},
    {"hbox", WidgetKind::box, ""},
    {"groupbox", WidgetKind::groupBox, ""},
    {"spacer", WidgetKind::spacer, ""},
    {"caption", WidgetKind::label, "label"},
    {"label", WidgetKind::label, "value"},
    {"description", WidgetKind::label, "value"},
    {"image", WidgetKind::image, ""},
    {"button", WidgetKind::button, "label"},
    {"checkbox", WidgetKind::checkBox, "label"},
    {"listbox", WidgetKind::listBox, ""},
    {"menulist", WidgetKind::comboBox, ""},
    {"radiogroup", WidgetKind::box, ""},
    {"radio", WidgetKind::radioButton, "label"},
    {"textbox", WidgetKind::textBox, ""},
    {"scrollbar", WidgetKind::scrollBar, ""},
    {"colorpicker", WidgetKind::colorPicker, "label"},
    {"wmpreview", WidgetKind::preview, ""},
};

bool isItem(std::string_view element) { return element == "listitem" || element == "menuitem"; }

// Reads one layout; rejects unknown content with its position.
class Reader {
 public:
  Reader(std::string sourceName, WidgetWorld& widgetWorld, const std::set<std::u16string, std::less<>>& without)
      : source(std::move(sourceName)),
        world(widgetWorld),
        omitted(without) {}

  Layout read(const XmlTree& tree) {
    demandFormat(layoutFormat, tree, source);
    demandValues(tree);
    const XmlElement& element = tree.element;
    Layout layout;
    if (element.name == "tabpanel") {
      layout.root = make<Container>(world, WidgetKind::tab, idOf(element));
      initialise(*layout.root, element, "label");
    } else {
      layout.root = make<Container>(world, WidgetKind::box, idOf(element));
      initialise(*layout.root, element, "");
      layout.title = textOf(element, "title");
      layout.acceptButton = button(element, "accept", "$IDS_OK;");
      layout.cancelButton = button(element, "cancel", "$IDS_CANCEL;");
      layout.isCancelDefault = textOf(element, "defaultbutton") == u"cancel";
    }
    readChildren(tree, *layout.root);
    return layout;
  }

 private:
  [[noreturn]] void fail(const XmlElement& element, std::string_view what) const {
    throw std::runtime_error(located(source, element.line, what));
  }

  // Rejects references to texts that there are not, and values that nothing reads.
  void demandValues(const XmlTree& tree) const {
    const XmlElement& element = tree.element;
    for (const char* number : {"flex", "width", "height", "rows", "iconsize"}) numberOf(element, number, 0);
    for (const char* name : {"draggable", "droptarget", "fontpreview"}) flag(element, name);
    demandOneOf(element, "align", {"start", "center", "end"});
    demandOneOf(element, "pack", {"start", "center", "end"});
    demandOneOf(element, "orient", {"horizontal", "vertical"});
    demandOneOf(element, "type", {"integer"});
    demandOneOf(element, "dlgtype", {"extra1", "help"});
    demandOneOf(element, "defaultbutton", {"accept", "cancel"});
    for (const XmlAttribute& attribute : element.attributes)
      if (attribute.value.starts_with("$IDS_") && !world.strings.has(Formats::toUtf16(attribute.value)))
        fail(element,
             attribute.name + " is " + attribute.value + ", which " + world.strings.locale() + " has no text for.");
    for (const XmlTree& child : tree.children) demandValues(child);
  }

  void demandOneOf(const XmlElement& element, std::string_view attribute,
                   std::initializer_list<std::string_view> values) const {
    const std::string* value = element.find(attribute);
    if (value == nullptr || std::find(values.begin(), values.end(), *value) != values.end()) return;
    std::string known;
    for (const std::string_view each : values) known += (known.empty() ? "\"" : ", \"") + std::string(each) + '"';
    fail(element, std::string(attribute) + " is \"" + *value + "\", and may be " + known + ".");
  }

  static std::u16string textOf(const XmlElement& element, std::string_view attribute) {
    const std::string* value = element.find(attribute);
    return value == nullptr ? std::u16string() : Formats::toUtf16(*value);
  }

  std::u16string idOf(const XmlElement& element) {
    auto id = textOf(element, "id");
    if (!id.empty() && !ids.insert(id).second) fail(element, "the id " + Formats::toUtf8(id) + " is used twice.");
    return id;
  }

  bool flag(const XmlElement& element, std::string_view attribute) const {
    const std::string* value = element.find(attribute);
    if (value == nullptr || *value == "false") return false;
    if (*value != "true") fail(element, std::string(attribute) + " is neither \"true\" nor \"false\".");
    return true;
  }

  Kiln::SmartPtr<Button> button(const XmlElement& dialog, const std::string& name, const std::string& standardLabel) {
    auto made = make<Button>(world, WidgetKind::button, Formats::toUtf16(name));
    const std::string* label = dialog.find("buttonlabel" + name);
    const std::string buttons = dialog.find("buttons") == nullptr ? "accept,cancel" : *dialog.find("buttons");
    made->initialise(buttons.find(name) != buttons.npos, true,
                     Formats::toUtf16(label == nullptr ? standardLabel : *label));
    return made;
  }

  void initialise(WidgetNode& widget, const XmlElement& element, std::string_view labelAttribute) {
    widget.initialise(!flag(element, "hidden"), !flag(element, "disabled"),
                      labelAttribute.empty() ? std::u16string() : textOf(element, labelAttribute));
    for (const XmlAttribute& attribute : element.attributes)
      widget.setAttribute(attribute.name, Formats::toUtf16(attribute.value));
  }

  void readChildren(const XmlTree& tree, WidgetNode& parent) {
    for (const XmlTree& child : tree.children) {
      if (isItem(child.element.name)) {
        readItem(child.element, parent);
      } else if (child.element.name == "menupopup") {
        readMenu(child, parent);
      } else {
        readWidget(child, parent);
      }
    }
  }

  void readItem(const XmlElement& element, WidgetNode& parent) {
    auto& selector = dynamic_cast<SelectorNode&>(parent);
    selector.items().append(textOf(element, "label"), textOf(element, "value"));
    selector.startWithFirst();
  }

  // The context menu of the enclosing widget.
  void readMenu(const XmlTree& tree, WidgetNode& parent) {
    auto& image = dynamic_cast<ImageBox&>(parent);
    for (const XmlTree& item : tree.children)
      image.addMenuItem({textOf(item.element, "value"), textOf(item.element, "label")});
  }

  std::int32_t numberOf(const XmlElement& element, std::string_view attribute, std::int32_t otherwise) const {
    const std::string* value = element.find(attribute);
    if (value == nullptr) return otherwise;
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(value->data(), value->data() + value->size(), number);
    if (error != std::errc() || end != value->data() + value->size())
      fail(element, std::string(attribute) + " is no whole number.");
    return number;
  }

  std::optional<NumberRange> rangeOf(const XmlElement& element) const {
    if (element.find("min") == nullptr && element.find("max") == nullptr) return {};
    const NumberRange range{numberOf(element, "min", 0), numberOf(element, "max", 0),
                            numberOf(element, "increment", 1)};
    if (range.least > range.most || range.step < 1) fail(element, "min, max and increment are no range.");
    return range;
  }

  // Sets the initial state specific to the widget's kind.
  void start(WidgetNode& widget, const XmlElement& element) {
    if (auto* box = dynamic_cast<CheckBox*>(&widget)) box->startChecked(flag(element, "checked"));
    if (auto* radio = dynamic_cast<RadioButton*>(&widget)) radio->startChecked(flag(element, "selected"));
    if (auto* bar = dynamic_cast<ScrollBar*>(&widget))
      bar->start(numberOf(element, "minpos", 0), numberOf(element, "maxpos", 100), numberOf(element, "curpos", 0));
    if (auto* box = dynamic_cast<TextBoxNode*>(&widget)) {
      const std::int32_t limit = numberOf(element, "maxlength", -1);
      box->start(textOf(element, "value"), limit < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(limit)),
                 rangeOf(element));
    }
  }

  void readWidget(const XmlTree& tree, WidgetNode& parent) {
    const XmlElement& element = tree.element;
    const auto* kind = std::find_if(std::begin(elementKinds), std::end(elementKinds),
                                    [&element](const auto& entry) { return entry.element == element.name; });
    if (kind == std::end(elementKinds)) fail(element, "<" + element.name + "> is no widget.");
    if (omitted.contains(textOf(element, "id"))) {
      const bool isBox = kind->kind == WidgetKind::box || kind->kind == WidgetKind::groupBox;
      if (isBox) readChildren(tree, parent);
      return;
    }
    ElementKind made = *kind;
    if (made.kind == WidgetKind::textBox && textOf(element, "type") == u"integer")
      made.kind = WidgetKind::integerTextBox;
    WidgetNode& widget = addKind(made, idOf(element), parent);
    initialise(widget, element, kind->labelAttribute);
    widget.setAttribute("element", Formats::toUtf16(element.name));
    start(widget, element);
    readChildren(tree, widget);
  }

  template <class T>
  WidgetNode& add(const ElementKind& kind, const std::u16string& id, WidgetNode& parent) {
    const auto widget = make<T>(world, kind.kind, id);
    parent.adopt(*widget);
    return *widget;
  }

  WidgetNode& addKind(const ElementKind& kind, const std::u16string& id, WidgetNode& parent) {
    switch (kind.kind) {
      case WidgetKind::label: return add<Label>(kind, id, parent);
      case WidgetKind::image: return add<ImageBox>(kind, id, parent);
      case WidgetKind::button: return add<Button>(kind, id, parent);
      case WidgetKind::checkBox: return add<CheckBox>(kind, id, parent);
      case WidgetKind::listBox: return add<ListBox>(kind, id, parent);
      case WidgetKind::comboBox: return add<ComboBox>(kind, id, parent);
      case WidgetKind::radioButton: return add<RadioButton>(kind, id, parent);
      case WidgetKind::textBox: return add<TextBox>(kind, id, parent);
      case WidgetKind::integerTextBox: return add<IntegerTextBox>(kind, id, parent);
      case WidgetKind::scrollBar: return add<ScrollBar>(kind, id, parent);
      case WidgetKind::colorPicker: return add<ColorPicker>(kind, id, parent);
      case WidgetKind::preview: return add<WatermarkPreview>(kind, id, parent);
      default: return add<Container>(kind, id, parent);
    }
  }

  std::string source;
  WidgetWorld& world;
  const std::set<std::u16string, std::less<>>& omitted;
  std::set<std::u16string> ids;
};

}  // namespace

constinit const DocumentFormat layoutFormat{"http://www.mozilla.org/keymaster/gatekeeper/there.is.only.xul",
                                            layoutElements};

void walk(WidgetNode& root, const std::function<void(WidgetNode&)>& visit) {
  visit(root);
  for (WidgetNode* child : root.children()) walk(*child, visit);
}

WidgetNode* Layout::find(std::u16string_view id) const {
  WidgetNode* found = nullptr;
  walk(*root, [&](WidgetNode& widget) {
    if (found == nullptr && widget.id() == id) found = &widget;
  });
  return found;
}

LayoutReader::LayoutReader(const ChromeFolders& chromeFolders, std::set<std::u16string, std::less<>> without)
    : folders(chromeFolders),
      omitted(std::move(without)) {}

Layout LayoutReader::read(std::u16string_view url, WidgetWorld& world) const {
  const auto file = folders.file(url);
  if (!file) throw std::runtime_error(Formats::toUtf8(url) + " is no address of a layout.");
  return Reader(file->string(), world, omitted).read(readXmlTree(*file, XmlLimits()));
}

}  // namespace Refhost
