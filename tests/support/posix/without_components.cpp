// The stand-ins of this system need no preparation.
#include "support/without_components.h"

namespace ondrel::test {

WithoutComponents::WithoutComponents() = default;
WithoutComponents::~WithoutComponents() = default;
HRESULT WithoutComponents::Status() { return S_OK; }

}  // namespace ondrel::test
