// One slot of the dialog for several overlays: the overlay in it, the pages that it is printed on, and its picture.
#pragma once

#include "effect/overlay/overlays.h"
#include "kiln/widgets.h"

#include <string>
#include <string_view>

namespace Kiln::XUL {

class OvlThumbnail {
 public:
  // The picture box in the dialog; empty when the layout has none.
  void bind(SmartPtr<ImageBox> box) { image = std::move(box); }

  // The overlay's file name; empty while the slot is free.
  const std::u16string& label() const { return overlay.fileName; }

  // The overlay's record; overlays of several folders may share a file name.
  const Effect::OverlayId& id() const { return overlay; }

  // The rule; empty for none. The user may choose one before the slot has an overlay.
  const std::u16string& pages() const { return rule; }
  void setPages(std::u16string_view pages) { rule = pages; }

  bool isOccupied() const { return occupied; }

  // Puts an overlay into the slot and shows its picture, which may be empty. Keeps the rule.
  void setLabel(const Effect::OverlayId& id, SmartPtr<Image> picture);

  // Frees the slot: no overlay, no rule, the blank page.
  void clear();

 private:
  Effect::OverlayId overlay;
  std::u16string rule;
  SmartPtr<ImageBox> image;
  bool occupied = false;
};

}  // namespace Kiln::XUL
