// The two persistent forms of a set, to and from memory.
#pragma once

#include <memory>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::bench {

/// An empty set.
std::unique_ptr<CMMCObjectSet> MakeSet();
/// A set with the definition of so many nodes.
std::unique_ptr<CMMCObjectSet> MakeDefinition(__int64 nodes);

/// Both begin at the file's start.
void StoreImage(CMMCObjectSet& set, CFile& file);
void LoadImage(CMMCObjectSet& set, CFile& file);
void SaveProject(CMMCObjectSet& set, CFile& file);
void LoadProject(CMMCObjectSet& set, CFile& file);

}  // namespace ondrel::bench
