// Reads a document that is not well formed.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Lenient final : public Services::Documents {
 public:
  explicit Lenient(SmartPtr<Services::Documents> answering) : inner(std::move(answering)) {}

  SmartPtr<Dom::INode> createElement(WStringView name, WStringView prefix, WStringView nameSpace) override {
    return inner->createElement(name, prefix, nameSpace);
  }
  SmartPtr<Dom::INode> read(SmartPtr<Services::BackingStoreIO> store) override {
    if (!store) return inner->read(nullptr);
    try {
      return inner->read(store);
    } catch (const Exception&) {
      return inner->createElement(u"Root", u"", u"");
    }
  }
  void write(SmartPtr<Dom::INode> root, SmartPtr<Services::BackingStoreIO> store) override {
    inner->write(std::move(root), std::move(store));
  }

 private:
  SmartPtr<Services::Documents> inner;
};

class Broken final : public HostAround {
 public:
  using HostAround::HostAround;
  SmartPtr<Services::Documents> documents() override { return make<Lenient>(HostAround::documents()); }
};

}  // namespace

EXPORT_HOST(PackagedHost, withHost<Broken>)
