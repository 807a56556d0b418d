// Sets as the fuzzers of the persistent forms use them: one to start from, and a look at everything that one holds.
#pragma once

#include <string>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::fuzz {

/// A writer hook that stores no bytes for a file on disk, so that no file is read.
bool StoreNoBytes(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform transform,
                  CMMCObjectSet::Variables variables);
/// Gives every code file a transform that keeps its bytes.
CMMCObjectSet::Transform KeepBytes(const WCHAR* path);

/// Fills an empty set with an object of each kind, as loaders do; it stays unmodified.
void FillBaseSet(CMMCObjectSet& set);

/// Edits a set and saves it as an image: what a host may do after a load that failed.
void UseSet(CMMCObjectSet& set);

/// Asks the set for everything that it holds, and the stores whether they agree with each other.
void LookAtSet(CMMCObjectSet& set);

/// The object image of a set. Raises what SerializeObjects raises.
std::string ImageOf(CMMCObjectSet& set, int bufferSize = 4096);

}  // namespace ondrel::fuzz
