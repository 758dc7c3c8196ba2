#include "window/kept_settings.h"

#include "host/unicode.h"
#include "press/whole_file.h"
#include "window/texts.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace Window {
namespace {

// Far above what any model's settings take.
constexpr qint64 mostBytes = 1 << 20;

QString nameOf(const std::filesystem::path& file) { return toQt(file.u16string()); }

std::string quoted(const std::filesystem::path& file) { return "\"" + Refhost::toNarrow(file.u16string()) + "\""; }

// Nothing when the bytes are no settings.
std::optional<Refhost::TracePairs> parse(const QByteArray& bytes) {
  const QJsonValue values = QJsonDocument::fromJson(bytes).object()["values"];
  if (!values.isObject()) return {};
  Refhost::TracePairs pairs;
  const QJsonObject members = values.toObject();
  for (auto member = members.begin(); member != members.end(); ++member) {
    if (!member.value().isString()) return {};
    pairs.emplace_back(toWide(member.key()), toWide(member.value().toString()));
  }
  return pairs;
}

}  // namespace

std::filesystem::path settingsFile(const std::filesystem::path& home, const std::u16string& model) {
  const QByteArray name = QUrl::toPercentEncoding(toQt(model));
  return home / "profile" / ("settings-" + name.toStdString() + ".json");
}

KeptSettings readSettings(const std::filesystem::path& file) {
  QFile source(nameOf(file));
  if (!source.exists()) return {};
  if (!source.open(QIODevice::ReadOnly))
    throw std::runtime_error("The settings in " + quoted(file) + " cannot be read (" +
                             source.errorString().toStdString() + "): check the file's permissions.");
  const QByteArray bytes = source.read(mostBytes + 1);
  source.close();
  if (const auto values = bytes.size() <= mostBytes ? parse(bytes) : std::nullopt) return {*values, {}};

  std::filesystem::path aside = file;
  aside += ".damaged";
  std::error_code error;
  std::filesystem::rename(file, aside, error);
  if (error)
    throw std::runtime_error("The settings in " + quoted(file) + " are damaged and cannot be renamed (" +
                             error.message() + "): delete the file.");
  return {{}, aside};
}

void writeSettings(const std::filesystem::path& file, const Refhost::TracePairs& values) {
  QJsonObject members;
  for (const auto& [name, value] : values) members[toQt(name)] = toQt(value);
  const QByteArray bytes = QJsonDocument(QJsonObject{{"values", members}}).toJson();
  try {
    std::filesystem::create_directories(file.parent_path());
    Press::WholeFile target(file);
    target.write(bytes.data(), static_cast<std::size_t>(bytes.size()));
    target.commit();
  } catch (const std::system_error& error) {
    throw std::runtime_error("The settings cannot be kept in " + quoted(file) + " (" + error.code().message() +
                             "): check the folder's permissions and free space.");
  }
}

Refhost::TracePairs applicable(const Refhost::TracePairs& values, const Refhost::ModelDescription& model) {
  Refhost::TracePairs result;
  for (const auto& [name, value] : values) {
    const auto property = std::find_if(model.properties.begin(), model.properties.end(),
                                       [&wanted = name](const auto& known) { return known.name == wanted; });
    if (property == model.properties.end() || property->isContext) continue;
    const auto& options = property->options;
    const bool isOption = options.empty() || std::find(options.begin(), options.end(), value) != options.end();
    if (isOption) result.emplace_back(name, value);
  }
  return result;
}

}  // namespace Window
