#include "effect/tab_host.h"

namespace Kiln::XUL {

using namespace Effect;

void TabHost::send(Pairs pairs) const {
  const auto* pair = pairs.begin();
  const auto transition = properties->transition(pair->first, pair->second);
  while (++pair != pairs.end()) transition->add(pair->first, pair->second);
  properties->submit(transition);
}

WString TabHost::propertyValue(Name property) const {
  const auto found = properties->modelProperties()->child(property);
  return found ? found->wideValue() : WString();
}

bool TabHost::propertyIs(Name property, Name value) const { return propertyValue(property).view() == value; }

bool TabHost::isLocked(Name property) const {
  const auto locked = services.attributeNames(lockAttribute);
  for (std::int32_t i = 0; i < locked->count(); ++i)
    if (locked->at(i).view() == property) return true;
  return false;
}

std::string TabHost::uiMode() const {
  const auto mode = properties->configuration()->child(Setting::uiMode);
  return mode ? mode->narrowValue().str() : std::string();
}

}  // namespace Kiln::XUL
