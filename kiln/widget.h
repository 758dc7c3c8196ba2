// What all widgets have (kiln/widgets.h).
#pragma once

#include "kiln/native_window.h"
#include "kiln/ref_count.h"
#include "kiln/signal.h"
#include "kiln/text.h"

namespace Kiln::XUL {

// Carries the widget that an event comes from. Valid for the duration of the call.
template <class Source>
class EventArg {
 public:
  explicit EventArg(SmartPtr<Source> source) noexcept : origin(std::move(source)) {}
  Source& source() const noexcept { return *origin; }

 private:
  SmartPtr<Source> origin;
};

// A picture: a bitmap or a swatch. Made by Host::image and Host::swatch.
class Image : public RefCount {};

class Widget : public RefCount {
 public:
  static constexpr const char* interfaceName = "Widget";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : RefCount::queryInterface(asked);
  }

  // Hides the widget until setVisible(true). [plug-in, ready]
  virtual void hide() = 0;

  // Lets the user operate the widget; the same as setEnabled(true). [plug-in, ready]
  virtual void enable() = 0;

  // Keeps the user from operating the widget; the same as setEnabled(false). [plug-in, ready]
  virtual void disable() = 0;

  // Shows the widget, or hides it and gives its room away. [plug-in, ready]
  virtual void setVisible(bool visible) = 0;

  // Lets the user operate the widget and what is inside it, or not. [plug-in, ready]
  virtual void setEnabled(bool enabled) = 0;

  // The widget's own enabled state; an ancestor may still be disabled. [plug-in, ready]
  virtual bool isEnabled() = 0;

  // The id in the layout; never empty for a widget returned by widgetById. [plug-in, ready]
  virtual WString id() = 0;

  // The window that shows the widget; null when there is none. [plug-in, ready]
  virtual NativeWindow nativeWindow() = 0;
};

}  // namespace Kiln::XUL
