#include "effect/overlay/multi_overlay_context.h"

#include "effect/screen_scale.h"

namespace Kiln::XUL {

using namespace Effect;

SmartPtr<Image> MultiOverlayContext::thumbnail(const OverlayId& overlay) const {
  const auto list = widget<ListBox>(WidgetId::overlaySource);
  const float scale = screenScaleFactor(list ? list->nativeWindow() : NativeWindow());
  const std::u16string_view label = overlay.fileName;
  const auto ending = label.find(u".opa");
  const std::u16string path = store->pathOf(overlay);
  if (ending != label.npos && path != Value::none) {
    const auto bitmap = services.path(path)->folder()->join(std::u16string(label.substr(0, ending)) + u".bmp");
    if (const auto picture = services.scaledImage(bitmap->text(), {}, scale)) return picture;
  }
  return services.scaledImage(Address::missingThumbnail, {}, scale);
}

}  // namespace Kiln::XUL
