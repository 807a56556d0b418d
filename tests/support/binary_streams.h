// Standard streams without a meaning of their own for some bytes.
#pragma once

namespace ondrel::test {

/// Has the three standard streams of the program carry bytes as they are.
void UseBinaryStreams();

}  // namespace ondrel::test
