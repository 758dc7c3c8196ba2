#include "host/chrome/layout.h"

#include "formats/text.h"
#include "host/documents/xml.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace Refhost {
namespace {

constexpr std::string_view xulNamespace = "http://www.mozilla.org/keymaster/gatekeeper/there.is.only.xul";

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
    const XmlElement& element = tree.element;
    if (element.nameSpace != xulNamespace) fail(element, "the root is not in the XUL namespace.");
    Layout layout;
    if (element.name == "tabpanel") {
      layout.root = make<Container>(world, WidgetKind::tab, idOf(element));
      initialise(*layout.root, element, "label");
    } else if (element.name == "dialog") {
      layout.root = make<Container>(world, WidgetKind::box, idOf(element));
      initialise(*layout.root, element, "");
      layout.title = textOf(element, "title");
      layout.acceptButton = button(element, "accept", "$IDS_OK;");
      layout.cancelButton = button(element, "cancel", "$IDS_CANCEL;");
    } else {
      fail(element, "the root is a <" + element.name + ">, not a <tabpanel> or a <dialog>.");
    }
    readChildren(tree, *layout.root);
    return layout;
  }

 private:
  [[noreturn]] void fail(const XmlElement& element, std::string_view what) const {
    throw std::runtime_error(located(source, element.line, what));
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
    auto* selector = dynamic_cast<SelectorNode*>(&parent);
    if (selector == nullptr) fail(element, "an item stands outside a list.");
    selector->items().append(textOf(element, "label"), textOf(element, "value"));
    selector->startWithFirst();
  }

  // The context menu of the enclosing widget.
  void readMenu(const XmlTree& tree, WidgetNode& parent) {
    auto* image = dynamic_cast<ImageBox*>(&parent);
    if (image == nullptr) fail(tree.element, "a <menupopup> stands outside an <image>.");
    for (const XmlTree& item : tree.children) {
      if (item.element.name != "menuitem") fail(item.element, "a <menupopup> has entries that are no <menuitem>.");
      image->addMenuItem({textOf(item.element, "value"), textOf(item.element, "label")});
    }
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
    if (kind == std::end(elementKinds)) fail(element, "<" + element.name + "> is not known here.");
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
