// Texts in order, as plug-ins take them.
#pragma once

#include "kiln/services.h"

#include <string>
#include <vector>

namespace Refhost {

Kiln::SmartPtr<Kiln::Services::TextList> makeTextList(std::vector<std::u16string> texts);

}  // namespace Refhost
