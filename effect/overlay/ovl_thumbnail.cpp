#include "effect/overlay/ovl_thumbnail.h"

#include "effect/vocabulary.h"

namespace Kiln::XUL {

void OvlThumbnail::setLabel(std::u16string_view label, bool isDownloaded, SmartPtr<Image> picture) {
  fileName = label;
  downloaded = isDownloaded;
  occupied = true;
  if (image) image->setImage(std::move(picture));
}

void OvlThumbnail::clear() {
  fileName.clear();
  rule.clear();
  downloaded = occupied = false;
  if (image) image->setResource(Effect::blankBitmap);
}

}  // namespace Kiln::XUL
