// The host as the sides of the tab use it.
#pragma once

#include "effect/vocabulary.h"
#include "kiln/gui.h"
#include "kiln/host.h"
#include "kiln/property.h"

#include <initializer_list>
#include <string>
#include <utility>

namespace Kiln::XUL {

struct TabHost {
  using Pairs = std::initializer_list<std::pair<Effect::Name, Effect::Name>>;

  Host& services;
  PropertyManager properties;
  SmartPtr<GUI> preferences;  // empty until the host shows the tab

  // Sends property/value pairs to the host as one transition.
  void send(Pairs pairs) const;

  // A property's value; empty when the model has no such property.
  WString propertyValue(Effect::Name property) const;

  // Whether a property of the model has exactly this value.
  bool propertyIs(Effect::Name property, Effect::Name value) const;

  // Whether the host locks the property against changes by the user.
  bool isLocked(Effect::Name property) const;

  std::string uiMode() const;

  // The tab's widget with that id and type; empty when the layout has none.
  template <class Kind>
  SmartPtr<Kind> widget(Effect::Name id) const {
    return smartCast<Kind>(preferences->widgetById(id));
  }
};

}  // namespace Kiln::XUL
