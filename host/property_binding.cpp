#include "host/property_binding.h"

#include "formats/text.h"

#include <stdexcept>

namespace Refhost {
namespace {

// Calls `visit` for each bound combo box with the property's name.
void forEachBound(const Layout& layout, const std::function<void(ComboBox&, const std::u16string&)>& visit) {
  walk(*layout.root, [&visit](WidgetNode& widget) {
    const auto property = widget.attribute("property");
    auto* box = dynamic_cast<ComboBox*>(&widget);
    if (box != nullptr && !property.empty()) visit(*box, property);
  });
}

}  // namespace

void bindProperties(const Layout& layout, const PropertyModel& model, const SetProperty& set) {
  forEachBound(layout, [&](ComboBox& box, const std::u16string& property) {
    if (!model.isKnown(property))
      throw std::runtime_error("A combo box is bound to " + Formats::toUtf8(property) +
                               ", which the model does not have.");
    box.onChoice([set, property](const std::u16string& value) { set(property, value); });
  });
}

void showProperties(const Layout& layout, const PropertyModel& model) {
  forEachBound(layout, [&](ComboBox& box, const std::u16string& property) {
    std::int32_t available = 0;
    for (std::int32_t i = 0; i < box.items().count(); ++i)
      if (model.allows(property, box.items().at(i)->value().view())) ++available;
    box.show(*model.value(property), available > 1);
  });
}

}  // namespace Refhost
