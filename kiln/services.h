// What the host does with files, documents and texts on a plug-in's behalf.
#pragma once

#include "kiln/dom.h"
#include "kiln/ref_count.h"
#include "kiln/text.h"

namespace Kiln::Services {

// The loaded library of a plug-in. The host holds its own reference beyond the plug-in's last release.
class Library : public RefCount {};

// Texts in order, for example font names or locales.
class TextList : public RefCount {
 public:
  virtual std::int32_t count() = 0;

  // From 0; empty when there is none. [plug-in]
  virtual WString at(std::int32_t index) = 0;
};

// A path of the host's file system; it need not exist. Immutable.
class Path : public RefCount {
 public:
  virtual WString text() = 0;

  // This path followed by `name`, which may have several parts. [plug-in]
  virtual SmartPtr<Path> join(WStringView name) = 0;

  // The folder that the last part lies in, and the last part. [plug-in]
  virtual SmartPtr<Path> folder() = 0;
  virtual WString lastPart() = 0;

  virtual bool exists() = 0;
  virtual bool isFolder() = 0;

  // Names of the entries, "." and ".." left out, that fit a pattern of `*` and `?`; empty for what is no folder.
  // [plug-in]
  virtual SmartPtr<TextList> list(WStringView pattern) = 0;

  // Makes the folder and those above it. Throws Exception when it cannot. [plug-in]
  virtual void createFolder() = 0;

  // Deletes the file; false when there was none. Throws Exception when it cannot. [plug-in]
  virtual bool remove() = 0;

  // Copies the file to `to`, replaced whole. Throws Exception when it cannot. [plug-in]
  virtual void copyTo(SmartPtr<Path> to) = 0;
};

// Bytes that are read, or bytes that are written and then stored together.
class BackingStoreIO : public RefCount {
 public:
  // All bytes of what is stored. Throws Exception when it cannot be read. [plug-in]
  virtual String readAll() = 0;

  // Adds bytes to what commit will store. [plug-in]
  virtual void write(StringView bytes) = 0;

  // Stores what was written, whole or not at all. Throws Exception when it cannot. [plug-in]
  virtual void commit() = 0;
};

// A backing store on a file. What was written and not committed leaves the file as it was.
class FileBackingStoreIO : public BackingStoreIO {
 public:
  virtual SmartPtr<Path> path() = 0;
};

// Documents as XML. Reading and writing go through a backing store.
class Documents : public RefCount {
 public:
  // A new element with no parent; empty when memory is out. `prefix` and `nameSpace` may be empty. [plug-in]
  virtual SmartPtr<Dom::INode> createElement(WStringView name, WStringView prefix, WStringView nameSpace) = 0;

  // The document's root element. Throws Exception when it is not well formed or too large. [plug-in]
  virtual SmartPtr<Dom::INode> read(SmartPtr<BackingStoreIO> store) = 0;

  // Writes a document and commits the store. [plug-in]
  virtual void write(SmartPtr<Dom::INode> root, SmartPtr<BackingStoreIO> store) = 0;
};

}  // namespace Kiln::Services
