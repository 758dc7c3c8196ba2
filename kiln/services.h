// What the host does with files, documents and texts on a plug-in's behalf.
#pragma once

#include "kiln/dom.h"
#include "kiln/ref_count.h"
#include "kiln/text.h"

namespace Kiln::Services {

// The loaded library of a plug-in. The host keeps its own reference until after the plug-in is destroyed.
class Library : public RefCount {};

// Texts in order, for example font names or locales.
class TextList : public RefCount {
 public:
  // The number of texts. [plug-in]
  virtual std::int32_t count() = 0;

  // The text at `index`, from 0; empty when out of range. [plug-in]
  virtual WString at(std::int32_t index) = 0;
};

// A path of the host's file system; it need not exist. Immutable.
class Path : public RefCount {
 public:
  // The path in the notation of the system. [plug-in]
  virtual WString text() = 0;

  // This path followed by `name`, which may have several components. [plug-in]
  virtual SmartPtr<Path> join(WStringView name) = 0;

  // The parent folder. [plug-in]
  virtual SmartPtr<Path> folder() = 0;

  // The last component; empty for a root. [plug-in]
  virtual WString lastPart() = 0;

  // Whether there is such an entry. Throws Exception when that cannot be determined: a file that cannot be looked at
  // must not be taken for a missing one. [plug-in]
  virtual bool exists() = 0;

  // Whether there is such an entry, and it is a folder. Throws Exception as `exists`. [plug-in]
  virtual bool isFolder() = 0;

  // The names of the entries that match a pattern of `*` and `?`, without "." and ".."; none when this is not a
  // folder. A link to a folder is an entry like the folder itself, unless it leads to a folder on the way here, or to
  // one that is listed under another name. Throws Exception when the folder cannot be listed completely. [plug-in]
  virtual SmartPtr<TextList> list(WStringView pattern) = 0;

  // Creates the folder and its parents. Throws Exception when it cannot. [plug-in]
  virtual void createFolder() = 0;

  // Deletes the file; false when there was none. Throws Exception when it cannot. [plug-in]
  virtual bool remove() = 0;

  // Copies the file to `to`, replacing it atomically. Throws Exception when it cannot. [plug-in]
  virtual void copyTo(SmartPtr<Path> to) = 0;
};

// A stream of bytes that is read whole, or written and then committed.
class BackingStoreIO : public RefCount {
 public:
  // The whole content. Throws Exception when it cannot be read; nothing is known of the content then. [plug-in]
  virtual String readAll() = 0;

  // Appends bytes for the next commit. [plug-in]
  virtual void write(StringView bytes) = 0;

  // Stores the bytes written, all or nothing. Throws Exception when it cannot; FileChanged where that would overwrite
  // what another program has written since the plug-in has read the file, or has found that there is none. [plug-in]
  virtual void commit() = 0;
};

// A backing store on a file. Without a commit the file is unchanged.
class FileBackingStoreIO : public BackingStoreIO {
 public:
  static constexpr const char* interfaceName = "FileBackingStoreIO";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : BackingStoreIO::queryInterface(asked);
  }

  // The file's path. [plug-in]
  virtual SmartPtr<Path> path() = 0;
};

// Reads and writes XML documents through a backing store.
class Documents : public RefCount {
 public:
  // A new element without a parent; null when out of memory. `prefix` and `nameSpace` may be empty. [plug-in]
  virtual SmartPtr<Dom::INode> createElement(WStringView name, WStringView prefix, WStringView nameSpace) = 0;

  // The document's root element. Throws Exception when it is not well formed or too large, and passes the store's on.
  // [plug-in]
  virtual SmartPtr<Dom::INode> read(SmartPtr<BackingStoreIO> store) = 0;

  // Writes a document and commits the store. Throws Exception when a name or text cannot be written as XML, or what the
  // store throws. [plug-in]
  virtual void write(SmartPtr<Dom::INode> root, SmartPtr<BackingStoreIO> store) = 0;
};

}  // namespace Kiln::Services
