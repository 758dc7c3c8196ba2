// The watermark editor: the modal dialog in which a person makes or changes one watermark and sees it as they type.
//
// The dialog lives inside its constructor: the layout is loaded, its widgets are connected, the record is shown, the
// dialog runs, and the constructor returns when it has closed. The record is the caller's copy; every change is written
// into it at once. Storing it, and replacing another one of its name, is the caller's work.
//
// The files: editor.cpp (construction, OK and Cancel), editor_load.cpp (a record into the widgets), editor_names.cpp
// (text and name), editor_looks.cpp (colour, face, size, position), editor_amounts.cpp (angle, print style,
// transparency), and editor_values.h for the values themselves.
#pragma once

#include "effect/vocabulary.h"
#include "effect/watermark/record.h"
#include "kiln/gui.h"
#include "kiln/host.h"
#include "kiln/property.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Kiln::XUL {

class WatermarkDlg final : public SignalTarget {
 public:
  // What the editor asks. The preferences are those whose tab has the list of watermarks.
  struct EditorHost {
    Host& services;
    PropertyManager properties;
    SmartPtr<GUI> preferences;
  };

  // Returns when the dialog has closed, or at once when its layout cannot be loaded. Without a record it shows none,
  // and can only be cancelled. What a handler throws stops at the host, and the dialog stays open.
  WatermarkDlg(EditorHost lender, SmartPtr<Dom::INode> edited, bool isNewRecord);

  // Whether the record, as it is now, is to be stored.
  bool isAccepted() const { return accepted; }

 private:
  // The dialog.
  void onOk(SubDialogEventArg& event);
  void onCancel(SubDialogEventArg& event);
  void onOverwriteOk(SubDialogEventArg& event);
  void connectWidgets();
  void replaceImpossibleSize();
  void askAboutNameClashes(SubDialogEventArg& event);
  bool confirmOverwrite();

  // A record into the widgets, and through them into the edited record.
  void loadWatermark(const SmartPtr<Dom::INode>& source);
  void loadNames(Dom::INode& values);
  void loadColour(Dom::INode& values);
  void loadFont(Dom::INode& values);
  void loadAngle(Dom::INode& values);
  void loadPrintStyle(Dom::INode& values);
  void onRestoreDefaults(EventArg<Button> event);

  // Text and name.
  void connectNames();
  void onLabelText(SmartPtr<TextChangeEventArg> change);
  void takeLabelOrStyleName(WStringView text, bool isStyleName);
  void takeBoth(WStringView text, bool isStyleName);
  void updateOkButton(WStringView label, WStringView stylename, bool forceDisable);
  bool isReservedName(WStringView text);
  std::u16string shownText(WStringView text);

  // Colour.
  void connectColours();
  void onColourSelect(EventArg<ComboBox> event);
  void onCustomColour(EventArg<ColorPicker> event);
  void applyColourItem(ListItem& item);
  void applyCustomColour(std::uint32_t colour);
  void setColour(WStringView colour);
  bool selectColour(WStringView colour);
  SmartPtr<ListItem> customColourItem();
  SmartPtr<Image> swatch(WStringView colour);

  // Face, style, size and position.
  void connectFont();
  void fillFontNames();
  void onFontName(EventArg<ComboBox> event);
  void onFontStyle(EventArg<ComboBox> event);
  void onFontSizeText(SmartPtr<TextChangeEventArg> change);
  void onFontSizeFocusLost(EventArg<TextBox> event);
  void onPositionButton(EventArg<Button> event);
  void applyFontName(WStringView face);
  void applyFontStyle(WStringView style);
  void applyFontSize(WStringView text);
  void applyPosition(WStringView code);

  // Angle. What applyAngleText cannot take is false.
  void connectAngle();
  void onAngleText(SmartPtr<TextChangeEventArg> change);
  void onAngleFocusLost(EventArg<TextBox> event);
  void onAngleScroll(EventArg<ScrollBar> event);
  bool applyAngleText(WStringView text);

  // Print style and transparency. What applyOpacityText cannot take is false.
  void connectPrintStyles();
  void connectOpacity();
  void onPrintStyle(EventArg<Toggle> event);
  void onOpacityText(SmartPtr<TextChangeEventArg> change);
  void onOpacityFocusLost(EventArg<TextBox> event);
  void onOpacityScroll(EventArg<ScrollBar> event);
  bool applyOpacityText(WStringView text);
  void applyPrintStyle(WStringView radio);
  std::int32_t intensity() const;
  void setIntensity(std::int32_t percent);
  void moveOpacityBar(std::int32_t percent);

  // The widget of that id and kind; empty when the layout has none.
  template <class Kind>
  SmartPtr<Kind> widget(WStringView id) const {
    return smartCast<Kind>(dialog->widgetById(id));
  }
  SmartPtr<ListBox> watermarkList() const;
  void setEnabled(WStringView id, bool enabled);

  // Puts a text into a box whose own handler has nothing more to do with it. The box may be empty.
  void put(const SmartPtr<TextBox>& box, WStringView text);

  EditorHost host;
  SmartPtr<Dom::INode> record;
  SmartPtr<SubDialog> dialog;  // empty when its layout could not be loaded
  bool accepted = false;

  // What the editor puts into a widget fires the widget's signal as the user's hand would. These make each change apply
  // once. Those named in... stand over one call each, of an operation that throws nothing; the others are set anew by
  // each change. So none stays set after a handler that an exception ends.
  bool angleIdle = false;      // no handler is applying an angle: applyAngleText has nothing to do
  bool inAngleText = false;    // applyAngleText moves the scroll bar
  bool inOpacityText = false;  // the editor moves the scroll bar
  bool opacityIdle = false;    // as angleIdle
  bool inOwnText = false;      // put is at work
  bool colourCapable = false;  // the model has black and other colours for watermarks
  bool blackOnly = false;      // it has black alone
  bool hasStyleNames = false;  // a watermark's name is a field of its own
  const bool isNew;
  bool overwriteConfirmed = false;
  SmartPtr<WMPreview> preview;
  SmartPtr<TextBox> styleNameBox;
  bool styleNameEdited = false;  // the user has typed a name of their own
};

}  // namespace Kiln::XUL
