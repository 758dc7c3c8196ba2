// Lists of texts for plug-ins.
#pragma once

#include "kiln/services.h"

#include <string>
#include <vector>

namespace Refhost {

Kiln::SmartPtr<Kiln::Services::TextList> makeTextList(std::vector<std::u16string> texts);

}  // namespace Refhost
