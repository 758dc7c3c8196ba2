// Files and XML documents, as far as a document node has them: elements and their texts.
#pragma once

#include "objects.h"

#include <fstream>
#include <iterator>
#include <optional>

namespace ExampleHost {

namespace fs = std::filesystem;

class Node final : public Kiln::Dom::INode {
 public:
  explicit Node(std::u16string_view elementName) : tag(elementName) {}
  Kiln::WString name() override { return text(tag); }
  Kiln::WString value() override { return text(content); }
  void setValue(Kiln::WStringView written) override { content = written.view(); }
  std::int32_t childCount() override { return static_cast<std::int32_t>(children.size()); }
  Kiln::SmartPtr<Kiln::Dom::INode> childAt(std::int32_t index) override {
    return index < 0 || index >= childCount() ? nullptr : children[static_cast<std::size_t>(index)];
  }
  Kiln::SmartPtr<Kiln::Dom::INode> child(Kiln::WStringView wanted) override {
    const std::size_t place = placeOf(wanted);
    return place == children.size() ? nullptr : children[place];
  }
  Kiln::SmartPtr<Kiln::Dom::INode> childOrNew(Kiln::WStringView wanted) override {
    const std::size_t place = placeOf(wanted);
    if (place == children.size()) append(make<Node>(wanted));
    return children[place];
  }
  void setChild(Kiln::WStringView wanted, Kiln::SmartPtr<Kiln::Dom::INode> node) override {
    const auto copied = make<Node>(wanted);
    copied->copy(*node);
    const std::size_t place = placeOf(wanted);
    if (place == children.size()) return append(copied);
    children[place] = copied;
  }
  bool removeChild(Kiln::WStringView wanted) override {
    const std::size_t place = placeOf(wanted);
    if (place == children.size()) return false;
    children.erase(children.begin() + static_cast<std::ptrdiff_t>(place));
    return true;
  }
  Kiln::SmartPtr<Kiln::Dom::INode> clone() override {
    const auto copied = make<Node>(tag);
    copied->copy(*this);
    return copied;
  }

  void append(Kiln::SmartPtr<Kiln::Dom::INode> node) { children.push_back(std::move(node)); }

 private:
  void copy(Kiln::Dom::INode& other) {
    content = other.value().str();
    for (std::int32_t i = 0; i < other.childCount(); ++i) append(other.childAt(i)->clone());
  }
  std::size_t placeOf(Kiln::WStringView wanted) const {
    std::size_t place = 0;
    while (place < children.size() && children[place]->name().view() != wanted.view()) ++place;
    return place;
  }

  std::u16string tag;
  std::u16string content;
  std::vector<Kiln::SmartPtr<Kiln::Dom::INode>> children;
};

class TextList final : public Kiln::Services::TextList {
 public:
  explicit TextList(std::vector<std::u16string> items = {}) : texts(std::move(items)) {}
  std::int32_t count() override { return static_cast<std::int32_t>(texts.size()); }
  Kiln::WString at(std::int32_t index) override {
    return index < 0 || index >= count() ? Kiln::WString() : text(texts[static_cast<std::size_t>(index)]);
  }

 private:
  std::vector<std::u16string> texts;
};

// Runs what touches the disk; its failure becomes one that the plug-in may catch.
template <class Work>
auto onDisk(const Work& work) {
  try {
    return work();
  } catch (const fs::filesystem_error& problem) {
    throw failure(problem.what());
  }
}

inline bool matches(std::u16string_view name, std::u16string_view pattern) {
  if (pattern.empty()) return name.empty();
  if (pattern.front() == u'*')
    return matches(name, pattern.substr(1)) || (!name.empty() && matches(name.substr(1), pattern));
  return !name.empty() && (pattern.front() == u'?' || pattern.front() == name.front()) &&
         matches(name.substr(1), pattern.substr(1));
}

class Path final : public Kiln::Services::Path {
 public:
  explicit Path(fs::path named) : file(std::move(named)) {}
  Kiln::WString text() override { return ExampleHost::text(file.u16string()); }
  Kiln::SmartPtr<Kiln::Services::Path> join(Kiln::WStringView name) override { return make<Path>(file / name.view()); }
  Kiln::SmartPtr<Kiln::Services::Path> folder() override { return make<Path>(file.parent_path()); }
  Kiln::WString lastPart() override { return ExampleHost::text(file.filename().u16string()); }
  bool exists() override {
    return onDisk([this] { return fs::exists(file); });
  }
  bool isFolder() override {
    return onDisk([this] { return fs::is_directory(file); });
  }
  Kiln::SmartPtr<Kiln::Services::TextList> list(Kiln::WStringView pattern) override {
    std::vector<std::u16string> names;
    onDisk([&] {
      if (!fs::is_directory(file)) return;
      for (const auto& entry : fs::directory_iterator(file))
        if (auto name = entry.path().filename().u16string(); matches(name, pattern)) names.push_back(std::move(name));
    });
    return make<TextList>(std::move(names));
  }
  void createFolder() override {
    onDisk([this] { fs::create_directories(file); });
  }
  bool remove() override {
    return onDisk([this] { return fs::remove(file); });
  }
  void copyTo(Kiln::SmartPtr<Kiln::Services::Path> to) override {
    onDisk([&] { fs::copy_file(file, to->text().view(), fs::copy_options::overwrite_existing); });
  }

 private:
  fs::path file;
};

inline std::string readFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  if (!stream) throw failure(narrow(file.u16string()) + " cannot be read.");
  return bytes;
}

// What happens to files here that the plug-in does not do.
struct Disk {
  bool isReadOnly = false;   // no file can be written
  bool isDisturbed = false;  // another program writes before the plug-in does, once
};

// Reads a file as a whole, and replaces it as a whole unless another program has changed it since.
class FileStore final : public Kiln::Services::FileBackingStoreIO {
 public:
  FileStore(Kiln::SmartPtr<Kiln::Services::Path> named, Disk& onDisk)
      : place(std::move(named)),
        file(place->text().view()),
        disk(onDisk) {}
  Kiln::SmartPtr<Kiln::Services::Path> path() override { return place; }
  Kiln::String readAll() override {
    seen = readFile(file);
    return {memory, *seen};
  }
  void write(Kiln::StringView bytes) override { pending += bytes.view(); }
  void commit() override {
    if (disk.isReadOnly) throw failure(narrow(file.u16string()) + " is read-only.");
    const bool isDisturbed = std::exchange(disk.isDisturbed, false);
    if (isDisturbed || (seen && place->exists() && readFile(file) != *seen))
      throw Kiln::FileChanged(memory, narrow(file.u16string()) + " was changed by another program.");
    onDisk([this] { fs::create_directories(fs::absolute(file).parent_path()); });
    fs::path temporary = file;
    temporary += ".new";
    std::ofstream stream(temporary, std::ios::binary);
    stream << pending;
    stream.close();
    if (!stream) throw failure(narrow(temporary.u16string()) + " cannot be written.");
    onDisk([&] { fs::rename(temporary, file); });
    report("writes " + narrow(file.filename().u16string()) + ", " + std::to_string(pending.size()) + " bytes");
    seen = std::exchange(pending, {});
  }

 private:
  Kiln::SmartPtr<Kiln::Services::Path> place;
  fs::path file;
  Disk& disk;
  std::string pending;
  std::optional<std::string> seen;
};

constexpr std::pair<std::string_view, char> references[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

// Reads elements and texts; attributes, comments and processing instructions are skipped.
class XmlReader {
 public:
  explicit XmlReader(std::string_view document) : rest(document) {}

  Kiln::SmartPtr<Node> readRoot() {
    rest.remove_prefix(std::min(rest.find('<'), rest.size()));
    while (rest.starts_with("<?") || rest.starts_with("<!")) skipMarkup();
    return readElement();
  }

 private:
  Kiln::SmartPtr<Node> readElement() {
    const std::string_view start = upTo('>');
    const bool isEmpty = start.ends_with('/');
    auto name = start.substr(1, start.find_first_of(" \t\r\n/", 1) - 1);
    name.remove_prefix(name.find(':') + 1);  // npos + 1 is 0
    auto node = make<Node>(wide(name));
    std::string content;
    while (!isEmpty && !rest.starts_with("</")) {
      if (rest.starts_with("<!--")) {
        skipMarkup();
      } else if (rest.starts_with('<')) {
        node->append(readElement());
      } else {
        readText(content);
      }
    }
    if (!isEmpty) upTo('>');
    if (node->childCount() == 0) node->setValue(wide(content));
    return node;
  }

  void readText(std::string& content) {
    if (rest.empty()) throw failure("The document ends too early.");
    for (const auto& [reference, character] : references)
      if (rest.starts_with(reference)) {
        content += character;
        return rest.remove_prefix(reference.size());
      }
    content += rest.front();
    rest.remove_prefix(1);
  }

  void skipMarkup() {
    const std::string_view end = rest.starts_with("<!--") ? "-->" : ">";
    const std::size_t place = rest.find(end);
    if (place == rest.npos) throw failure("The document ends too early.");
    rest.remove_prefix(place + end.size());
    rest.remove_prefix(std::min(rest.find('<'), rest.size()));
  }

  std::string_view upTo(char last) {
    const std::size_t place = rest.find(last);
    if (!rest.starts_with('<') || place == rest.npos) throw failure("The document is not well formed.");
    const std::string_view taken = rest.substr(0, place);
    rest.remove_prefix(place + 1);
    return taken;
  }

  std::string_view rest;
};

inline void writeXml(Kiln::Dom::INode& node, std::string& out) {
  const std::string name = narrow(node.name().view());
  out += "<" + name + ">";
  for (const char character : narrow(node.value().view())) {
    const auto* found = std::find_if(std::begin(references), std::end(references),
                                     [=](const auto& entry) { return entry.second == character; });
    out += found == std::end(references) ? std::string(1, character) : std::string(found->first);
  }
  for (std::int32_t i = 0; i < node.childCount(); ++i) writeXml(*node.childAt(i), out);
  out += "</" + name + ">";
}

class Documents final : public Kiln::Services::Documents {
 public:
  Kiln::SmartPtr<Kiln::Dom::INode> createElement(Kiln::WStringView name, Kiln::WStringView,
                                                 Kiln::WStringView) override {
    return make<Node>(name);
  }
  Kiln::SmartPtr<Kiln::Dom::INode> read(Kiln::SmartPtr<Kiln::Services::BackingStoreIO> store) override {
    const Kiln::String bytes = store->readAll();
    return XmlReader(bytes.view()).readRoot();
  }
  void write(Kiln::SmartPtr<Kiln::Dom::INode> root, Kiln::SmartPtr<Kiln::Services::BackingStoreIO> store) override {
    std::string document;
    writeXml(*root, document);
    store->write(document);
    store->commit();
  }
};

}  // namespace ExampleHost
