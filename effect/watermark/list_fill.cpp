#include "effect/watermark/list_fill.h"

namespace Effect {
namespace {

void addItem(Kiln::Host& host, std::u16string_view id, Kiln::Dom::INode& record, Kiln::XUL::ListData& list,
             const ListOptions& options) {
  const Kiln::WString name = fieldText(record, Field::stylename);
  if (name.empty()) return;
  const auto first = list.at(0);
  if (name.view() == Token::none && first && first->value().view() == noneId) return;

  const auto item = list.append(host.translate(name), id);
  if (!options.downloadedIcon || !isDownloaded(record)) return;
  item->setImage(options.downloadedIcon);
  item->setColour(downloadedColour);
  item->setMarked(true);
}

void removeBuiltIn(Kiln::XUL::ListData& list) {
  for (std::int32_t i = list.count() - 1; i >= 0; --i)
    if (isBuiltIn(list.at(i)->value().view())) list.remove(i);
}

}  // namespace

bool isBuiltIn(std::u16string_view id) { return id.size() == 1 && id.front() >= u'1' && id.front() <= u'5'; }

// An id from an untrusted file may sort before "0"; the tab relies on the none entry being first.
void fillWatermarkList(Kiln::Host& host, const WatermarkRecords& records, Kiln::XUL::ListData& list,
                       const ListOptions& options) {
  if (const auto none = records.find(noneId); none != records.end())
    addItem(host, noneId, *none->second, list, options);
  for (const auto& [id, record] : records)
    if (id != noneId) addItem(host, id, *record, list, options);
  if (options.hidesBuiltIn) removeBuiltIn(list);
}

}  // namespace Effect
