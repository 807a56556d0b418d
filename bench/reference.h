// The definition that ours and the peers are given in one run, as a set and as a model; each is made once.
#pragma once

#include "model.h"

namespace ondrel::bench {

/// 100,000 nodes, or few in a quick run.
__int64 ReferenceNodes();
CMMCObjectSet& ReferenceSet();
const Model& ReferenceModel();

}  // namespace ondrel::bench
