// Settings by key: the host's configuration and the XML customisation.
#pragma once

#include "host/object.h"
#include "kiln/property.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// Whether a value is true: "True", "true" or "1".
bool readsAsTrue(std::u16string_view value);

// A property without children, for settings and event arguments.
class PlainProperty final : public Kiln::Property {
 public:
  explicit PlainProperty(std::u16string_view startValue) : value(startValue) {}

  Kiln::String narrowValue() override;
  Kiln::WString wideValue() override { return text(value); }
  bool boolValue() override { return readsAsTrue(value); }
  bool equals(Kiln::WStringView other) override { return value == other.view(); }
  void setValue(Kiln::WStringView newValue) override { value = newValue.view(); }
  bool hasChild(Kiln::WStringView) override { return false; }
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView) override { return {}; }

 private:
  std::u16string value;
};

// A root of settings by key.
class Settings final : public Kiln::Property {
 public:
  // Nothing when the key does not exist.
  std::optional<std::u16string> get(std::u16string_view key) const;
  void set(std::u16string_view key, std::u16string_view value);
  void remove(std::u16string_view key);

  Kiln::String narrowValue() override { return {}; }
  Kiln::WString wideValue() override { return {}; }
  bool boolValue() override { return false; }
  bool equals(Kiln::WStringView other) override { return other.size() == 0; }
  void setValue(Kiln::WStringView value) override;
  bool hasChild(Kiln::WStringView key) override { return get(key).has_value(); }
  Kiln::SmartPtr<Kiln::Property> child(Kiln::WStringView key) override;

 private:
  std::map<std::u16string, Kiln::SmartPtr<PlainProperty>, std::less<>> values;
};

}  // namespace Refhost
