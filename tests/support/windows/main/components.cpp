// The components of the system, usable on every thread of a test program while it runs.
#include <gtest/gtest.h>

#include <optional>

#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

class Components final : public testing::Environment {
 public:
  void SetUp() override { m_scope.emplace(); }
  void TearDown() override { m_scope.reset(); }

 private:
  std::optional<platform::ComponentScope> m_scope;
};

[[maybe_unused]] testing::Environment* const components = testing::AddGlobalTestEnvironment(new Components);

}  // namespace
}  // namespace ondrel::test
