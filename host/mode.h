// How a host opens a plug-in.
#pragma once

#include "formats/names.h"

#include <string_view>

namespace Refhost {

enum class Mode { docProp, pdc, prePrint, rootless };

// The mode's name in scripts, which plug-ins are told too, unless it is rootless.
constexpr std::string_view nameOf(Mode mode) {
  switch (mode) {
    case Mode::docProp: return Formats::modeDocProp;
    case Mode::pdc: return Formats::modePDC;
    case Mode::prePrint: return Formats::modePrePrint;
    case Mode::rootless: break;
  }
  return "rootless";
}

}  // namespace Refhost
