#include "check/plugin/tabs.h"

#include "formats/text.h"

#include <algorithm>
#include <set>

namespace Checking {
namespace {

constexpr std::u16string_view scheme = u"chrome://";

std::u16string number(long value) { return Formats::toUtf16(std::to_string(value)); }

std::u16string itemsOf(Refhost::SelectorNode& list) {
  std::u16string text;
  for (std::int32_t i = 0; i < list.items().count(); ++i) {
    const auto item = list.items().at(i);
    text += u"[" + item->displayedText().str() + u"=" + item->value().str() + u"]";
  }
  return text + u" " + number(list.selection());
}

std::u16string stateOf(Refhost::WidgetNode& widget) {
  std::u16string text = widget.isVisible() ? u"shown " : u"hidden ";
  text += widget.isEnabled() ? u"enabled " : u"disabled ";
  text += widget.shownLabel() + u" ";
  if (auto* toggle = dynamic_cast<Kiln::XUL::Toggle*>(&widget)) text += toggle->isChecked() ? u"checked" : u"unchecked";
  if (auto* list = dynamic_cast<Refhost::SelectorNode*>(&widget)) text += itemsOf(*list);
  if (auto* box = dynamic_cast<Refhost::TextBoxNode*>(&widget)) text += box->content();
  if (auto* bar = dynamic_cast<Refhost::ScrollBar*>(&widget)) text += number(bar->position());
  return text;
}

void forEachWidget(const Opening& opening, const std::function<void(Refhost::WidgetNode&)>& visit) {
  for (const Refhost::Layout& layout : opening.gui().tabs()) Refhost::walk(*layout.root, visit);
}

}  // namespace

std::vector<std::pair<std::u16string, std::u16string>> shownState(const Opening& opening) {
  std::vector<std::pair<std::u16string, std::u16string>> lines;
  forEachWidget(opening, [&lines](Refhost::WidgetNode& widget) { lines.emplace_back(widget.id(), stateOf(widget)); });
  return lines;
}

std::vector<std::u16string> widgetIds(const Opening& opening) {
  std::vector<std::u16string> ids;
  forEachWidget(opening, [&ids](Refhost::WidgetNode& widget) {
    if (!widget.id().empty() && widget.parent() != nullptr) ids.push_back(widget.id());
  });
  return ids;
}

std::vector<std::string> packagesOf(const Opening& opening) {
  std::set<std::string> packages;
  for (const std::u16string& address : opening.layouts()) {
    if (!address.starts_with(scheme)) continue;
    const std::u16string path = address.substr(scheme.size());
    packages.insert(Formats::toUtf8(path.substr(0, path.find(u'/'))));
  }
  return {packages.begin(), packages.end()};
}

std::vector<LayoutFile> layoutsOf(const Opening& opening, const Files::LayeredFolder& resources) {
  std::vector<LayoutFile> layouts;
  for (const std::string& package : packagesOf(opening))
    for (const auto& file : (resources / package / "content").entries())
      if (file.extension() == ".xul")
        layouts.push_back({Formats::toUtf16("chrome://" + package + "/content/") + file.filename().u16string(), file});
  std::ranges::sort(layouts, {}, &LayoutFile::address);
  return layouts;
}

}  // namespace Checking
