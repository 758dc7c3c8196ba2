// Opens the stores of the user's data: Watermarks and Overlays.
#pragma once

#include "effect/tab_host.h"

#include <new>

namespace Kiln::XUL {

// Empty when out of memory.
template <class Store>
SmartPtr<Store> openStore(const TabHost& host, bool isMerged) {
  return SmartPtr<Store>(new (host.services.allocator()) Store(host.services, host.properties, isMerged));
}

// Throws std::bad_alloc when out of memory.
template <class Store>
SmartPtr<Store> newStore(const TabHost& host, bool isMerged) {
  SmartPtr<Store> store = openStore<Store>(host, isMerged);
  if (!store) throw std::bad_alloc();
  return store;
}

// The store to export: the present one if merged, else a new merged one over the same files. Never empty: a profile
// without the user's data must not look complete.
template <class Store>
SmartPtr<Store> storeToExport(const TabHost& host, const SmartPtr<Store>& present) {
  if (present && present->isMerged()) return present;
  if (present) present->save();
  return newStore<Store>(host, true);
}

}  // namespace Kiln::XUL
