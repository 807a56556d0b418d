// How the objects of the XML services are made. Each gives a new object as the interface `id`, or E_NOINTERFACE, or
// E_OUTOFMEMORY.
#pragma once

#include <ondrel/platform/os/com.h>

namespace ondrel::platform {

HRESULT CreateDomDocument(REFIID id, void** object);
HRESULT CreateXmlWriter(REFIID id, void** object);
HRESULT CreateSaxReader(REFIID id, void** object);

}  // namespace ondrel::platform
