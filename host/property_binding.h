// The host's own combo boxes: each is bound to the property in its layout attribute "property".
#pragma once

#include "host/chrome/layout.h"
#include "host/model/properties.h"

#include <functional>
#include <string>

namespace Refhost {

// Sets a property to the value that the user chose.
using SetProperty = std::function<void(const std::u16string& name, const std::u16string& value)>;

// Binds the layout's combo boxes. Throws std::runtime_error for a property that the model does not have.
void bindProperties(const Layout& layout, const PropertyModel& model, const SetProperty& set);

// Updates the bound combo boxes from the model; disables those with a single choice.
void showProperties(const Layout& layout, const PropertyModel& model);

}  // namespace Refhost
