// The preview of a text watermark: stores the values that faces draw.
#pragma once

#include "host/widgets/widget.h"

namespace Refhost {

// The previewed watermark, in the units of Kiln::XUL::WMPreview.
struct PreviewedWatermark {
  std::u16string text;
  std::u16string colour = u"#000000";
  std::u16string position = u"CC";
  std::int32_t rotation = 0;
  std::u16string face;
  bool bold = false;
  bool italic = false;
  double size = 0;
  double opacity = 1;
};

class WatermarkPreview final : public WidgetImpl<Kiln::XUL::WMPreview> {
 public:
  using WidgetImpl::WidgetImpl;

  const PreviewedWatermark& watermark() const { return shown; }

  void setText(Kiln::WStringView text) override { take("text", shown.text, text.view()); }
  void setColour(Kiln::WStringView colour) override { take("colour", shown.colour, colour.view()); }
  void setPosition(Kiln::WStringView code) override { take("position", shown.position, code.view()); }
  void setRotation(std::int32_t degrees) override;
  void setFontFace(Kiln::WStringView face) override { take("face", shown.face, face.view()); }
  void setBold(bool bold) override;
  void setItalic(bool italic) override;
  void setFontSize(double points) override;
  void setOpacity(double opacity) override;

 private:
  void take(std::string_view what, std::u16string& target, std::u16string_view value);
  void tell(std::string_view what, TraceValue value);

  PreviewedWatermark shown;
};

}  // namespace Refhost
