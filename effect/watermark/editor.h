// The watermark editor: the modal dialog that creates or edits one watermark, with a live preview.
//
// The constructor runs the whole dialog: it loads the layout, connects the widgets, shows the record, runs the dialog,
// and returns when it has closed. The record is the caller's copy; every change is written into it immediately. The
// caller stores it and replaces another record with its name.
//
// The files: editor.cpp (construction, OK and Cancel), editor_load.cpp (record to widgets), editor_names.cpp (text and
// name), editor_looks.cpp (colour, face, size, position), editor_amounts.cpp (angle, print style, transparency), and
// editor_values.h for the values themselves.
#pragma once

#include "effect/tab_host.h"
#include "effect/watermark/record.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Kiln::XUL {

class WatermarkDlg final : public SignalTarget {
 public:
  // Returns when the dialog has closed, or at once when its layout cannot be loaded. With a null record the dialog
  // shows nothing and can only be cancelled. The host catches what a handler throws, and the dialog stays open.
  WatermarkDlg(TabHost lender, SmartPtr<Dom::INode> edited, bool isNewRecord);

  // Whether the caller should store the record.
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

  // Load a record into the widgets, and through them into the edited record.
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

  // Angle. applyAngleText returns false for invalid text.
  void connectAngle();
  void onAngleText(SmartPtr<TextChangeEventArg> change);
  void onAngleFocusLost(EventArg<TextBox> event);
  void onAngleScroll(EventArg<ScrollBar> event);
  bool applyAngleText(WStringView text);

  // Print style and transparency. applyOpacityText returns false for invalid text.
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

  // The widget with that id and type; empty when the layout has none.
  template <class Kind>
  SmartPtr<Kind> widget(WStringView id) const {
    return smartCast<Kind>(dialog->widgetById(id));
  }
  SmartPtr<ListBox> watermarkList() const;
  void setEnabled(WStringView id, bool enabled);

  // Sets the text of a box without running its own handler. `box` may be null.
  void put(const SmartPtr<TextBox>& box, WStringView text);

  TabHost host;
  SmartPtr<Dom::INode> record;
  SmartPtr<SubDialog> dialog;  // empty when its layout could not be loaded
  bool accepted = false;

  // Changing a widget fires its signals like user input; these flags prevent repeated application. Each "in..." flag is
  // set around one call that does not throw; each change sets the others anew. So no flag stays set after an exception.
  bool angleIdle = false;      // no handler is applying an angle: applyAngleText does nothing
  bool inAngleText = false;    // applyAngleText is moving the scroll bar
  bool inOpacityText = false;  // the editor is moving the scroll bar
  bool opacityIdle = false;    // as angleIdle
  bool inOwnText = false;      // put is running
  bool colourCapable = false;  // the model supports black and other colours for watermarks
  bool blackOnly = false;      // it supports black only
  bool hasStyleNames = false;  // a watermark's name has a field of its own
  const bool isNew;
  bool overwriteConfirmed = false;
  SmartPtr<WMPreview> preview;
  SmartPtr<TextBox> styleNameBox;
  bool styleNameEdited = false;  // the user has typed a name
};

}  // namespace Kiln::XUL
