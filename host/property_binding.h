// The host's own combo boxes: each shows one property and sets it, as its layout's attribute "property" says.
#pragma once

#include "host/chrome/layout.h"
#include "host/model/properties.h"

#include <functional>
#include <string>

namespace Refhost {

// Gives a property the value that the user chose.
using SetProperty = std::function<void(const std::u16string& name, const std::u16string& value)>;

// Binds the layout's combo boxes. Throws std::runtime_error when one names a property that the model does not have.
void bindProperties(const Layout& layout, const PropertyModel& model, const SetProperty& set);

// Brings the bound combo boxes into line with the model: the value it has, and no choice where there is only one.
void showProperties(const Layout& layout, const PropertyModel& model);

}  // namespace Refhost
