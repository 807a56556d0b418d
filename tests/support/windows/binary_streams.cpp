// Streams of this system change line ends unless they are told not to.
#include "support/binary_streams.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace ondrel::test {

void UseBinaryStreams() {
  for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
}

}  // namespace ondrel::test
