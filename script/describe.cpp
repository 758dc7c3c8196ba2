#include "script/describe.h"

#include "formats/text.h"
#include "host/reference_host.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>

namespace Script {
namespace {

using Refhost::WidgetKind;
using Refhost::WidgetNode;

// Whether the widget and its ancestors are enabled, visible or not.
bool isEnabled(const WidgetNode& widget) {
  const WidgetNode* parent = widget.parent();
  return widget.isEnabled() && (parent == nullptr || isEnabled(*parent));
}

bool hasLabel(WidgetKind kind) {
  switch (kind) {
    case WidgetKind::tab:
    case WidgetKind::label:
    case WidgetKind::button:
    case WidgetKind::checkBox:
    case WidgetKind::radioButton:
    case WidgetKind::colorPicker: return true;
    default: return false;
  }
}

Json textOrNull(std::u16string_view wide) { return wide.empty() ? Json(nullptr) : text(wide); }

// The height in a bitmap file's header, negative for top-down rows; null for other files.
Json heightOf(const std::filesystem::path& bitmap) {
  std::array<char, 26> header = {};
  std::ifstream file(bitmap, std::ios::binary);
  if (!file.read(header.data(), header.size()) || header[0] != 'B' || header[1] != 'M') return nullptr;
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < 4; ++i) bits |= std::uint32_t{static_cast<unsigned char>(header[22 + i])} << (8 * i);
  return std::abs(std::int64_t{static_cast<std::int32_t>(bits)});
}

Json sideOf(const Kiln::XUL::Image* picture) {
  const auto* image = dynamic_cast<const Refhost::Image*>(picture);
  if (image == nullptr) return nullptr;
  return image->height > 0 ? Json(image->height) : heightOf(image->file);
}

// The address or file of a picture; empty for none, and for a swatch.
std::u16string sourceOf(const Kiln::XUL::Image* picture) {
  const auto* image = dynamic_cast<const Refhost::Image*>(picture);
  if (image == nullptr) return {};
  return image->source.starts_with(u"chrome://") ? image->source : image->file.generic_u16string();
}

std::u16string shownImage(const Refhost::ImageBox& box) {
  if (box.image()) return sourceOf(box.image().get());
  return box.resource().empty() ? box.attribute("src") : box.resource();
}

Json describeItem(Kiln::XUL::ListItem& item) {
  const auto* own = dynamic_cast<const Refhost::ListItem*>(&item);
  const auto icon = item.image();
  return {{"text", text(item.text().view())},
          {"shown", text(item.displayedText().view())},
          {"value", text(item.value().view())},
          {"colour", own == nullptr ? Json(nullptr) : textOrNull(own->colour())},
          {"icon", bool(icon)},
          {"side", sideOf(icon.get())},
          {"mark", item.isMarked()},
          {"flag", item.flag()}};
}

Json describeItems(Kiln::XUL::ListData& items) {
  Json list = Json::array();
  for (std::int32_t i = 0; i < items.count(); ++i) list.push_back(describeItem(*items.at(i)));
  return list;
}

// Writes integers, such as ids and positions, without a fraction.
Json number(double value) {
  const bool isWhole = std::nearbyint(value) == value && std::abs(value) < 1e15;
  return isWhole ? Json(static_cast<std::int64_t>(value)) : Json(value);
}

struct ValueWriter {
  Json operator()(const std::u16string& value) const { return text(value); }
  Json operator()(bool value) const { return value; }
  Json operator()(double value) const { return number(value); }
  Json operator()(const Refhost::TracePairs& pairs) const {
    Json list = Json::array();
    for (const auto& [name, value] : pairs) list.push_back(Json::array({text(name), text(value)}));
    return list;
  }
};

}  // namespace

Json describe(WidgetNode& widget) {
  Json members = {
      {"kind", Refhost::nameOf(widget.kind())}, {"visible", widget.isShown()}, {"enabled", isEnabled(widget)}};
  if (hasLabel(widget.kind())) {
    members["label"] = text(widget.label());
    members["shown"] = text(widget.shownLabel());
  }
  if (auto* toggle = dynamic_cast<Kiln::XUL::Toggle*>(&widget.asWidget())) members["checked"] = toggle->isChecked();
  if (auto* selector = dynamic_cast<Refhost::SelectorNode*>(&widget)) {
    members["selected"] = selector->selection();
    members["items"] = describeItems(selector->items());
  }
  if (auto* box = dynamic_cast<Refhost::TextBoxNode*>(&widget)) {
    members["text"] = text(box->content());
    members["maxLength"] = box->maximumLength() ? Json(*box->maximumLength()) : Json(nullptr);
  }
  if (auto* bar = dynamic_cast<Refhost::ScrollBar*>(&widget)) members["position"] = bar->position();
  if (auto* label = dynamic_cast<Refhost::Label*>(&widget))
    members["image"] = textOrNull(sourceOf(label->image().get()));
  if (auto* box = dynamic_cast<Refhost::ImageBox*>(&widget)) members["image"] = textOrNull(shownImage(*box));
  return members;
}

Json describe(const Refhost::TraceEvent& event) {
  Json members = {{"op", event.op}};
  for (const auto& [name, value] : event.members) members[name] = describe(value);
  return members;
}

Json describe(const Refhost::TraceValue& value) { return std::visit(ValueWriter(), value); }

Json describe(const Refhost::TracePairs& values) {
  Json members = Json::object();
  for (const auto& [name, value] : values) members[Formats::toUtf8(name)] = text(value);
  return members;
}

}  // namespace Script
