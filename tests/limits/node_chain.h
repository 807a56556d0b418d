// Sets whose nodes are a chain, each the child of the one before.
#pragma once

#include <gtest/gtest.h>

#include "support/object_set_probe.h"
#include "support/sanitizers.h"
#include "support/small_stack.h"

namespace ondrel::test {

inline constexpr std::size_t kChainStack = 256 * 1024;

// The sanitizers watch every access to memory, and would take minutes for the full depth on a busy machine. A level
// that took only two bytes of stack would still show.
inline constexpr __int64 kChainDepth = kSanitized ? 100'000 : 1'000'000;

inline void FillChain(CMMCObjectSet& set, __int64 depth = kChainDepth) {
  for (__int64 cookie = 0; cookie < depth; ++cookie) {
    ASSERT_EQ(set.AddNode(cookie - 1, cookie, CMMCObjectParams(cookie, _T(""), CMMCObjectParams::eList)), 0);
  }
}

inline void ExpectChain(CMMCObjectSet& set) {
  const auto& nodes = CMMCObjectSetProbe::Tables(set).nodes;
  ASSERT_EQ(nodes.size(), static_cast<std::size_t>(kChainDepth));
  __int64 cookie = 0;
  for (const auto& [key, record] : nodes) {
    ASSERT_EQ(key.first, cookie - 1);
    ASSERT_EQ(key.second, cookie);
    ASSERT_EQ(record.GetCookie(), cookie);
    ++cookie;
  }
}

}  // namespace ondrel::test
