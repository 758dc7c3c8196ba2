#include "effect/overlay/ovl_thumbnail.h"

namespace Kiln::XUL {

void OvlThumbnail::setLabel(const Effect::OverlayId& id, SmartPtr<Image> picture) {
  overlay = id;
  occupied = true;
  if (image) image->setImage(std::move(picture));
}

void OvlThumbnail::clear() {
  overlay = {};
  rule.clear();
  occupied = false;
  if (image) image->setResource(Effect::blankBitmap);
}

}  // namespace Kiln::XUL
