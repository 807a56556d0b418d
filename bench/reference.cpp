#include "reference.h"

#include "forms.h"
#include "measure.h"

namespace ondrel::bench {

__int64 ReferenceNodes() { return IsQuick() ? 2'000 : 100'000; }

CMMCObjectSet& ReferenceSet() {
  static const auto set = MakeDefinition(ReferenceNodes());
  return *set;
}

const Model& ReferenceModel() {
  static const auto model = [] {
    auto filled = std::make_unique<Model>();
    FillModel(*filled, ReferenceSet());
    return filled;
  }();
  return *model;
}

}  // namespace ondrel::bench
