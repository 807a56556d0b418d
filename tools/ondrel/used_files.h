// The files that records refer to.
#pragma once

#include <set>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::command {

/// File cookies; 0 is none of them. Some may be of files that are not there.
struct UsedFiles {
  std::set<__int64> icons;
  std::set<__int64> codeFiles;

  void Add(const CMMCObjectParams& record);
};

/// Those of a node and of every node below it.
UsedFiles FilesOfSubtree(CMMCObjectSet& set, __int64 node);

}  // namespace ondrel::command
