#include "host/model/settings.h"

#include "formats/names.h"
#include "formats/text.h"

namespace Refhost {

bool readsAsTrue(std::u16string_view value) {
  return value == Formats::Value::yes || value == Formats::Value::customisationTrue || value == u"1";
}

Kiln::String PlainProperty::narrowValue() { return text(Formats::toUtf8(value)); }

std::optional<std::u16string> Settings::get(std::u16string_view key) const {
  const auto found = values.find(key);
  if (found == values.end()) return {};
  return std::u16string(found->second->wideValue().view());
}

void Settings::set(std::u16string_view key, std::u16string_view value) {
  values.insert_or_assign(std::u16string(key), make<PlainProperty>(value));
}

void Settings::remove(std::u16string_view key) {
  const auto found = values.find(key);
  if (found != values.end()) values.erase(found);
}

void Settings::setValue(Kiln::WStringView) { throw failure("The root of the settings has no value."); }

Kiln::SmartPtr<Kiln::Property> Settings::child(Kiln::WStringView key) {
  const auto found = values.find(key.view());
  return found == values.end() ? Kiln::SmartPtr<Kiln::Property>() : Kiln::SmartPtr<Kiln::Property>(found->second);
}

}  // namespace Refhost
