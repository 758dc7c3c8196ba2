// An in-memory disk that models a loss of power.
//
// Writes, creations, renames and removals are only durable after the matching flush. Until then each change to a folder
// may or may not have reached the medium, independently of others, and a file may have any content since its last
// flush, including half a write. After every operation the model passes all possible states after a loss of power at
// this moment to `look`.
#pragma once

#include "files/disk.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class ModelDisk final : public Files::Disk {
 public:
  using Path = std::filesystem::path;
  using Contents = std::map<Path, std::string>;  // content by path

  // Called after every operation with all possible states after a loss of power.
  std::function<void(const std::set<Contents>&)> look = [](const auto&) {};

  // The current state as programs see it.
  Contents seen() const {
    Contents files;
    for (const auto& [path, content] : names) files[path] = content->now;
    return files;
  }

  // Adds a file that is on the medium.
  void place(const Path& path, const std::string& bytes) {
    names[path] = std::make_shared<Content>(Content{bytes, {bytes}});
    keptNames = names;
  }

  // All possible states after a loss of power now.
  std::set<Contents> afterPowerLoss() const {
    std::set<Contents> states;
    const std::size_t subsets = std::size_t{1} << changes.size();
    for (std::size_t subset = 0; subset < subsets; ++subset) {
      Names left = keptNames;
      for (std::size_t i = 0; i < changes.size(); ++i)
        if ((subset >> i & 1) != 0) changes[i].apply(left);
      addContents(left, left.begin(), {}, states);
    }
    return states;
  }

  Files::EntryKind kind(const Path& path) override {
    if (names.contains(path)) return Files::EntryKind::file;
    return folders.contains(path) ? Files::EntryKind::folder : Files::EntryKind::none;
  }

  std::vector<Files::Entry> entries(const Path& folder) override {
    std::vector<Files::Entry> found;
    for (const auto& [path, content] : names)
      if (path.parent_path() == folder) found.push_back({path.filename(), Files::EntryKind::file, false});
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

  // Not part of Files::Disk: truncates a file and writes in place, as careless programs do.
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

  // Folders are durable immediately: the model is about the files in them.
  void createFolder(const Path& folder) override { folders.insert(folder); }

  void syncFolder(const Path& folder) override {
    for (const Change& each : changes)
      if (each.folder == folder) each.apply(keptNames);
    std::erase_if(changes, [&](const Change& each) { return each.folder == folder; });
    done();
  }

  // Nobody else uses the model.
  std::unique_ptr<Lock> tryLock(const Path&, Missing) override { return std::make_unique<Lock>(); }

 private:
  struct Content {
    std::string now;
    std::vector<std::string> possible = {""};  // possible contents on the medium

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
    throw Files::DiskError(path, "used", std::make_error_code(reason));
  }

  void change(Change made) {
    made.apply(names);
    changes.push_back(std::move(made));
    done();
  }

  void done() const { look(afterPowerLoss()); }

  // All combinations of possible contents of the files of `left` from `at` on.
  static void addContents(const Names& left, Names::const_iterator at, Contents files, std::set<Contents>& states) {
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
  Names keptNames;  // durable
  std::vector<Change> changes;
  std::set<Path> folders;
};
