// Document nodes: a name, a text value and named children. Records, schemas and tickets are trees of them.
#pragma once

#include "kiln/ref_count.h"
#include "kiln/text.h"

namespace Kiln::Dom {

// A node belongs to its parent and stays alive as long as anything references it. Implemented by the host.
class INode : public RefCount {
 public:
  // The node's name, without a prefix. [plug-in]
  virtual WString name() = 0;

  // The node's own text, empty when it has none. [plug-in]
  virtual WString value() = 0;

  // Sets the node's own text. [plug-in]
  virtual void setValue(WStringView text) = 0;

  // The number of children. [plug-in]
  virtual std::int32_t childCount() = 0;

  // The child at `index`, from 0, in insertion order; null when out of range. [plug-in]
  virtual SmartPtr<INode> childAt(std::int32_t index) = 0;

  // The first child with that name; null when there is none. [plug-in]
  virtual SmartPtr<INode> child(WStringView name) = 0;

  // The child with that name; appended with an empty value when there is none. [plug-in]
  virtual SmartPtr<INode> childOrNew(WStringView name) = 0;

  // Makes `node` the child with that name: replaces an existing one in place, else appends. A node that already has a
  // parent is copied. [plug-in]
  virtual void setChild(WStringView name, SmartPtr<INode> node) = 0;

  // Removes the child with that name; false when there is none. [plug-in]
  virtual bool removeChild(WStringView name) = 0;

  // A deep copy of the node, without a parent. [plug-in]
  virtual SmartPtr<INode> clone() = 0;
};

}  // namespace Kiln::Dom
