#include "check/host/play.h"

#include "formats/text.h"

#include <utility>

namespace Checking {
namespace {

// The one play of this process: createPlugin has no argument for it.
Play* current = nullptr;

std::string utf8(const std::filesystem::path& path) { return Formats::toUtf8(path.u16string()); }

}  // namespace

class PlayedPlugin final : public Kiln::UIPlugin, public Kiln::PTPlugin {
 public:
  PlayedPlugin(Play& owner, Kiln::Host& lender, const Kiln::String& name, const Kiln::PropertyManager& manager,
               Kiln::SmartPtr<Kiln::Services::Library> library)
      : UIPlugin(lender, name, manager, std::move(library)),
        PTPlugin(lender),
        play(owner) {
    play.plugin = this;
  }
  ~PlayedPlugin() override {
    if (play.plugin == this) play.plugin = nullptr;
    play.note("destroyed");
    if (play.onDestroy) play.onDestroy();
  }

  void create() override { run("create", play.onCreate); }
  void initialise() override { run("initialise", play.onInitialise); }
  void configureUI(Kiln::SmartPtr<Kiln::XUL::GUI> given) override {
    demand(bool(given), "configureUI is called without a GUI.");
    gui = std::move(given);
    gui->load(u"chrome://check/content/tab.xul");
    gui->readySignal()->attach(play.slot<Kiln::SmartPtr<Kiln::XUL::GUI>>(
        [this](const auto&) { run(isConfigured ? "ready" : "ready before configureUI has returned", play.onReady); }));
    run("configureUI", play.onConfigure);
    isConfigured = true;
  }
  bool rootlessActivation() override {
    play.note("rootlessActivation");
    return play.onRootless && play.onRootless();
  }

  void* queryInterface(Kiln::StringView asked) noexcept override { return PTPlugin::queryInterface(asked); }
  Kiln::SmartPtr<Kiln::Dom::INode> getSchema() override {
    return tickets->loadSchema(u"chrome://check/content/schema.xml");
  }
  Kiln::SmartPtr<Kiln::Dom::INode> convertPMtoPT(Kiln::Property& properties, Kiln::PTLevel level) override {
    const auto element = host().documents()->createElement(u"PrintTicket", u"psk", u"psk");
    tickets->propertiesToTicket(*this, element, properties, level);
    return element;
  }
  void convertPTtoPM(Kiln::SmartPtr<Kiln::Dom::INode> ticket, Kiln::Property& properties) override {
    tickets->ticketToProperties(*this, std::move(ticket), properties);
  }

  Kiln::SmartPtr<Kiln::XUL::GUI> gui;

 private:
  void run(const char* step, const std::function<void()>& action) {
    play.note(step);
    if (action) action();
  }

  Play& play;
  bool isConfigured = false;
};

Play::Play(const Subject& subject) {
  current = this;
  try {
    module.emplace(subject.library);
  } catch (const std::runtime_error& problem) {
    throw Failed(std::string("The library cannot be loaded: ") + problem.what() + ".");
  }
  module->keepLoaded();  // exceptions contain its code
  auto* create = module->function<CreateHost>("createHost");
  demand(create != nullptr, "The library exports no createHost.");
  const std::filesystem::path packages = subject.resources.find("check").parent_path();
  under.reset(create(*this, utf8(packages).c_str(), utf8(subject.home).c_str()));
  demand(bool(under), "createHost returns null.");
}

Play::~Play() {
  under->close();
  under.reset();
  current = nullptr;
}

void Play::open(Opened mode) { under->open(createPlugin, mode); }

void Play::openAndTry(const std::function<void()>& whenReady) {
  std::exception_ptr failure;
  bool isRun = false;
  onReady = [&] {
    isRun = true;
    try {
      whenReady();
    } catch (...) {
      failure = std::current_exception();
    }
  };
  open();
  onReady = nullptr;
  if (failure) std::rethrow_exception(failure);
  demand(isRun, "The host does not fire the GUI's ready signal.");
}

Kiln::UIPlugin* Play::createPlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name,
                                   void* reserved, Kiln::SmartPtr<Kiln::Services::Library> library) {
  Play& play = *current;
  if (name.view() == Kiln::versionQuestion) {
    const bool isAsked = reserved != nullptr && !manager && !library;
    play.note(isAsked ? "version" : "version, with other arguments than the contract's");
    if (reserved != nullptr) static_cast<Kiln::VersionExchange*>(reserved)->plugin = play.version;
    return nullptr;
  }
  play.note("createPlugin");
  play.givenHost = &host;
  return new (host.allocator()) PlayedPlugin(play, host, name, manager, std::move(library));
}

Kiln::PropertyManager Play::manager() const {
  demand(plugin != nullptr, "The host has made no plug-in.");
  return plugin->propertyManager();
}

Kiln::SmartPtr<Kiln::XUL::GUI> Play::gui() const {
  demand(plugin != nullptr && plugin->gui, "The host has passed no GUI.");
  return plugin->gui;
}

Kiln::SmartPtr<Kiln::PTPlugin> Play::ticketPart() const { return Kiln::SmartPtr<Kiln::PTPlugin>(plugin); }

Kiln::SignalTarget& Play::target() const { return *plugin; }

void Play::followProperties() {
  for (const char16_t* name : {u"CheckText", u"CheckSwitch", u"CheckSize", u"CheckColour"}) {
    follow<Kiln::ModelEnableChange&>(model()->enableChangeSignal(name), [this](Kiln::ModelEnableChange& change) {
      note(Formats::toUtf8(change.property.view()) + "." + Formats::toUtf8(change.option.view()) +
           (change.enabled ? "+" : "-"));
    });
    follow<Kiln::ModelSelectionChange&>(
        model()->selectionChangeSignal(name), [this, name](Kiln::ModelSelectionChange& change) {
          note(Formats::toUtf8(std::u16string_view(name)) + "=" + Formats::toUtf8(change.value.view()));
        });
  }
}

void Play::submit(const Pairs& pairs) {
  const auto transition = manager()->transition(pairs.front().first, pairs.front().second);
  for (std::size_t i = 1; i < pairs.size(); ++i) transition->add(pairs[i].first, pairs[i].second);
  manager()->submit(transition);
}

std::string Play::value(const char16_t* property) const {
  return std::string(model()->child(property)->narrowValue().view());
}

std::string shown(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += (text.empty() ? "" : ", ") + line;
  return text.empty() ? "nothing" : text;
}

void demandLog(const std::vector<std::string>& found, const std::vector<std::string>& expected,
               const std::string& what) {
  demand(found == expected, what + ": expected " + shown(expected) + "; found " + shown(found) + ".");
}

std::optional<std::string> exceptionOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const Kiln::Exception& refusal) {
    return refusal.what();
  }
  return {};
}

}  // namespace Checking
