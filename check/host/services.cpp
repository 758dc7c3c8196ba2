// The host's services: arguments and results that are null, texts, files, tickets.
#include "check/host/groups.h"
#include "check/host/play.h"
#include "formats/text.h"

#include <fstream>

namespace Checking {
namespace {

// In two parts: no table is to have it.
constexpr const char16_t* unknownReference = u"$IDS_"
                                             u"NOWHERE;";

void refusesNull(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Kiln::Host& host = play.host();
    const auto documents = host.documents();
    const auto element = documents->createElement(u"a", u"", u"");
    const auto expect = [](const char* sentence, const std::function<void()>& work) {
      const std::string found = exceptionOf(work).value_or("no Exception");
      demand(found == sentence, std::string("Expected \"") + sentence + "\"; found \"" + found + "\".");
    };
    expect("Host::file was called without a path.", [&] { host.file({}); });
    expect("Path::copyTo was called without a path.", [&] { host.path(u"a")->copyTo({}); });
    expect("Documents::read was called without a store.", [&] { documents->read({}); });
    expect("Documents::write was called without a store.", [&] { documents->write(element, {}); });
    expect("INode::setChild was called without a node.", [&] { element->setChild(u"a", {}); });
    expect("IPropertyManager::submit was called without a transition.", [&] { play.manager()->submit({}); });
    expect("ListData::insert was called without an item.", [&] { host.listData()->insert(0, {}); });
    host.alignment(1)->bind({});
    play.widget<Kiln::XUL::Label>(u"lbl")->setImage({});
  });
}

void returnsNull(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Kiln::Host& host = play.host();
    demand(!play.gui()->widgetById(u"nothing"), "widgetById returns a widget that no layout has.");
    demand(!host.image(u"chrome://check/content/nothing.bmp", u""), "image returns a picture that is not there.");
    demand(!host.swatch(u"nothing", 1, 1), "swatch returns a picture of what is no colour.");
    demand(!play.gui()->openDialog(u"chrome://check/content/nothing.xul"),
           "openDialog returns a dialog that is not there.");
    demand(!play.user().told().empty(), "The user is not told of a dialog that cannot be loaded.");
    demand(!host.listData()->at(0) && !host.listData()->remove(0), "A list without items has one.");
    demand(!host.documents()->createElement(u"a", u"", u"")->child(u"b"), "A node without children has one.");
    demand(host.queryInterface("nothing") == nullptr, "The host has an interface of the name \"nothing\".");
  });
}

void resolvesTexts(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Kiln::Host& host = play.host();
    demand(host.translate(u"$IDS_CHECK_TEXT;").view() == u"Text", "translate does not resolve a reference.");
    demand(host.translate(unknownReference).view() == unknownReference, "translate changes an unknown reference.");
    demand(host.translate(u"Plain").view() == u"Plain", "translate changes a text that is no reference.");
    const char16_t* german = u"chrome://check/content/de-DE/strings.dtd";
    demand(host.lookUp(german, u"$IDS_CHECK_TEXT;").view() == u"Wort", "lookUp does not find a text of a table.");
    demand(host.lookUp(german, unknownReference).empty(), "lookUp finds a text that no table has.");
    demand(host.locales(u"check")->count() == 6, "The package check does not have six locales.");
    demand(host.locales(u"nothing")->count() == 0, "A package that there is not has locales.");
    demand(!host.languageName().empty(), "The user's language has no name.");
  });
}

void replacesFilesWhole(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Kiln::Host& host = play.host();
    const auto path = host.path(subject.home.u16string())->join(u"check/file.txt");
    path->folder()->createFolder();
    demand(!path->exists(), "A file exists before it was written.");
    const auto write = [&](const char* bytes, bool commits) {
      const auto file = host.file(path);
      file->write(bytes);
      if (commits) file->commit();
    };
    write("one", true);
    write("two", false);
    demand(host.file(path)->readAll().view() == "one", "A file has other bytes than those that were committed last.");
    write("three", true);
    demand(host.file(path)->readAll().view() == "three", "A commit does not replace the file whole.");
    demand(path->folder()->list(u"*")->count() == 1, "A commit leaves another file behind.");
    demand(path->remove() && !path->remove(), "remove does not tell whether there was a file.");
    demand(exceptionOf([&] { host.file(path)->readAll(); }).has_value(), "A file that is not there can be read.");
  });
}

void tellsChangedFiles(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Kiln::Host& host = play.host();
    const auto path = host.path(subject.home.u16string())->join(u"shared.txt");
    const auto changeElsewhere = [&] { std::ofstream(subject.home / "shared.txt", std::ios::binary) << "another's"; };
    const auto write = [&] {
      const auto file = host.file(path);
      file->write("mine");
      file->commit();
    };
    write();
    host.file(path)->readAll();
    changeElsewhere();
    bool isTold = false;
    try {
      write();
    } catch (const Kiln::FileChanged&) {
      isTold = true;
    }
    demand(isTold, "A commit throws no FileChanged where another program has changed the file.");
    demand(host.file(path)->readAll().view() == "another's", "A commit overwrites what another program has written.");
    write();
    demand(host.file(path)->readAll().view() == "mine", "A file that was read again cannot be written.");
  });
}

// A path and a transition that the plug-in has made.
class ForeignPath final : public Kiln::Services::Path {
 public:
  explicit ForeignPath(Kiln::Host& lender) : host(lender) {}
  Kiln::WString text() override { return host.path(u"foreign")->text(); }
  Kiln::SmartPtr<Path> join(Kiln::WStringView name) override { return host.path(u"foreign")->join(name); }
  Kiln::SmartPtr<Path> folder() override { return {}; }
  Kiln::WString lastPart() override { return host.path(u"foreign")->lastPart(); }
  bool exists() override { return false; }
  bool isFolder() override { return false; }
  Kiln::SmartPtr<Kiln::Services::TextList> list(Kiln::WStringView) override { return host.locales(u"nothing"); }
  void createFolder() override {}
  bool remove() override { return false; }
  void copyTo(Kiln::SmartPtr<Path>) override {}

 private:
  Kiln::Host& host;
};

class ForeignTransition final : public Kiln::State::Transition {
 public:
  void add(Kiln::WStringView, Kiln::WStringView) override {}
};

template <class Foreign, class... Arguments>
Kiln::SmartPtr<Foreign> foreign(Kiln::Host& host, Arguments&... arguments) {
  Kiln::SmartPtr<Foreign> made(new (host.allocator()) Foreign(arguments...));
  if (!made) throw std::bad_alloc();
  return made;
}

// A host that crashes here takes them for its own; one that does without them need not say so.
void survivesForeignObjects(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Kiln::Host& host = play.host();
    const auto path = foreign<ForeignPath>(host, host);
    exceptionOf([&] { host.file(path); });
    exceptionOf([&] { host.path(u"a")->copyTo(path); });
    exceptionOf([&] { play.manager()->submit(foreign<ForeignTransition>(host)); });
    for (const char16_t* size : {u"Large", u"Small"}) {
      play.submit({{u"CheckSize", size}});
      demand(play.value(u"CheckSize") == Formats::toUtf8(std::u16string_view(size)),
             "After a foreign transition, one of the host's own is lost.");
    }
  });
}

void readsAndWritesDocuments(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Kiln::Host& host = play.host();
    const auto documents = host.documents();
    const auto root = documents->createElement(u"Root", u"", u"");
    root->childOrNew(u"A")->setValue(u"<&>");
    root->childOrNew(u"B");
    const auto path = host.path(subject.home.u16string())->join(u"check.xml");
    documents->write(root, host.file(path));
    const auto read = documents->read(host.file(path));
    demand(read->name().view() == u"Root" && read->childCount() == 2 && read->child(u"A")->value().view() == u"<&>" &&
               !read->childAt(2) && read->removeChild(u"B") && !read->removeChild(u"B"),
           "A document does not come back as it was written.");
    const auto file = host.file(path);
    file->write("<Root>");
    file->commit();
    demand(exceptionOf([&] { documents->read(host.file(path)); }).has_value(),
           "A document that is not well formed can be read.");
  });
}

// All names in a document.
void addNames(const Kiln::SmartPtr<Kiln::Dom::INode>& node, int& nodes) {
  ++nodes;
  for (std::int32_t i = 0; i < node->childCount(); ++i) addNames(node->childAt(i), nodes);
}

void separatesLevels(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    play.submit({{u"CheckSize", u"Large"}});
    const auto ticketOf = [&](Kiln::PTLevel level) {
      int nodes = 0;
      addNames(play.ticketPart()->convertPMtoPT(*play.model(), level), nodes);
      return nodes;
    };
    const int page = ticketOf(Kiln::PTLevel::page);
    demand(page > 1, "A page's ticket has no settings.");
    demand(page < ticketOf(Kiln::PTLevel::job), "A page's ticket has the settings of a job.");
    const auto ticket = play.ticketPart()->convertPMtoPT(*play.model(), Kiln::PTLevel::job);
    play.submit({{u"CheckSize", u"Small"}});
    play.ticketPart()->convertPTtoPM(ticket, *play.model());
    demand(play.value(u"CheckSize") == "Large", "A ticket does not give back the option that it has.");
    const auto nonsense = play.host().documents()->createElement(u"Nonsense", u"", u"");
    demand(exceptionOf([&] { play.ticketPart()->convertPTtoPM(nonsense, *play.model()); }).has_value(),
           "ticketToProperties takes a document that is no ticket.");
  });
}

void firesProfileSignals(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    play.follow<Kiln::ImportExportEventArg>(play.manager()->profileExportSignal(),
                                            [&](const auto& event) { play.note(event ? "export" : "nothing"); });
    play.follow<Kiln::ImportExportEventArg>(play.manager()->profileImportSignal(),
                                            [&](const auto& event) { play.note(event ? "import" : "nothing"); });
  });
  play.log.clear();
  play.user().exportProfile();
  play.user().importProfile();
  demandLog(play.log, {"export", "import"}, "The signals when the user saves a profile and loads it");
}

}  // namespace

std::vector<Check> serviceChecks() {
  return {{"services/null-argument", "refuses null where it is not allowed, by the operation's name", refusesNull},
          {"services/null-result", "returns null for what there is not", returnsNull},
          {"services/texts", "resolves texts by the string tables, and leaves others alone", resolvesTexts},
          {"services/files", "replaces files whole, by a commit alone", replacesFilesWhole},
          {"services/file-changed", "overwrites nothing that another program has written meanwhile", tellsChangedFiles},
          {"services/foreign", "refuses or leaves alone objects that it did not make", survivesForeignObjects},
          {"services/documents", "reads documents as they were written", readsAndWritesDocuments},
          {"services/tickets", "leaves settings of a wider scope out of tickets", separatesLevels},
          {"services/profiles", "fires the signals of profiles", firesProfileSignals}};
}

}  // namespace Checking
