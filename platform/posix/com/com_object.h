// What every component object of this layer is made of: a count of references, QueryInterface over a list of
// interfaces, and a border that no exception crosses.
#pragma once

#include <atomic>
#include <new>
#include <stdexcept>
#include <utility>

#include <ondrel/platform/os/com.h>

namespace ondrel::platform {

/// Runs `operation`, which gives a status. Memory that cannot be had becomes E_OUTOFMEMORY.
template <class Operation>
HRESULT StatusOf(Operation&& operation) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::length_error&) {  // a container asked for more than the address space holds
    return E_OUTOFMEMORY;
  }
}

/// The same for an operation that raises nothing else.
template <class Operation>
HRESULT WithStatus(Operation&& operation) noexcept {
  return StatusOf(std::forward<Operation>(operation));
}

/// QueryInterface for an object that offers `Primary`, its bases listed in `Others`, and IUnknown through `Primary`.
template <class Primary, class... Others, class Object>
HRESULT FindInterface(Object& object, REFIID id, void** found) noexcept {
  if (found == nullptr) return E_POINTER;
  void* pointer = nullptr;
  if (id == IUnknown::kId || id == Primary::kId) pointer = static_cast<Primary*>(&object);
  ((id == Others::kId ? pointer = static_cast<Others*>(&object) : nullptr), ...);
  *found = pointer;
  if (pointer == nullptr) return E_NOINTERFACE;
  object.AddRef();
  return S_OK;
}

/// Counts references to an object of its own on the heap, from any thread. It is made with one reference.
class ReferenceCount {
 public:
  ULONG Increment() noexcept { return m_count.fetch_add(1, std::memory_order_relaxed) + 1; }
  ULONG Decrement() noexcept { return m_count.fetch_sub(1, std::memory_order_acq_rel) - 1; }

 private:
  std::atomic<ULONG> m_count{1};
};

/// Gives the only reference to a new object to the caller as the interface that it asks for. An object that does not
/// have that interface is destroyed again.
template <class Object>
HRESULT GiveNew(Object* object, REFIID id, void** given) noexcept {
  const HRESULT status = object->QueryInterface(id, given);
  object->Release();
  return status;
}

}  // namespace ondrel::platform
