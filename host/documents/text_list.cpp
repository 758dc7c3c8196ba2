#include "host/documents/text_list.h"

#include "host/object.h"

namespace Refhost {
namespace {

class TextList final : public Kiln::Services::TextList {
 public:
  explicit TextList(std::vector<std::u16string> listTexts) : texts(std::move(listTexts)) {}

  std::int32_t count() override { return static_cast<std::int32_t>(texts.size()); }
  Kiln::WString at(std::int32_t index) override {
    if (index < 0 || index >= count()) return {};
    return text(texts[static_cast<std::size_t>(index)]);
  }

 private:
  std::vector<std::u16string> texts;
};

}  // namespace

Kiln::SmartPtr<Kiln::Services::TextList> makeTextList(std::vector<std::u16string> texts) {
  return make<TextList>(std::move(texts));
}

}  // namespace Refhost
