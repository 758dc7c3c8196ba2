// User input to input widgets, and the events that handlers get.
#include "host/chrome/layout.h"
#include "tests/support/function_slot.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

namespace {

using Refhost::Edit;
using testing::ElementsAre;
using testing::IsEmpty;

using Change = Kiln::SmartPtr<Kiln::XUL::TextChangeEventArg>;

class Widgets : public testing::Test {
 protected:
  // Loads a tab with that content.
  void read(const std::string& content) {
    std::filesystem::create_directories(folder.path / "test/content/en-US");
    Testing::writeFile(folder.path / "test/content/tab.xul",
                       "<tabpanel xmlns=\"http://www.mozilla.org/keymaster/gatekeeper/there.is.only.xul\">" + content +
                           "</tabpanel>");
    Testing::writeFile(folder.path / "test/content/en-US/strings.dtd", "");
    strings.emplace(Refhost::ChromeFolders(folder.path), "en-US");
    world.emplace(Refhost::WidgetWorld{
        trace, *strings, {}, [this](const auto& action) { dispatch(action); }, [this](auto&) { ++changes; }});
    layout = Refhost::LayoutReader(chrome, {}).read(u"chrome://test/content/tab.xul", *world);
    trace.listen([this](const Refhost::TraceEvent& event) { events.push_back(event); });
  }

  template <class Kind>
  Kind& widget(std::u16string_view id) {
    return dynamic_cast<Kind&>(*layout.find(id));
  }
  Refhost::TextBox& box() { return widget<Refhost::TextBox>(u"box"); }
  Refhost::ScrollBar& bar() { return widget<Refhost::ScrollBar>(u"bar"); }
  Refhost::RadioButton& radio(std::u16string_view id) { return widget<Refhost::RadioButton>(id); }

  template <class Arg>
  void follow(const Kiln::SmartPtr<Kiln::Signal<Arg>>& signal, std::function<void(Arg)> handler) {
    Testing::follow<Arg>(target, signal, std::move(handler));
  }

  // Records the events of the box's handlers.
  void listen() {
    follow<Change>(box().typingSignal(), [this](Change change) { typed.push_back(change->text().str()); });
    follow<Change>(box().pastingSignal(), [this](Change change) { pasted.push_back(change->text().str()); });
  }

  void dispatch(const std::function<void()>& action) {
    try {
      action();
    } catch (const std::runtime_error&) {
      ++failures;
    }
  }

  Kiln::SignalTarget target;
  Testing::TemporaryFolder folder;
  Refhost::ChromeFolders chrome{folder.path};
  Refhost::Trace trace;
  std::optional<Refhost::StringTables> strings;
  std::optional<Refhost::WidgetWorld> world;
  Refhost::Layout layout;
  std::vector<Refhost::TraceEvent> events;
  std::vector<std::u16string> typed;
  std::vector<std::u16string> pasted;
  int changes = 0;
  int failures = 0;
};

TEST_F(Widgets, TextBoxTellsAChangeBeforeItIsMade) {
  read("<textbox id='box' value='old'/>");
  std::u16string before;
  follow<Change>(box().typingSignal(), [&](Change change) { before = box().content() + u">" + change->text().str(); });
  EXPECT_TRUE(box().edit(u"new", Edit::typed));
  EXPECT_EQ(before, u"old>new");
  EXPECT_EQ(box().content(), u"new");
}

TEST_F(Widgets, ChangeNamesItsBox) {
  read("<textbox id='box'/><textbox id='other'/>");
  std::u16string named;
  for (const auto* id : {u"box", u"other"})
    follow<Change>(widget<Refhost::TextBox>(id).typingSignal(),
                   [&](Change change) { named = change->source()->id().str(); });
  widget<Refhost::TextBox>(u"other").edit(u"new", Edit::typed);
  EXPECT_EQ(named, u"other");
}

TEST_F(Widgets, CompositionThatIsSettledAsItStandsIsToldOnceMore) {
  read("<textbox id='box'/>");
  std::vector<bool> provisional;
  follow<Change>(box().typingSignal(), [&](Change change) { provisional.push_back(change->isProvisional()); });
  box().edit(u"72", Edit::composing);
  box().edit(u"72", Edit::composing);
  box().edit(u"72", Edit::typed);
  box().edit(u"72", Edit::typed);
  EXPECT_THAT(provisional, ElementsAre(true, false));
}

TEST_F(Widgets, RefusedEditLeavesTheText) {
  read("<textbox id='box' value='old'/>");
  follow<Change>(box().typingSignal(), [](Change change) { change->refuse(); });
  EXPECT_FALSE(box().edit(u"new", Edit::typed));
  EXPECT_EQ(box().content(), u"old");
  box().setText(u"set");
  EXPECT_EQ(box().content(), u"old");
}

TEST_F(Widgets, EditWhoseHandlerThrowsLeavesTheText) {
  read("<textbox id='box' value='old'/>");
  follow<Change>(box().typingSignal(), [](Change) { throw std::runtime_error("broken"); });
  EXPECT_FALSE(box().edit(u"new", Edit::typed));
  EXPECT_EQ(box().content(), u"old");
  EXPECT_EQ(failures, 1);
}

TEST_F(Widgets, TypingAndPastingHaveSignalsOfTheirOwn) {
  read("<textbox id='box'/>");
  listen();
  box().edit(u"a", Edit::typed);
  box().edit(u"b", Edit::pasted);
  box().setText(u"c");
  EXPECT_THAT(typed, ElementsAre(u"a", u"c"));
  EXPECT_THAT(pasted, ElementsAre(u"b"));
}

TEST_F(Widgets, OnlyACompositionIsProvisional) {
  read("<textbox id='box'/>");
  std::vector<bool> provisional;
  follow<Change>(box().typingSignal(), [&](Change change) { provisional.push_back(change->isProvisional()); });
  box().edit(u"a", Edit::typed);
  box().edit(u"b", Edit::composing);
  EXPECT_THAT(provisional, ElementsAre(false, true));
}

TEST_F(Widgets, EditThatChangesNothingIsNotTold) {
  read("<textbox id='box' value='same'/>");
  listen();
  EXPECT_TRUE(box().edit(u"same", Edit::typed));
  EXPECT_THAT(typed, IsEmpty());
}

TEST_F(Widgets, TextThatIsSetIsToldEvenWhenItIsTheSame) {
  read("<textbox id='box' value='same'/>");
  listen();
  box().setText(u"same");
  EXPECT_THAT(typed, ElementsAre(u"same"));
}

TEST_F(Widgets, HandlerThatSetsWhatItIsToldIsNotToldAgain) {
  read("<textbox id='box'/>");
  listen();
  follow<Change>(box().typingSignal(), [this](Change change) { box().setText(change->text()); });
  EXPECT_TRUE(box().edit(u"a", Edit::typed));
  EXPECT_THAT(typed, ElementsAre(u"a"));
  EXPECT_EQ(box().content(), u"a");
}

TEST_F(Widgets, ChangeThatAHandlerMakesOvertakesTheOneThatIsTold) {
  read("<textbox id='box'/>");
  listen();
  follow<Change>(box().typingSignal(), [this](Change) { box().setText(u"6"); });
  EXPECT_TRUE(box().edit(u"5", Edit::typed));
  EXPECT_THAT(typed, ElementsAre(u"5", u"6"));
  EXPECT_EQ(box().content(), u"6");
}

TEST_F(Widgets, UsersTextIsCutToTheMaximumLengthButNotThePlugins) {
  read("<textbox id='box' maxlength='9'/>");
  box().setMaximumLength(3);
  EXPECT_TRUE(box().edit(u"abcd", Edit::typed));
  EXPECT_EQ(box().content(), u"abc");
  box().edit(u"ab\U0001F600", Edit::typed);
  EXPECT_EQ(box().content(), u"ab") << "a surrogate pair is not split";
  box().setText(u"abcdef");
  EXPECT_EQ(box().content(), u"abcdef");
}

TEST_F(Widgets, DisabledBoxTakesNoEditButAText) {
  read("<textbox id='box' disabled='true'/>");
  EXPECT_FALSE(box().edit(u"a", Edit::typed));
  box().setText(u"b");
  EXPECT_EQ(box().content(), u"b");
}

TEST_F(Widgets, LeavingTheBoxFiresItsBlur) {
  read("<textbox id='box'/>");
  std::u16string left;
  follow<Kiln::XUL::EventArg<Kiln::XUL::TextBox>>(box().blurSignal(),
                                                  [&](auto event) { left = event.source().id().str(); });
  box().leave();
  EXPECT_EQ(left, u"box");
}

TEST_F(Widgets, OnlyATextBoxForIntegersIsOne) {
  read("<textbox id='box'/><textbox id='number' type='integer'/>");
  EXPECT_EQ(dynamic_cast<Kiln::XUL::IntegerTextBox*>(&layout.find(u"box")->asWidget()), nullptr);
  EXPECT_NE(dynamic_cast<Kiln::XUL::IntegerTextBox*>(&layout.find(u"number")->asWidget()), nullptr);
}

TEST_F(Widgets, BoxForNumbersHasTheRangeOfItsLayout) {
  read("<textbox id='box' min='-90' max='90' increment='5'/><textbox id='text'/>");
  ASSERT_TRUE(box().range());
  EXPECT_EQ(box().range()->least, -90);
  EXPECT_EQ(box().range()->most, 90);
  EXPECT_EQ(box().range()->step, 5);
  EXPECT_FALSE(widget<Refhost::TextBox>(u"text").range());
}

TEST(SteppedNumber, StaysInItsRange) {
  constexpr Refhost::NumberRange range{6, 300, 2};
  EXPECT_EQ(stepped(range, u"72", 1), u"74");
  EXPECT_EQ(stepped(range, u"72", -10), u"52");
  EXPECT_EQ(stepped(range, u"299", 1), u"300");
  EXPECT_EQ(stepped(range, u"400", 1), u"300");
  EXPECT_EQ(stepped(range, u"400", -1), u"300");
  EXPECT_EQ(stepped(range, u"7", -1), u"6");
  EXPECT_EQ(stepped(range, u"-1e300", 1), u"6");
}

TEST(SteppedNumber, GoesFromAFractionToTheNextNumber) {
  constexpr Refhost::NumberRange range{-90, 90, 1};
  EXPECT_EQ(stepped(range, u"72.5", 1), u"73");
  EXPECT_EQ(stepped(range, u"72.5", -1), u"72");
  EXPECT_EQ(stepped(range, u"-0.5", 1), u"0");
}

TEST(SteppedNumber, CountsTextThatIsNoNumberAsZero) {
  constexpr Refhost::NumberRange range{-90, 90, 1};
  for (const char16_t* text : {u"", u"-", u"big", u"nan", u"inf"}) EXPECT_EQ(stepped(range, text, 1), u"1");
}

TEST_F(Widgets, ChoosingARadioButtonUnchecksTheOthersOfItsGroup) {
  read("<radiogroup><radio id='a' selected='true'/><hbox><radio id='b'/></hbox></radiogroup>"
       "<radiogroup><radio id='c' selected='true'/></radiogroup>");
  std::vector<std::u16string> clicked;
  for (const auto* id : {u"a", u"b", u"c"})
    follow<Kiln::XUL::EventArg<Kiln::XUL::Toggle>>(radio(id).clickSignal(),
                                                   [&](auto event) { clicked.push_back(event.source().id().str()); });
  radio(u"b").choose();
  radio(u"b").choose();
  EXPECT_FALSE(radio(u"a").isChecked());
  EXPECT_TRUE(radio(u"b").isChecked());
  EXPECT_TRUE(radio(u"c").isChecked());
  EXPECT_THAT(clicked, ElementsAre(u"b"));
  radio(u"a").setChecked(true);
  EXPECT_FALSE(radio(u"b").isChecked());
  EXPECT_THAT(clicked, ElementsAre(u"b")) << "a mark that is set fires nothing";
}

TEST_F(Widgets, ScrollBarStaysInItsRangeAndTellsWhatIsSet) {
  read("<scrollbar id='bar' maxpos='180' curpos='90'/>");
  std::vector<std::int32_t> told;
  follow<Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>>(bar().scrollSignal(),
                                                    [&](auto event) { told.push_back(event.source().position()); });
  bar().scroll(10);
  bar().scroll(10);
  bar().setPosition(10);
  bar().setPosition(200);
  EXPECT_THAT(told, ElementsAre(10, 10, 180));
}

TEST_F(Widgets, HandlerThatSetsThePositionItIsToldIsNotToldAgain) {
  read("<scrollbar id='bar' maxpos='180'/>");
  int told = 0;
  follow<Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>>(bar().scrollSignal(), [&](auto) {
    if (++told < 10) bar().setPosition(7);
  });
  bar().scroll(7);
  EXPECT_EQ(told, 1);
}

TEST_F(Widgets, ColourPickerTellsThePick) {
  read("<colorpicker id='picker'/>");
  auto& picker = widget<Refhost::ColorPicker>(u"picker");
  std::uint32_t told = 0;
  follow<Kiln::XUL::EventArg<Kiln::XUL::ColorPicker>>(picker.changeSignal(),
                                                      [&](auto event) { told = event.source().colour(); });
  picker.pick(0xFF0080);
  EXPECT_EQ(told, 0xFF0080U);
}

TEST_F(Widgets, PreviewKeepsAndTracesWhatItIsTold) {
  read("<wmpreview id='preview'/>");
  auto& preview = widget<Refhost::WatermarkPreview>(u"preview");
  preview.setText(u"Draft");
  preview.setRotation(315);
  preview.setOpacity(0.25);
  EXPECT_EQ(preview.watermark().text, u"Draft");
  EXPECT_EQ(preview.watermark().rotation, 315);
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(events[0].op, "preview");
  EXPECT_EQ(Testing::member(events[0], "set") + Testing::member(events[0], "value"), "textDraft");
  EXPECT_EQ(std::get<double>(events[2].members[1].second), 0.25);
}

TEST_F(Widgets, OnlyADropTargetTakesDrops) {
  read("<image id='target' droptarget='true'/><image id='picture'/>");
  std::vector<std::u16string> dropped;
  for (const auto* id : {u"target", u"picture"}) {
    auto& image = widget<Refhost::ImageBox>(id);
    follow<Kiln::WString>(image.dropSignal(), [&](Kiln::WString value) { dropped.push_back(value.str()); });
    image.drop(u"01234.opa");
  }
  EXPECT_THAT(dropped, ElementsAre(u"01234.opa"));
}

TEST_F(Widgets, ContextMenuSendsTheItemsTextAndNotItsLabel) {
  read("<image id='image'><menupopup><menuitem value='clear' label='Leeren'/></menupopup></image>");
  auto& image = widget<Refhost::ImageBox>(u"image");
  std::vector<std::u16string> chosen;
  follow<Kiln::WString>(image.menuSignal(), [&](Kiln::WString text) { chosen.push_back(text.str()); });
  image.choose(u"Leeren");
  image.choose(u"clear");
  EXPECT_THAT(chosen, ElementsAre(u"clear"));
}

TEST_F(Widgets, ShowsASelectedItemAnewWhenItIsSelectedAgain) {
  read("<menulist id='list'><menuitem label='a' value='a'/></menulist>");
  changes = 0;
  widget<Refhost::ComboBox>(u"list").select(0);
  EXPECT_EQ(changes, 1);
}

// A plug-in may show the selected item for a value that the list does not have.
TEST_F(Widgets, SelectedItemCanBeChosenAgain) {
  read("<menulist id='combo'><menuitem label='a' value='a'/></menulist>"
       "<listbox id='list'><listitem label='a' value='a'/></listbox>");
  int chosen = 0;
  auto& combo = widget<Refhost::ComboBox>(u"combo");
  follow<Kiln::XUL::EventArg<Kiln::XUL::ComboBox>>(combo.changeSignal(), [&chosen](auto) { ++chosen; });
  auto& list = widget<Refhost::ListBox>(u"list");
  follow<Kiln::XUL::EventArg<Kiln::XUL::ListBox>>(list.changeSignal(), [&chosen](auto) { ++chosen; });
  combo.choose(0);
  list.choose(0);
  EXPECT_EQ(chosen, 2);
  list.choose(1);
  EXPECT_EQ(chosen, 2) << "there is no such item";
}

TEST_F(Widgets, LayoutThatIsWrongIsRefusedWithItsPlace) {
  for (const char* content :
       {"<scrollbar maxpos='many'/>", "<menupopup/>", "<image><menupopup><label/></menupopup></image>",
        "<textbox min='2' max='1'/>", "<textbox min='some'/>", "<textbox max='9' increment='0'/>"})
    EXPECT_THROW(read(content), std::runtime_error) << content;
}

TEST_F(Widgets, MayBeHeldLongerThanTheirParents) {
  read(R"(<vbox><hbox><textbox id="box"/></hbox></vbox>)");
  const Kiln::SmartPtr<Refhost::TextBox> held(&box());
  layout = {};
  EXPECT_EQ(held->parent(), nullptr);
  EXPECT_TRUE(held->isOperable());
  held->setText(u"a");
  held->disable();
  EXPECT_EQ(held->text().view(), u"a");
  EXPECT_FALSE(held->isOperable());
}

}  // namespace
