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
  virtual std::int32_t count() = 0;

  // `index` from 0; empty when out of range. [plug-in]
  virtual WString at(std::int32_t index) = 0;
};

// A path of the host's file system; it need not exist. Immutable.
class Path : public RefCount {
 public:
  virtual WString text() = 0;

  // This path followed by `name`, which may have several components. [plug-in]
  virtual SmartPtr<Path> join(WStringView name) = 0;

  // The parent folder, and the last component. [plug-in]
  virtual SmartPtr<Path> folder() = 0;
  virtual WString lastPart() = 0;

  // Whether there is such an entry, and whether it is a folder. Throw Exception when that cannot be determined: a file
  // that cannot be looked at must not be taken for a missing one. [plug-in]
  virtual bool exists() = 0;
  virtual bool isFolder() = 0;

  // The names of the entries that match a pattern of `*` and `?`, without "." and ".."; empty when this is not a
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
  virtual SmartPtr<Path> path() = 0;
};

// Reads and writes XML documents through a backing store.
class Documents : public RefCount {
 public:
  // A new element without a parent; empty when out of memory. `prefix` and `nameSpace` may be empty. [plug-in]
  virtual SmartPtr<Dom::INode> createElement(WStringView name, WStringView prefix, WStringView nameSpace) = 0;

  // The document's root element. Throws Exception when it is not well formed or too large, and passes the store's on.
  // [plug-in]
  virtual SmartPtr<Dom::INode> read(SmartPtr<BackingStoreIO> store) = 0;

  // Writes a document and commits the store. [plug-in]
  virtual void write(SmartPtr<Dom::INode> root, SmartPtr<BackingStoreIO> store) = 0;
};

}  // namespace Kiln::Services
