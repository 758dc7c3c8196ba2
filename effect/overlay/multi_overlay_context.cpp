#include "effect/overlay/multi_overlay_context.h"

namespace Kiln::XUL {

using namespace Effect;

SmartPtr<Image> MultiOverlayContext::thumbnail(std::u16string_view label, bool isDownloaded) const {
  const auto ending = label.find(u".opa");
  const std::u16string path = store.pathOf(label, isDownloaded);
  if (ending != label.npos && path != Value::none) {
    const auto bitmap = services.path(path)->folder()->join(std::u16string(label.substr(0, ending)) + u".bmp");
    if (const auto picture = services.image(bitmap->text(), {})) return picture;
  }
  return services.image(Address::missingThumbnail, {});
}

}  // namespace Kiln::XUL
