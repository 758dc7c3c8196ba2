// Every operation of the host that is called without what it needs, or with what another host made, says so alike.
#include "host/reference_host.h"
#include "host/widgets/list.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

using Kiln::SmartPtr;

template <class Work>
std::string sentenceOf(const Work& work) {
  try {
    work();
  } catch (const Kiln::Exception& refusal) {
    return refusal.what();
  }
  return "nothing";
}

class TicketPart final : public Kiln::PTPlugin {
 public:
  explicit TicketPart(Kiln::Host& host) : PTPlugin(host) {}
  SmartPtr<Kiln::Dom::INode> getSchema() override { return {}; }
  SmartPtr<Kiln::Dom::INode> convertPMtoPT(Kiln::Property&, Kiln::PTLevel) override { return {}; }
  void convertPTtoPM(SmartPtr<Kiln::Dom::INode>, Kiln::Property&) override {}
};

class ForeignTransition final : public Kiln::State::Transition {
 public:
  void add(Kiln::WStringView, Kiln::WStringView) override {}
};

class ForeignData final : public Kiln::XUL::ListData {
 public:
  std::int32_t count() override { return 0; }
  SmartPtr<Kiln::XUL::ListItem> at(std::int32_t) override { return {}; }
  SmartPtr<Kiln::XUL::ListItem> append(Kiln::WStringView, Kiln::WStringView) override { return {}; }
  void insert(std::int32_t, SmartPtr<Kiln::XUL::ListItem>) override {}
  SmartPtr<Kiln::XUL::ListItem> remove(std::int32_t) override { return {}; }
};

class NullArguments : public testing::Test {
 protected:
  Testing::RecordingFace face;
  Refhost::Trace trace;
  Refhost::ChromeFolders chrome{RESOURCES_FOLDER};
  Refhost::StringTables strings{chrome, "en-US"};
  Refhost::FileWorld files{Files::realDisk(), trace, {}};
  SmartPtr<Refhost::PropertyManager> manager = Refhost::make<Refhost::PropertyManager>(
      Refhost::make<Refhost::PropertyModel>(
          Refhost::readModel(std::filesystem::path(RESOURCES_FOLDER) / "models", "standard"), trace),
      trace);
  Refhost::ReferenceHost host{{face, trace, chrome, strings, files, *manager->model}};
  Refhost::WidgetWorld widgets{trace, strings, nullptr, {}, [](Refhost::WidgetNode&) {}};
};

TEST_F(NullArguments, AreRefusedByTheOperationsName) {
  const auto documents = host.documents();
  const auto element = documents->createElement(u"a", u"", u"");
  const auto list = host.listData();
  const auto box = Refhost::make<Refhost::ComboBox>(widgets, Refhost::WidgetKind::comboBox, u"box");
  EXPECT_EQ(sentenceOf([&] { host.file({}); }), "Host::file was called without a path.");
  EXPECT_EQ(sentenceOf([&] { host.path(u"a")->copyTo({}); }), "Path::copyTo was called without a path.");
  EXPECT_EQ(sentenceOf([&] { documents->read({}); }), "Documents::read was called without a store.");
  EXPECT_EQ(sentenceOf([&] { documents->write(element, {}); }), "Documents::write was called without a store.");
  EXPECT_EQ(sentenceOf([&] { documents->write({}, host.file(host.path(u"a"))); }),
            "Documents::write was called without a root.");
  EXPECT_EQ(sentenceOf([&] { element->setChild(u"a", {}); }), "INode::setChild was called without a node.");
  EXPECT_EQ(sentenceOf([&] { manager->submit({}); }), "IPropertyManager::submit was called without a transition.");
  EXPECT_EQ(sentenceOf([&] { list->insert(0, {}); }), "ListData::insert was called without an item.");
  EXPECT_EQ(sentenceOf([&] { box->setData({}); }), "Selector::setData was called without data.");
  EXPECT_EQ(sentenceOf([&] { box->changeSignal()->attach({}); }), "Signal::attach was called without a slot.");
}

TEST_F(NullArguments, OfTicketsAreRefusedWhereTheyAreNotAllowed) {
  const auto part = Refhost::make<TicketPart>(host);
  Kiln::Property& properties = *manager->model;
  EXPECT_EQ(sentenceOf([&] { host.tickets()->ticketToProperties(*part, {}, properties); }),
            "Tickets::ticketToProperties was called without a ticket.");
  EXPECT_EQ(sentenceOf([&] { host.tickets()->propertiesToTicket(*part, {}, properties, Kiln::PTLevel::job); }),
            "nothing");
}

TEST_F(NullArguments, AreAllowedWhereTheyMeanNothing) {
  const auto label = Refhost::make<Refhost::Label>(widgets, Refhost::WidgetKind::label, u"label");
  const auto image = Refhost::make<Refhost::ImageBox>(widgets, Refhost::WidgetKind::image, u"image");
  EXPECT_EQ(sentenceOf([&] { host.alignment(1)->bind({}); }), "nothing");
  EXPECT_EQ(sentenceOf([&] { label->setImage({}); }), "nothing");
  EXPECT_EQ(sentenceOf([&] { image->setImage({}); }), "nothing");
  EXPECT_EQ(sentenceOf([&] { host.listData()->append(u"a", u"a")->setImage({}); }), "nothing");
}

TEST_F(NullArguments, AreOneThingAndObjectsOfOthersAnother) {
  const auto box = Refhost::make<Refhost::ComboBox>(widgets, Refhost::WidgetKind::comboBox, u"box");
  EXPECT_EQ(sentenceOf([&] { manager->submit(Refhost::make<ForeignTransition>()); }),
            "IPropertyManager::submit was called with a transition that this host did not make.");
  EXPECT_EQ(sentenceOf([&] { box->setData(Refhost::make<ForeignData>()); }),
            "Selector::setData was called with data that this host did not make.");
}

TEST_F(NullArguments, AreAsLittleUseAsATransitionThatWasSubmittedAlready) {
  const auto transition = manager->transition(u"MirrorImage", u"None");
  EXPECT_EQ(sentenceOf([&] { manager->submit(transition); }), "nothing");
  EXPECT_EQ(sentenceOf([&] { manager->submit(transition); }),
            "IPropertyManager::submit was called with a transition for the second time.");
}

}  // namespace
