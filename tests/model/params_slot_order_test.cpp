// The order of the record's virtual operations, which programs that were built against the library rely on.

#include <gtest/gtest.h>

#include <cstddef>

#include <ondrel/MMCObjectParams.h>

#include "support/virtual_slots.h"

namespace ondrel::test {
namespace {

TEST(ParamsSlots, HaveSettersBeforeGettersAndTheStyleSheetLast) {
  using Params = CMMCObjectParams;
  const std::ptrdiff_t slots[] = {
      SlotOf(&Params::GetIdentity),
      SlotOf(&Params::SetName),
      SlotOf(&Params::GetName),
      SlotOf(&Params::SetIcon),
      SlotOf(&Params::GetIcon),
      SlotOf(&Params::SetNodeType),
      SlotOf(static_cast<Params::_eTypeNode (Params::*)() const>(&Params::GetNodeType)),
      SlotOf(&Params::SetChildQueries),
      SlotOf(&Params::GetChildQueries),
      SlotOf(&Params::SetMenuScript),
      SlotOf(&Params::GetMenuScript),
      SlotOf(&Params::SetScripts),
      SlotOf(&Params::GetScripts),
      SlotOf(&Params::SetRenderQueries),
      SlotOf(&Params::GetRenderQueries),
      SlotOf(&Params::SetStyleSheet),
      SlotOf(&Params::GetStyleSheet),
  };
  std::ptrdiff_t expected = kDestructorSlots;
  for (const std::ptrdiff_t slot : slots) EXPECT_EQ(slot, expected++);
}

}  // namespace
}  // namespace ondrel::test
