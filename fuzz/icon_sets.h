// The icon files of a set: their pixels, inside and outside of what they claim to be, and their strips.
#pragma once

#include <ondrel/MMCObjectSet.h>

namespace ondrel::fuzz {

/// Makes the set's strips, and copies of single icons, only of those geometries whose claims are modest: a claim alone
/// is not to take memory or time, but these operations are stated to believe it.
void LookAtIcons(CMMCObjectSet& set);

}  // namespace ondrel::fuzz
