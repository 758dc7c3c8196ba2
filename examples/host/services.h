// What a plug-in asks of the host besides properties and widgets. What this host does not have is answered as the
// contract says: with null, with the text itself, or with an exception.
#pragma once

#include "documents.h"
#include "objects.h"

namespace ExampleHost {

// This host makes no PrintTickets; but a plug-in that could asks for the service when it is made.
class Tickets final : public Kiln::Services::Tickets {
 public:
  Kiln::SmartPtr<Kiln::Dom::INode> loadSchema(Kiln::WStringView) override { refuse(); }
  void propertiesToTicket(Kiln::PTPlugin&, Kiln::SmartPtr<Kiln::Dom::INode>, Kiln::Property&, Kiln::PTLevel) override {
    refuse();
  }
  void ticketToProperties(Kiln::PTPlugin&, Kiln::SmartPtr<Kiln::Dom::INode>, Kiln::Property&) override { refuse(); }

 private:
  [[noreturn]] static void refuse() { throw failure("This host makes no PrintTickets."); }
};

class Alignment final : public Kiln::XUL::Alignment {
 public:
  void bind(Kiln::SmartPtr<Kiln::XUL::Widget>) override {}
};

class Host final : public Kiln::Host {
 public:
  explicit Host(fs::path resourceFolder) : resources(std::move(resourceFolder)) {}

  Kiln::Allocator& allocator() noexcept override { return memory; }
  bool isPluginActive(Kiln::StringView) override { return true; }
  void showPluginHelp(Kiln::StringView plugin) override { report("shows the help of " + std::string(plugin.view())); }
  void showHelpTopic(Kiln::WStringView url, Kiln::WStringView topic) override {
    report("shows the help " + narrow(url) + " at " + narrow(topic));
  }
  Kiln::SmartPtr<Kiln::Services::TextList> attributeNames(Kiln::WStringView) override { return make<TextList>(); }
  void runJobStep() override {}
  void cancelJob() override { report("cancels the job"); }
  Kiln::SmartPtr<Kiln::XUL::ListData> listData() override { throw failure("This host has no lists."); }
  Kiln::SmartPtr<Kiln::XUL::Alignment> alignment(std::int32_t) override { return make<Alignment>(); }
  Kiln::SmartPtr<Kiln::XUL::Image> image(Kiln::WStringView, Kiln::WStringView) override { return nullptr; }
  Kiln::SmartPtr<Kiln::XUL::Image> swatch(Kiln::WStringView, std::int32_t, std::int32_t) override { return nullptr; }
  Kiln::SmartPtr<Kiln::XUL::Image> scaledImage(Kiln::WStringView, Kiln::WStringView, float) override { return nullptr; }
  Kiln::WString translate(Kiln::WStringView words) override { return text(words); }
  Kiln::WString lookUp(Kiln::WStringView, Kiln::WStringView) override { return {}; }
  Kiln::SmartPtr<Kiln::Services::TextList> locales(Kiln::WStringView) override { return make<TextList>(); }
  Kiln::WString languageName() override { return text(u"English"); }
  bool isJapanese() override { return false; }
  Kiln::SmartPtr<Kiln::Services::TextList> fontNames() override { return nullptr; }
  Kiln::SmartPtr<Kiln::Services::Path> path(Kiln::WStringView name) override { return make<Path>(name.view()); }
  Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> file(Kiln::SmartPtr<Kiln::Services::Path> place) override {
    return make<FileStore>(std::move(place), disk);
  }
  Kiln::SmartPtr<Kiln::Services::BackingStoreIO> resource(Kiln::WStringView url) override {
    constexpr std::u16string_view scheme = u"chrome://";
    if (!url.view().starts_with(scheme)) throw failure(narrow(url) + " is no address of a resource.");
    return make<FileStore>(make<Path>(resources / url.view().substr(scheme.size())), packages);
  }
  Kiln::SmartPtr<Kiln::Services::Documents> documents() override { return documentService; }
  Kiln::SmartPtr<Kiln::Services::Tickets> tickets() override { return ticketService; }
  void tell(Kiln::WStringView sentence) override { report("tells: " + narrow(sentence)); }

  Disk disk;

 private:
  fs::path resources;
  Disk packages{.isReadOnly = true};
  Kiln::SmartPtr<Documents> documentService = make<Documents>();
  Kiln::SmartPtr<Tickets> ticketService = make<Tickets>();
};

}  // namespace ExampleHost
