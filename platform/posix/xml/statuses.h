// The statuses of the XML services beside the general ones.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

inline constexpr HRESULT kNotAnXmlName = E_FAIL;        ///< A node cannot be created with this name.
inline constexpr HRESULT kInvalidInstruction = E_FAIL;  ///< The data of a processing instruction would end it.
inline constexpr HRESULT kInvalidPath = E_FAIL;         ///< No relative path of names.
inline constexpr HRESULT kWrongPlace = E_FAIL;          ///< The node cannot stand there: see appendChild.
inline constexpr HRESULT kAttributeInUse = E_FAIL;      ///< The attribute belongs to another element.
inline constexpr HRESULT kNoOutput = E_UNEXPECTED;      ///< A writer writes before it has an output.
inline constexpr HRESULT kForeignNode = E_INVALIDARG;   ///< A node of another document, or of another maker.

/// An invalid character in text content.
inline constexpr HRESULT kInvalidCharacter = static_cast<HRESULT>(0xC00CE508);

}  // namespace ondrel::platform
