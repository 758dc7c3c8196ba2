#include "window/preferences/job.h"

#include "formats/sentences.h"
#include "press/job/sample.h"

#include <QFile>
#include <QStandardPaths>

#include <filesystem>
#include <stdexcept>

namespace Window {
namespace {

std::filesystem::path writeSample(const QTemporaryDir& folder) {
  const QString path = folder.filePath("sample.pdf");
  const std::string bytes = Press::samplePdf();
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), static_cast<qint64>(bytes.size())) < 0)
    throw std::runtime_error(Formats::sentence("The sample job cannot be written to {1} ({2}): free some space.",
                                               Formats::quoted(path.toStdString()), file.errorString().toStdString()));
  return path.toStdU16String();
}

}  // namespace

void Job::prepare() {
  if (document.file.empty()) document = writeSample(sampleFolder);
}

bool Job::isSample() const {
  return sampleFolder.isValid() && document.file.parent_path() == sampleFolder.path().toStdU16String();
}

QString Job::name(const Texts& texts) const {
  return isSample() ? texts("SAMPLE") : toQt(document.file.filename().u16string());
}

QString Job::stem(const Texts& texts) const {
  return isSample() ? texts("SAMPLE") : toQt(document.file.stem().u16string());
}

QString Job::folder() const {
  return isSample() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                    : toQt(std::filesystem::absolute(document.file).parent_path().u16string());
}

}  // namespace Window
