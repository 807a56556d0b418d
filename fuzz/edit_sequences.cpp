// A program of edits, saves and loads of a set, checked step by step against a plain telling of the rules.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "support/model/edit_program.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static ondrel::test::PlainDisk disk;
  try {
    ondrel::test::EditProgram({data, size}, disk).Run();
  } catch (const std::exception& difference) {
    std::fprintf(stderr, "%s\n", difference.what());
    std::abort();
  }
  return 0;
}
