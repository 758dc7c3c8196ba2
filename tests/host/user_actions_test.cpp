// What a listener is told of the user's actions.
#include "host/user_actions.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using Refhost::UserActions;
using testing::ElementsAre;

class Told final : public Refhost::ActionListener {
 public:
  void begins(const Refhost::UserAction& action) override { lines.push_back(action.command); }
  void answered(const Refhost::ActionAnswer& answer) override {
    std::string line = answer.failure.empty() ? "ok" : answer.failure;
    for (const auto& [name, value] : answer.members) line += ' ' + name;
    lines.push_back(line);
  }

  std::vector<std::string> lines;
};

class UserActionsTest : public testing::Test {
 protected:
  UserActionsTest() { actions.tell(&told); }

  Told told;
  UserActions actions;
};

TEST_F(UserActionsTest, AreToldBeforeTheyAreDoneAndAnsweredAfter) {
  actions.act({"a"}, [&] {
    EXPECT_THAT(told.lines, ElementsAre("a"));
    actions.answer("text", u"x");
  });
  EXPECT_THAT(told.lines, ElementsAre("a", "ok text"));
}

TEST_F(UserActionsTest, ThatArePartsOfOthersAreNotTold) {
  actions.act({"a"}, [&] { actions.act({"b"}, [&] { actions.vetoed(); }); });
  actions.act({"c"}, [] {});
  EXPECT_THAT(told.lines, ElementsAre("a", "ok vetoed", "c", "ok"));
}

TEST_F(UserActionsTest, FailWithTheFirstSentence) {
  actions.act({"a"}, [&] {
    actions.failed("First.");
    actions.failed("Second.");
    actions.vetoed();
  });
  EXPECT_THROW(actions.act({"b"}, [] { throw std::runtime_error("Thrown."); }), std::runtime_error);
  actions.act({"c"}, [] {});
  EXPECT_THAT(told.lines, ElementsAre("a", "First.", "b", "Thrown.", "c", "ok"));
}

TEST_F(UserActionsTest, AreToldOnceTheNameIsKnown) {
  actions.actWithName({"a"}, [&] {
    EXPECT_THAT(told.lines, ElementsAre());
    actions.named(u"x");
    EXPECT_THAT(told.lines, ElementsAre("job-step", "ok", "a"));
  });
  actions.actWithName({"b"}, [] {});
  EXPECT_THAT(told.lines, ElementsAre("job-step", "ok", "a", "ok", "b", "ok"));
}

TEST_F(UserActionsTest, AreDoneWhenNobodyListens) {
  actions.tell(nullptr);
  int done = 0;
  actions.act({"a"}, [&] {
    ++done;
    actions.answer("text", u"x");
    actions.vetoed();
    actions.failed("It failed.");
    actions.named(u"x");
    actions.actWithName({"b"}, [&] { ++done; });
  });
  EXPECT_EQ(done, 2);
}

}  // namespace
