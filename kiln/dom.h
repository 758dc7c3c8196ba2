// Document nodes: a name, a text value and named children. Records, schemas and tickets are trees of them.
#pragma once

#include "kiln/ref_count.h"
#include "kiln/text.h"

namespace Kiln::Dom {

// A node belongs to its parent, and lives besides for as long as somebody holds it. Implemented by the host.
class INode : public RefCount {
 public:
  virtual WString name() = 0;

  // The node's own text, empty when it has none. [plug-in]
  virtual WString value() = 0;
  virtual void setValue(WStringView text) = 0;

  // The number of children, and the child at `index`, from 0, in the order in which they were added; empty when there
  // is none. [plug-in]
  virtual std::int32_t childCount() = 0;
  virtual SmartPtr<INode> childAt(std::int32_t index) = 0;

  // The first child of that name; empty when there is none. [plug-in]
  virtual SmartPtr<INode> child(WStringView name) = 0;

  // The child of that name, made with an empty value at the end of the children when there was none. [plug-in]
  virtual SmartPtr<INode> childOrNew(WStringView name) = 0;

  // Makes `node` the child of that name, in the place of one that was there, else at the end. A node that has a parent
  // already is copied. [plug-in]
  virtual void setChild(WStringView name, SmartPtr<INode> node) = 0;

  // Takes the child of that name out; false when there is none. [plug-in]
  virtual bool removeChild(WStringView name) = 0;

  // A copy of the node and all below it, without a parent. [plug-in]
  virtual SmartPtr<INode> clone() = 0;
};

}  // namespace Kiln::Dom
