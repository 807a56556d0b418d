// Streams of this system carry bytes as they are.
#include "support/binary_streams.h"

namespace ondrel::test {

void UseBinaryStreams() {}

}  // namespace ondrel::test
