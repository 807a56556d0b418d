// Programs and files that the distribution's packages bring. What is not there is an error that names the package.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace ondrel::test {

struct PackageTool {
  const char* program;  ///< Its path: a program of the same name elsewhere could be another one.
  const char* package;
};

inline constexpr PackageTool kIcotool{"/usr/bin/icotool", "icoutils"};
inline constexpr PackageTool kWrestool{"/usr/bin/wrestool", "icoutils"};
inline constexpr PackageTool kConvert{"/usr/bin/convert-im6.q16", "imagemagick"};
inline constexpr PackageTool kMogrify{"/usr/bin/mogrify-im6.q16", "imagemagick"};

enum class OnFailure { raise, ignore };

/// Runs a tool in a folder and gives its output. Raises std::runtime_error when it is not installed, ends too late or,
/// unless that is to be ignored, fails.
std::string RunTool(const PackageTool& tool, std::vector<std::string> arguments, const std::filesystem::path& folder,
                    OnFailure onFailure = OnFailure::raise);

/// The regular files of a package, for every architecture that it is installed for. Raises std::runtime_error when it
/// is installed for none.
std::vector<std::filesystem::path> PackageFiles(const std::string& package);

}  // namespace ondrel::test
