#include "stamp_file.h"

#include <algorithm>

namespace Stamp {
namespace {

constexpr std::size_t mostTexts = 8;

std::u16string elementName(std::size_t number) { return u"Text" + std::u16string(1, u"12345678"[number]); }

}  // namespace

std::vector<std::u16string> StampFile::texts(Kiln::Property& settings) const {
  const auto file = path(settings);
  return file ? read(file) : std::vector<std::u16string>();
}

// Another program may change the file between the reading and the writing. The change is then made again, to what the
// file holds now.
void StampFile::add(Kiln::Property& settings, std::u16string_view text) const {
  const auto file = path(settings);
  if (!file) return;
  for (int attempts = 1;; ++attempts) {
    std::vector<std::u16string> kept = read(file);
    kept.erase(std::remove(kept.begin(), kept.end(), text), kept.end());
    kept.emplace(kept.begin(), text);
    kept.resize(std::min(kept.size(), mostTexts));
    try {
      return write(file, kept);
    } catch (const Kiln::FileChanged&) {
      if (attempts == 10) throw;
    }
  }
}

Kiln::SmartPtr<Kiln::Services::Path> StampFile::path(Kiln::Property& settings) const {
  const auto folder = settings.child(u"kilnworks.user.path");
  return folder ? host.path(folder->wideValue())->join(u"stamps.xml") : nullptr;
}

std::vector<std::u16string> StampFile::read(const Kiln::SmartPtr<Kiln::Services::Path>& file) const {
  std::vector<std::u16string> found;
  if (!file->exists()) return found;
  const auto root = host.documents()->read(host.file(file));
  for (std::size_t i = 0; i < mostTexts; ++i)
    if (const auto element = root->child(elementName(i))) found.push_back(element->value().str());
  return found;
}

void StampFile::write(const Kiln::SmartPtr<Kiln::Services::Path>& file,
                      const std::vector<std::u16string>& texts) const {
  file->folder()->createFolder();
  const auto root = host.documents()->createElement(u"Stamps", u"", u"");
  if (!root) throw std::bad_alloc();
  for (std::size_t i = 0; i < texts.size(); ++i) root->childOrNew(elementName(i))->setValue(texts[i]);
  host.documents()->write(root, host.file(file));
}

}  // namespace Stamp
