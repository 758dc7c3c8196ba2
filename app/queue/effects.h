// The effects of the tab that a queue can offer to its jobs.
#pragma once

#include "app/queue/description.h"
#include "formats/names.h"
#include "formats/text.h"

#include <iterator>
#include <string>
#include <vector>

namespace App {

struct OfferedEffect {
  // The property that has to be allowed, and its value while the effect is on.
  Formats::Name property;
  Formats::Name on;

  // The widgets whose labels name the effect, and the mark that it is a detail of, if any; and that mark's property.
  Formats::Name widget;
  Formats::Name group = {};
  Formats::Name of = {};

  // Of marks: the list of them, the property with the chosen one, and the one with what it is called.
  Formats::Name list = {};
  Formats::Name selection = {};
  Formats::Name text = {};
};

// In the order in which dialogs show them. docs/adding-an-effect.md: page effects follow from their row.
inline std::vector<OfferedEffect> offeredEffects() {
  namespace Prop = Formats::Prop;
  namespace Id = Formats::WidgetId;
  namespace Value = Formats::Value;
  std::vector<OfferedEffect> effects = {{.property = Prop::watermark,
                                         .on = Value::watermark,
                                         .widget = Id::watermarkCaption,
                                         .list = Id::watermarkList,
                                         .selection = Prop::watermarkSel,
                                         .text = Prop::watermarkText},
                                        {.property = Prop::firstPageOnly,
                                         .on = Value::yes,
                                         .widget = Id::watermarkFirstPage,
                                         .group = Id::watermarkCaption,
                                         .of = Prop::watermark},
                                        {.property = Prop::overlayImage,
                                         .on = Value::overlayImage,
                                         .widget = Id::overlayCaption,
                                         .list = Id::overlayList,
                                         .selection = Prop::overlaySel,
                                         .text = Prop::overlayName},
                                        {.property = Prop::overlayLayering,
                                         .on = Value::overlay,
                                         .widget = Id::overlayLayering,
                                         .group = Id::overlayCaption,
                                         .of = Prop::overlayImage}};
  for (const Formats::PageEffect& effect : Formats::PageEffects::all)
    effects.push_back({.property = effect.property, .on = effect.on, .widget = effect.box});
  return effects;
}

// The option of a description: "kilnMirrorImage" for example.
inline std::string optionOf(Formats::Name property) { return std::string(optionPrefix) + Formats::toUtf8(property); }

}  // namespace App
