// A disk in memory that knows what a loss of power may leave of it.
//
// What was written, created, renamed or removed is only promised after the matching flush. Until then each change to a
// folder may have reached the medium or not, whatever came before or after it; and a file may hold what it held at any
// moment since its last flush, also half of a write. After every operation the model hands all states that a loss of
// power at this moment may leave to `look`.
#pragma once

#include "host/documents/disk.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class ModelDisk final : public Refhost::Disk {
 public:
  using Path = std::filesystem::path;
  using Files = std::map<Path, std::string>;  // by path, what they hold

  // Called after every operation with every state that may be found when the power comes back.
  std::function<void(const std::set<Files>&)> look = [](const auto&) {};

  // Everything so far, as programs see it.
  Files seen() const {
    Files files;
    for (const auto& [path, content] : names) files[path] = content->now;
    return files;
  }

  // A file as it lies on the medium.
  void place(const Path& path, const std::string& bytes) {
    names[path] = std::make_shared<Content>(Content{bytes, {bytes}});
    keptNames = names;
  }

  // What a loss of power now may leave.
  std::set<Files> afterPowerLoss() const {
    std::set<Files> states;
    const std::size_t subsets = std::size_t{1} << changes.size();
    for (std::size_t subset = 0; subset < subsets; ++subset) {
      Names left = keptNames;
      for (std::size_t i = 0; i < changes.size(); ++i)
        if ((subset >> i & 1) != 0) changes[i].apply(left);
      addContents(left, left.begin(), {}, states);
    }
    return states;
  }

  Refhost::EntryKind kind(const Path& path) override {
    if (names.contains(path)) return Refhost::EntryKind::file;
    return folders.contains(path) ? Refhost::EntryKind::folder : Refhost::EntryKind::none;
  }

  std::vector<Refhost::Entry> entries(const Path& folder) override {
    std::vector<Refhost::Entry> found;
    for (const auto& [path, content] : names)
      if (path.parent_path() == folder) found.push_back({path.filename(), Refhost::EntryKind::file, false});
    return found;
  }

  std::chrono::seconds age(const Path&) override { return {}; }

  std::string read(const Path& file, std::size_t limit) override {
    const auto found = names.find(file);
    if (found == names.end()) fail(file, std::errc::no_such_file_or_directory);
    if (found->second->now.size() > limit) fail(file, std::errc::file_too_large);
    return found->second->now;
  }

  std::unique_ptr<File> create(const Path& temporary, const Path&) override {
    if (names.contains(temporary)) fail(temporary, std::errc::file_exists);
    auto content = std::make_shared<Content>();
    change({temporary.parent_path(), [=](Names& all) { all[temporary] = content; }});
    return std::make_unique<ModelFile>(*this, content);
  }

  // Not of a Disk: opens a file where it lies and empties it, as careless programs do.
  std::unique_ptr<File> openInPlace(const Path& path) {
    const auto content = names.at(path);
    content->become("");
    done();
    return std::make_unique<ModelFile>(*this, content);
  }

  void replace(const Path& temporary, const Path& target) override {
    const auto content = names.at(temporary);
    change({target.parent_path(), [=](Names& all) {
              all.erase(temporary);
              all[target] = content;
            }});
  }

  bool remove(const Path& file) override {
    if (!names.contains(file)) return false;
    change({file.parent_path(), [=](Names& all) { all.erase(file); }});
    return true;
  }

  // Folders are on the medium at once: what becomes of files in a folder is what is asked here.
  void createFolder(const Path& folder) override { folders.insert(folder); }

  void syncFolder(const Path& folder) override {
    for (const Change& each : changes)
      if (each.folder == folder) each.apply(keptNames);
    std::erase_if(changes, [&](const Change& each) { return each.folder == folder; });
    done();
  }

 private:
  struct Content {
    std::string now;
    std::vector<std::string> possible = {""};  // what the medium may hold

    void become(std::string bytes) {
      now = std::move(bytes);
      possible.push_back(now);
    }
  };
  using Names = std::map<Path, std::shared_ptr<Content>>;

  struct Change {
    Path folder;
    std::function<void(Names&)> apply;
  };

  class ModelFile final : public File {
   public:
    ModelFile(ModelDisk& modelDisk, std::shared_ptr<Content> fileContent)
        : disk(modelDisk),
          content(std::move(fileContent)) {}

    void write(std::string_view bytes) override {
      const std::string before = content->now;
      content->possible.push_back(before + std::string(bytes.substr(0, bytes.size() / 2)));
      content->become(before + std::string(bytes));
      disk.done();
    }
    void sync() override {
      content->possible = {content->now};
      disk.done();
    }
    void close() override { disk.done(); }

   private:
    ModelDisk& disk;
    std::shared_ptr<Content> content;
  };

  [[noreturn]] static void fail(const Path& path, std::errc reason) {
    throw Refhost::DiskError(path, "used", std::make_error_code(reason));
  }

  void change(Change made) {
    made.apply(names);
    changes.push_back(std::move(made));
    done();
  }

  void done() const { look(afterPowerLoss()); }

  // All that the files of `left` from `at` on may hold, each with each.
  static void addContents(const Names& left, Names::const_iterator at, Files files, std::set<Files>& states) {
    if (at == left.end()) {
      states.insert(std::move(files));
      return;
    }
    for (const std::string& possible : at->second->possible) {
      files[at->first] = possible;
      addContents(left, std::next(at), files, states);
    }
  }

  Names names;      // as programs see them
  Names keptNames;  // as they are promised
  std::vector<Change> changes;
  std::set<Path> folders;
};
