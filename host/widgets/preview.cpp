#include "host/widgets/preview.h"

namespace Refhost {

void WatermarkPreview::setRotation(std::int32_t degrees) {
  shown.rotation = degrees;
  tell("rotation", double(degrees));
}

void WatermarkPreview::setBold(bool bold) {
  shown.bold = bold;
  tell("bold", bold);
}

void WatermarkPreview::setItalic(bool italic) {
  shown.italic = italic;
  tell("italic", italic);
}

void WatermarkPreview::setFontSize(double points) {
  shown.size = points;
  tell("size", points);
}

void WatermarkPreview::setOpacity(double opacity) {
  shown.opacity = opacity;
  tell("opacity", opacity);
}

void WatermarkPreview::take(std::string_view what, std::u16string& target, std::u16string_view value) {
  target = value;
  tell(what, target);
}

void WatermarkPreview::tell(std::string_view what, TraceValue value) {
  world.trace.record({"preview", {{"set", std::u16string(what.begin(), what.end())}, {"value", std::move(value)}}});
  changed();
}

}  // namespace Refhost
