// The status that a call raises, as people know it.
#pragma once

#include <string>

#include "support/raised.h"
#include "support/status_text.h"

#include <ondrel/platform/framework/exceptions.h>

namespace ondrel::test {

/// "0x80004001" for the COleException that `call` raises, "nothing" when it raises none. Any other exception passes on.
template <class Call>
std::string RaisedStatus(Call call) {
  const auto raised = Raised<COleException>(call);
  return raised ? StatusText(raised->m_sc) : "nothing";
}

}  // namespace ondrel::test
