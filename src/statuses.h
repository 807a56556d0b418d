// The statuses of the model, by name.
#pragma once

#include <ondrel/platform/types.h>

namespace ondrel {

inline const HRESULT kAlreadyExists = HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);  // 0x800700B7
inline const HRESULT kNotFound = HRESULT_FROM_WIN32(ERROR_NOT_FOUND);            // 0x80070490
inline const HRESULT kNotEmpty = HRESULT_FROM_WIN32(ERROR_NOT_EMPTY);            // 0x800710D3
inline const HRESULT kInvalidData = HRESULT_FROM_WIN32(ERROR_INVALID_DATA);      // 0x8007000D

}  // namespace ondrel
