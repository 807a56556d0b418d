// The order of the record's virtual operations, which programs that were built against the library rely on.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include <ondrel/MMCObjectParams.h>

namespace ondrel::test {
namespace {

/// The slot of a virtual operation. In the calling convention of the compilers that build the library, a pointer to a
/// virtual member is one more than its offset, in bytes, in the table.
template <class Operation>
std::ptrdiff_t SlotOf(Operation operation) {
  std::ptrdiff_t pointer = 0;
  static_assert(sizeof operation >= sizeof pointer);
  std::memcpy(&pointer, &operation, sizeof pointer);
  EXPECT_EQ(pointer % static_cast<std::ptrdiff_t>(sizeof(void*)), 1) << "no virtual operation";
  return (pointer - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(ParamsSlots, HaveSettersBeforeGettersAndTheStyleSheetLast) {
  using Params = CMMCObjectParams;
  constexpr std::ptrdiff_t kDestructorSlots = 2;  // the destructor, and the one that also frees
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
