// The plug-in's PrintTicket conversion, which the host performs by the schema document. The schema has no option for
// multiple overlays: they are stored as the plain overlay option and recognised by their list of files.
#include "effect/effect_plugin.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// Runs `convert` with a multiple overlay selection replaced by the single one, and restores it afterwards, also when
// `convert` throws.
template <class Convert>
void withSingleOverlay(const SmartPtr<Property>& overlayImage, const Convert& convert) {
  if (!overlayImage || !overlayImage->equals(Value::multipleOverlayImage)) return convert();
  overlayImage->setValue(Value::overlayImage);
  try {
    convert();
  } catch (...) {
    overlayImage->setValue(Value::multipleOverlayImage);
    throw;
  }
  overlayImage->setValue(Value::multipleOverlayImage);
}

}  // namespace

SmartPtr<Dom::INode> EffectPlugin::getSchema() { return tickets->loadSchema(Address::ticketSchema); }

SmartPtr<Dom::INode> EffectPlugin::convertPMtoPT(Property& properties, PTLevel level) {
  const auto element = host().documents()->createElement(u"PrintTicket", u"psk", u"psk");
  withSingleOverlay(properties.child(Prop::overlayImage),
                    [&] { tickets->propertiesToTicket(*this, element, properties, level); });
  return element;
}

void EffectPlugin::convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& properties) {
  tickets->ticketToProperties(*this, std::move(ticket), properties);
  const auto overlayImage = properties.child(Prop::overlayImage);
  if (!overlayImage || !overlayImage->equals(Value::overlayImage)) return;
  const auto source = properties.child(Prop::overlaySourceFileName);
  if (source && source->narrowValue().view().find('$') != std::string_view::npos)
    overlayImage->setValue(Value::multipleOverlayImage);
}

}  // namespace Kiln::XUL
