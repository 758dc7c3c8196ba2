// One slot of the dialog for several overlays: the overlay in it, the pages that it is printed on, and its picture.
#pragma once

#include "kiln/widgets.h"

#include <string>
#include <string_view>

namespace Kiln::XUL {

class OvlThumbnail {
 public:
  // The picture box in the dialog; empty when the layout has none.
  void bind(SmartPtr<ImageBox> box) { image = std::move(box); }

  // The overlay's file name; empty while the slot is free.
  const std::u16string& label() const { return fileName; }

  // Whether it is the downloaded overlay with that file name, not the user's own.
  bool isDownloaded() const { return downloaded; }

  // The rule; empty for none. The user may choose one before the slot has an overlay.
  const std::u16string& pages() const { return rule; }
  void setPages(std::u16string_view pages) { rule = pages; }

  bool isOccupied() const { return occupied; }

  // Puts an overlay into the slot and shows its picture, which may be empty. Keeps the rule.
  void setLabel(std::u16string_view label, bool isDownloaded, SmartPtr<Image> picture);

  // Frees the slot: no overlay, no rule, the blank page.
  void clear();

 private:
  std::u16string fileName;
  std::u16string rule;
  SmartPtr<ImageBox> image;
  bool downloaded = false;
  bool occupied = false;
};

}  // namespace Kiln::XUL
