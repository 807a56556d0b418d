// The status that a call raises, as people know it.
#pragma once

#include <cstdio>
#include <string>

#include "support/raised.h"

#include <ondrel/platform/framework/exceptions.h>

namespace ondrel::test {

/// "0x80004001" for the COleException that `call` raises, "nothing" when it raises none. Any other exception passes on.
template <class Call>
std::string RaisedStatus(Call call) {
  const auto raised = Raised<COleException>(call);
  if (!raised) return "nothing";
  char text[sizeof "0x80004001"];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(raised->m_sc));
  return text;
}

}  // namespace ondrel::test
