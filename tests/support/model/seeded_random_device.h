// The system's source of random numbers, giving a chosen one, so that what is drawn from it can be told beforehand.
#pragma once

namespace ondrel::test {

/// While it lives, every std::random_device of the program and its libraries gives `number`, and asking is counted.
class SeededRandomDevice {
 public:
  explicit SeededRandomDevice(unsigned number);
  ~SeededRandomDevice();
  SeededRandomDevice(const SeededRandomDevice&) = delete;
  SeededRandomDevice& operator=(const SeededRandomDevice&) = delete;

  int Asked() const;
};

}  // namespace ondrel::test
