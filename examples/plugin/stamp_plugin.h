// The plug-in "stamp": a tab on which the user chooses whether the pages are stamped, and with which text.
#pragma once

#include "stamp_file.h"

#include "kiln/plugin.h"

#include <string>

namespace Stamp {

inline constexpr const char* pluginName = "stamp";

class StampPlugin final : public Kiln::UIPlugin, public Kiln::PTPlugin {
 public:
  // Throws what the host's services throw.
  StampPlugin(Kiln::Host& lender, const Kiln::String& ownName, const Kiln::PropertyManager& properties,
              Kiln::SmartPtr<Kiln::Services::Library> ownLibrary);

  // UIPlugin
  void create() override {}
  void initialise() override {}
  void configureUI(Kiln::SmartPtr<Kiln::XUL::GUI> shown) override;
  bool rootlessActivation() override { return false; }

  // PTPlugin
  Kiln::SmartPtr<Kiln::Dom::INode> getSchema() override;
  Kiln::SmartPtr<Kiln::Dom::INode> convertPMtoPT(Kiln::Property& properties, Kiln::PTLevel level) override;
  void convertPTtoPM(Kiln::SmartPtr<Kiln::Dom::INode> ticket, Kiln::Property& properties) override;

 private:
  void onReady(Kiln::SmartPtr<Kiln::XUL::GUI> ready);

  // What the host announces: the widgets show it.
  void onStampChange(Kiln::ModelSelectionChange& change);
  void onStampEnableChange(Kiln::ModelEnableChange& change);
  void onTextChange(Kiln::ModelSelectionChange& change);

  // What the user does: the host is told.
  void onClick(Kiln::XUL::EventArg<Kiln::XUL::Toggle> event);
  void onChoice(Kiln::XUL::EventArg<Kiln::XUL::ComboBox> event);
  void onOtherText(Kiln::XUL::EventArg<Kiln::XUL::Button> event);
  void onHelp(Kiln::XUL::EventArg<Kiln::XUL::TabPanel> event);

  void listTexts();
  void submitText(std::u16string_view text);
  Kiln::Property& settings();

  StampFile file;
  Kiln::SmartPtr<Kiln::Property> configuration;
  Kiln::SmartPtr<Kiln::XUL::GUI> gui;

  // Each null when the layout has no such widget.
  Kiln::SmartPtr<Kiln::XUL::CheckBox> stampBox;
  Kiln::SmartPtr<Kiln::XUL::ComboBox> textList;
  Kiln::SmartPtr<Kiln::XUL::Button> otherTextButton;
};

}  // namespace Stamp
