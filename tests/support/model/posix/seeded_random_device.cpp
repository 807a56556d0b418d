// Takes the place of the standard library's own function, in all libraries of the program. Only test programs that use
// SeededRandomDevice take it.
#include "support/model/seeded_random_device.h"

#include <sys/random.h>

#include <optional>
#include <random>
#include <stdexcept>

namespace {

std::optional<unsigned> chosenNumber;
int timesAsked = 0;

}  // namespace

std::random_device::result_type std::random_device::_M_getval() {
  if (chosenNumber) {
    ++timesAsked;
    return *chosenNumber;
  }
  result_type number = 0;
  if (getrandom(&number, sizeof number, 0) != sizeof number) throw std::runtime_error("no random numbers");
  return number;
}

namespace ondrel::test {

SeededRandomDevice::SeededRandomDevice(unsigned number) {
  chosenNumber = number;
  timesAsked = 0;
}
SeededRandomDevice::~SeededRandomDevice() { chosenNumber.reset(); }
int SeededRandomDevice::Asked() const { return timesAsked; }

}  // namespace ondrel::test
