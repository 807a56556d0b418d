// Components, strings, variants and streams: the system's own.
#pragma once

#include <ondrel/platform/os/types.h>

#include <objbase.h>
#include <oleauto.h>

namespace ondrel::platform {

/// The identifier of an interface type.
template <class Interface>
const IID& InterfaceId() noexcept {
  return __uuidof(Interface);
}

}  // namespace ondrel::platform
