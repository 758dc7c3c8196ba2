// The property model: rules, availability, and the order of signals.
#include "host/model/properties.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

using Refhost::PropertyModel;
using Lines = std::vector<std::string>;

Refhost::ModelDescription description() {
  const auto option = [](std::u16string name, std::vector<std::u16string> options) {
    return Refhost::PropertyDescription{std::move(name), options.front(), options, false};
  };
  Refhost::ModelDescription model;
  model.properties = {option(u"Paper", {u"A4", u"A3"}),
                      option(u"Duplex", {u"Off", u"On"}),
                      option(u"Staple", {u"Off", u"On"}),
                      {u"Text", u"", {}, false}};
  model.rules = {{u"Duplex", u"On", {{u"Paper", u"A3"}}}, {u"Staple", u"On", {{u"Duplex", u"Off"}, {u"Paper", u"A3"}}}};
  return model;
}

// A model with recorded signals.
struct Model : Kiln::SignalTarget {
  explicit Model(Refhost::ModelDescription described = description())
      : properties(Refhost::make<PropertyModel>(std::move(described), trace)) {
    trace.listen([this](const auto& event) {
      if (event.op != "signal") return;
      const auto option = Testing::member(event, "option");
      fired.push_back(Testing::member(event, "of") + (option.empty()
                                                          ? "=" + Testing::member(event, "value")
                                                          : ":" + option + " " + Testing::member(event, "enabled")));
    });
  }

  void follow(const char16_t* property, std::function<void(Kiln::ModelSelectionChange&)> handler) {
    handlers[property] = std::move(handler);
    connect(*properties->selectionChangeSignal(property), *this, &Model::onSelection);
  }
  void onSelection(Kiln::ModelSelectionChange& change) {
    for (const auto& [name, handler] : handlers)
      if (properties->child(name) == change.property) handler(change);
  }

  Lines take() { return std::exchange(fired, {}); }

  Refhost::Trace trace;
  Lines fired;
  std::map<std::u16string, std::function<void(Kiln::ModelSelectionChange&)>> handlers;
  Kiln::SmartPtr<PropertyModel> properties;
};

TEST(PropertyModel, FiresTheSubmittedPairsInTheirOrder) {
  Model model;
  model.properties->submit({{u"Text", u"x"}, {u"Paper", u"A4"}});
  EXPECT_EQ(model.take(), (Lines{"Text=x", "Paper=A4"}));
}

TEST(PropertyModel, FiresASubmittedPairEvenWhenItsValueIsTheOneItHad) {
  Model model;
  model.properties->submit({{u"Paper", u"A4"}});
  EXPECT_EQ(model.take(), Lines{"Paper=A4"});
}

TEST(PropertyModel, LetsALaterPairForTheSamePropertyWin) {
  Model model;
  model.properties->submit({{u"Text", u"x"}, {u"Paper", u"A4"}, {u"Text", u"y"}});
  EXPECT_EQ(model.take(), (Lines{"Text=y", "Paper=A4"}));
}

TEST(PropertyModel, RunsTheRulesBeforeAnySignalFires) {
  Model model;
  model.properties->submit({{u"Duplex", u"On"}, {u"Staple", u"On"}});
  model.take();
  model.follow(u"Paper", [&](auto&) { EXPECT_EQ(model.properties->value(u"Staple"), u"Off"); });
  model.properties->submit({{u"Paper", u"A3"}});
  // Paper disables duplex, which disables the staple.
  EXPECT_EQ(model.take(), (Lines{"Duplex:On false", "Staple:On false", "Paper=A3", "Duplex=Off", "Staple=Off"}));
  model.properties->submit({{u"Paper", u"A4"}});
  EXPECT_EQ(model.take(), (Lines{"Duplex:On true", "Staple:On true", "Paper=A4"}));
}

TEST(PropertyModel, TakesAnyTextForAPropertyWithOptions) {
  Model model;
  model.properties->submit({{u"Paper", u"letter"}});
  EXPECT_EQ(model.properties->value(u"Paper"), u"letter");
}

TEST(PropertyModel, RefusesAnUnknownPropertyAndChangesNothing) {
  Model model;
  EXPECT_THROW(model.properties->submit({{u"Text", u"x"}, {u"Nothing", u"y"}}), Kiln::XUL::KeyError);
  EXPECT_EQ(model.properties->value(u"Text"), u"");
  EXPECT_TRUE(model.take().empty());
  EXPECT_THROW(model.properties->enableChangeSignal(u"Nothing"), Kiln::XUL::KeyError);
  EXPECT_THROW(model.properties->selectionChangeSignal(u"Nothing"), Kiln::XUL::KeyError);
}

TEST(PropertyModel, KnowsWhatCanBeChosen) {
  Model model;
  EXPECT_TRUE(model.properties->allows(u"Duplex", u"On"));
  EXPECT_FALSE(model.properties->allows(u"Duplex", u"on"));
  EXPECT_FALSE(model.properties->allows(u"Nothing", u"On"));
  EXPECT_TRUE(model.properties->allows(u"Text", u"anything"));
  model.properties->submit({{u"Paper", u"A3"}});
  EXPECT_FALSE(model.properties->allows(u"Duplex", u"On"));
}

TEST(PropertyModel, AResetFromWithinTheSelectionChangeEnds) {
  Model model;
  int deliveries = 0;
  model.follow(u"Text", [&](auto&) {
    ++deliveries;
    model.properties->submit({{u"Text", u"reset"}});
  });
  model.properties->submit({{u"Text", u"x"}});
  EXPECT_EQ(deliveries, 2);  // "x", then "reset", whose repetition is not new
  EXPECT_EQ(model.properties->value(u"Text"), u"reset");
}

TEST(PropertyModel, DropsASignalThatANestedTransitionHasOvertaken) {
  Model model;
  model.follow(u"Text", [&](auto&) { model.properties->submit({{u"Staple", u"Off"}}); });
  model.properties->submit({{u"Text", u"x"}, {u"Staple", u"On"}});
  EXPECT_EQ(model.take(), (Lines{"Text=x", "Staple=Off"}));
}

TEST(PropertyModel, DropsAnEnableChangeThatWasOvertaken) {
  Model model;
  model.properties->submit({{u"Duplex", u"On"}});
  model.take();
  struct Allower : Kiln::SignalTarget {
    explicit Allower(PropertyModel& properties) : model(properties) {}
    void allow(Kiln::ModelEnableChange& change) {
      if (!change.enabled) model.setAvailable(u"Staple", u"On", true);
    }
    PropertyModel& model;
  } allower(*model.properties);
  connect(*model.properties->enableChangeSignal(u"Duplex"), allower, &Allower::allow);
  model.properties->submit({{u"Paper", u"A3"}});
  EXPECT_EQ(model.take(), (Lines{"Duplex:On false", "Staple:On true", "Paper=A3", "Duplex=Off"}));
}

TEST(PropertyModel, ForbiddingByHandFiresOnceAndLeavesTheValue) {
  Model model;
  model.properties->submit({{u"Duplex", u"On"}});
  model.take();
  model.properties->setAvailable(u"Duplex", u"On", false);
  model.properties->setAvailable(u"Duplex", u"On", false);
  EXPECT_EQ(model.take(), Lines{"Duplex:On false"});
  EXPECT_EQ(model.properties->value(u"Duplex"), u"On");
  EXPECT_FALSE(model.properties->allows(u"Duplex", u"On"));
  model.properties->setAvailable(u"Duplex", u"On", true);
  EXPECT_EQ(model.take(), (Lines{"Duplex:On true", "Duplex=On"}));
  EXPECT_TRUE(model.properties->allows(u"Duplex", u"On"));
}

TEST(PropertyModel, AnnouncesTheSelectionAgainOnceItCanBeChosenAgain) {
  Model model;
  model.properties->submit({{u"Duplex", u"On"}});
  model.properties->setAvailable(u"Duplex", u"On", false);
  model.take();
  model.properties->setAvailable(u"Duplex", u"On", true);
  EXPECT_EQ(model.take(), (Lines{"Duplex:On true", "Duplex=On"}));
  model.properties->setAvailable(u"Duplex", u"Off", false);
  model.properties->setAvailable(u"Duplex", u"Off", true);
  EXPECT_EQ(model.take(), (Lines{"Duplex:Off false", "Duplex:Off true"})) << "another option is chosen";
}

TEST(PropertyModel, AnnouncesASelectionOnceThoughAnOptionOfItIsAvailableAgain) {
  Model model;
  model.properties->submit({{u"Paper", u"A3"}});
  model.take();
  model.properties->submit({{u"Paper", u"A4"}, {u"Duplex", u"On"}});
  EXPECT_EQ(model.take(), (Lines{"Duplex:On true", "Staple:On true", "Paper=A4", "Duplex=On"}));
}

TEST(PropertyModel, AnnouncesTheDetailsOfAFeatureThatIsOnAgain) {
  auto described = description();
  described.properties[3].feature = u"Staple";
  Model model(described);
  const auto backAgain = [&model] {
    model.properties->setAvailable(u"Staple", u"On", false);
    model.take();
    model.properties->setAvailable(u"Staple", u"On", true);
    return model.take();
  };
  EXPECT_EQ(backAgain(), (Lines{"Staple:On true"}));
  model.properties->submit({{u"Staple", u"On"}});
  EXPECT_EQ(backAgain(), (Lines{"Staple:On true", "Staple=On", "Text="}));
}

TEST(PropertyModel, ForbiddingByHandOutlastsARuleThatForbidsTheSame) {
  Model model;
  model.properties->submit({{u"Paper", u"A3"}});
  model.properties->setAvailable(u"Duplex", u"On", false);
  model.properties->submit({{u"Paper", u"A4"}});
  EXPECT_FALSE(model.properties->allows(u"Duplex", u"On"));
}

TEST(PropertyModel, PrintsTheDefaultForWhatCannotBeChosen) {
  Model model;
  model.properties->submit({{u"Duplex", u"On"}});
  model.properties->setAvailable(u"Duplex", u"On", false);
  EXPECT_EQ(model.properties->printedValues().at(1), std::pair(std::u16string(u"Duplex"), std::u16string(u"Off")));
  EXPECT_EQ(model.properties->values().at(1), std::pair(std::u16string(u"Duplex"), std::u16string(u"On")));
}

TEST(PropertyModel, AnnouncesPropertyByPropertyWhatIsUnavailableThenTheValue) {
  Model model;
  model.properties->start(u"Paper", u"A3");
  model.properties->started();
  EXPECT_TRUE(model.take().empty());
  model.properties->announce();
  EXPECT_EQ(model.take(),
            (Lines{"Paper=A3", "Duplex:On false", "Duplex=Off", "Staple:On false", "Staple=Off", "Text="}));
}

TEST(PropertyModel, AnnouncesTheOtherPropertiesWhenAHandlerThrowsAndRethrowsTheFirstException) {
  Model model;
  model.follow(u"Paper", [](auto&) { throw std::runtime_error("first"); });
  model.follow(u"Staple", [](auto&) { throw std::runtime_error("second"); });
  try {
    model.properties->announce();
    FAIL() << "nothing is thrown";
  } catch (const std::runtime_error& thrown) {
    EXPECT_STREQ(thrown.what(), "first");
  }
  EXPECT_EQ(model.take(), (Lines{"Paper=A4", "Duplex=Off", "Staple=Off", "Text="}));
}

TEST(PropertyModel, StartsInOneStepWhateverTheOrderOfTheValues) {
  Model model;
  model.properties->submit({{u"Paper", u"A3"}});
  model.properties->start(u"Duplex", u"On");
  model.properties->start(u"Paper", u"A4");
  model.properties->started();
  EXPECT_EQ(model.properties->value(u"Duplex"), u"On");
}

TEST(PropertyModel, TellsOfAChangeAfterTheOutermostTransition) {
  Model model;
  int told = 0;
  model.properties->onChange([&told] { ++told; });
  model.follow(u"Text", [&](auto& change) {
    EXPECT_EQ(told, 0);
    if (change.value.view() == u"x") model.properties->submit({{u"Paper", u"A3"}});
  });
  model.properties->submit({{u"Text", u"x"}});
  EXPECT_EQ(told, 1);
  model.properties->child(u"Text")->setValue(u"y");
  EXPECT_EQ(told, 2);
}

TEST(PropertyModel, WritesAValueOutsideATransitionWithoutSignals) {
  Model model;
  model.properties->child(u"Paper")->setValue(u"A3");
  EXPECT_TRUE(model.take().empty());
  EXPECT_EQ(model.properties->value(u"Paper"), u"A3");
  EXPECT_TRUE(model.properties->child(u"Paper")->equals(u"A3"));
  EXPECT_FALSE(model.properties->child(u"Paper")->equals(u"a3"));
}

TEST(PropertyModel, StaysUsableWhenAHandlerThrows) {
  Model model;
  model.follow(u"Text", [](auto&) { throw std::runtime_error("no"); });
  EXPECT_THROW(model.properties->submit({{u"Text", u"x"}}), std::runtime_error);
  model.handlers.clear();
  int told = 0;
  model.properties->onChange([&told] { ++told; });
  model.properties->submit({{u"Text", u"x"}});
  EXPECT_EQ(told, 1);
  EXPECT_EQ(model.take(), (Lines{"Text=x", "Text=x"}));
}

}  // namespace
