// Takes the place of the standard library's own function for the program and the project's libraries.
#include "support/model/seeded_random_device.h"

#include <optional>
#include <random>

#include "support/windows/import_patch.h"

namespace ondrel::test {
namespace {

unsigned chosenNumber = 0;
int timesAsked = 0;
std::optional<ImportPatch> patch;

/// The function is a member: its object comes first.
std::random_device::result_type GiveChosenNumber(std::random_device*) {
  ++timesAsked;
  return chosenNumber;
}

}  // namespace

SeededRandomDevice::SeededRandomDevice(unsigned number) {
  constexpr const char* kGetValue = "_ZNSt13random_device9_M_getvalEv";
  chosenNumber = number;
  timesAsked = 0;
  patch.emplace(kGetValue, GiveChosenNumber);
}
SeededRandomDevice::~SeededRandomDevice() { patch.reset(); }
int SeededRandomDevice::Asked() const { return timesAsked; }

}  // namespace ondrel::test
