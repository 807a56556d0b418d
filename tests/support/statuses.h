// The statuses that the model and the platform layer give, by name.
#pragma once

#include <ondrel/platform/types.h>

namespace ondrel::test {

inline constexpr HRESULT kFileNotFound = static_cast<HRESULT>(0x80070002);
inline constexpr HRESULT kPathNotFound = static_cast<HRESULT>(0x80070003);
inline constexpr HRESULT kAccessDenied = static_cast<HRESULT>(0x80070005);
inline constexpr HRESULT kInvalidData = static_cast<HRESULT>(0x8007000D);  ///< Required data is missing or malformed.
inline constexpr HRESULT kOutOfMemory = static_cast<HRESULT>(0x8007000E);
inline constexpr HRESULT kAlreadyExists = static_cast<HRESULT>(0x800700B7);  ///< A key or name is taken.
inline constexpr HRESULT kNotFound = static_cast<HRESULT>(0x80070490);       ///< No object has that cookie.
inline constexpr HRESULT kNoIcon = static_cast<HRESULT>(0x80070714);         ///< A file holds no icon.
inline constexpr HRESULT kNotEmpty = static_cast<HRESULT>(0x800710D3);       ///< A node has children.
inline constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x80020005);  ///< Text is of another kind than asked for.
inline constexpr HRESULT kOverflow = static_cast<HRESULT>(0x8002000A);      ///< Text holds a number that is too large.
inline constexpr HRESULT kChosenFailure = static_cast<HRESULT>(0x8004ABCD);  ///< One that nothing gives of itself.

}  // namespace ondrel::test
