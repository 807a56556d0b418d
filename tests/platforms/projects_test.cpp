// Projects saved by one build and loaded by the other: the definition stays the same, whichever saves it.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "platforms/definitions.h"
#include "platforms/two_platforms.h"

namespace ondrel::test {
namespace {

// Everything that a project holds, as one of the builds tells it.
std::string Told(const Platform& platform, const TemporaryFolder& folder, const std::string& project) {
  const CommandResult result = platform.Run("ondrel", {"show", "--json", project}, folder.Path());
  EXPECT_EQ(result.exitCode, 0) << platform.Name() << ": " << result.errors;
  nlohmann::json told = nlohmann::json::parse(result.output, nullptr, false);
  EXPECT_FALSE(told.is_discarded()) << result.output;
  told.erase("file");  // its own name
  return told.dump(1);
}

void Resave(const Platform& platform, const TemporaryFolder& folder, const std::string& from, const std::string& to) {
  const CommandResult result = platform.Run("project_probe", {"resave", from, to}, folder.Path());
  ASSERT_EQ(result.output, "done\n") << platform.Name() << ": " << result.errors;
}

TEST(Projects, AreReadAlikeWhateverTheirText) {
  for (unsigned variant = 0; variant < 2; ++variant) {
    const TemporaryFolder folder;
    WriteDefinition(folder, variant, DefinitionText::everything);
    const std::string native = Told(Platforms()[0], folder, kDefinition);
    EXPECT_EQ(Told(Platforms()[1], folder, kDefinition), native);
    EXPECT_NE(native.find("\xF0\x9F\x98\x80"), std::string::npos) << "a character beyond the basic plane";
  }
}

TEST(Projects, StayTheSameThroughSavesByEitherBuild) {
  const auto& [native, windows] = Platforms();
  for (unsigned variant = 0; variant < 4; ++variant) {
    const TemporaryFolder folder;
    WriteDefinition(folder, variant, DefinitionText::lasting);
    const std::string written = Told(native, folder, kDefinition);
    EXPECT_EQ(Told(windows, folder, kDefinition), written);

    const std::array<std::array<const Platform*, 2>, 2> orders{{{&native, &windows}, {&windows, &native}}};
    for (const auto& [first, second] : orders) {
      ASSERT_NO_FATAL_FAILURE(Resave(*first, folder, kDefinition, "once.xml"));
      EXPECT_EQ(Told(*second, folder, "once.xml"), written) << "saved on " << first->Name();
      ASSERT_NO_FATAL_FAILURE(Resave(*second, folder, "once.xml", "twice.xml"));
      EXPECT_EQ(Told(*first, folder, "twice.xml"), written) << "saved again on " << second->Name();
    }
  }
}

}  // namespace
}  // namespace ondrel::test
