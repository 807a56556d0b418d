// Random digits for names that nobody else has.
#include "program/temporary_name.h"

#include <random>

namespace ondrel::platform {

std::string TemporaryEnding() {
  constexpr char kDigits[] = "0123456789abcdef";
  std::random_device random;
  std::string ending = ".";
  for (int word = 0; word < 2; ++word) {
    const unsigned bits = random();
    for (int shift = 28; shift >= 0; shift -= 4) ending += kDigits[(bits >> shift) & 0xF];
  }
  return ending + ".tmp";
}

}  // namespace ondrel::platform
