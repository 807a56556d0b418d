#include "checked_project.h"

#include <gtest/gtest.h>

namespace ondrel::test {
namespace {

void WriteCheckedFiles(const ProjectFolder& folder, std::string_view project) {
  folder.WriteProject(project);
  for (const char* const name : {"a.js", "b.js"}) folder.Write(name, "run()");
  for (const char* const name : {"a.ico", "b.ico"}) folder.Write(name, SmallIconFile());
}

std::vector<std::string> CheckArguments(const std::vector<std::string>& options) {
  std::vector<std::string> arguments{"check", kProjectName};
  arguments.insert(arguments.end(), options.begin(), options.end());
  return arguments;
}

}  // namespace

CheckedProject::CheckedProject(std::initializer_list<std::string_view> lines) {
  WriteCheckedFiles(*this, Lines(lines));
}

CommandResult CheckedProject::Check(std::vector<std::string> options) const { return Run(CheckArguments(options)); }

void CheckedProject::ExpectRemarks(std::initializer_list<std::string_view> remarks, std::string_view closing,
                                   int exitCode, std::vector<std::string> options) const {
  std::string expected;
  for (const std::string_view remark : remarks) expected.append("console.xml:").append(remark).append("\n");
  const CommandResult result = Check(std::move(options));
  EXPECT_EQ(result.output, expected.append(closing).append("\n"));
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitCode, exitCode);
}

void ExpectRemarkAlone(const RemarkCase& remarked, const std::vector<std::string>& options) {
  const ProjectFolder folder;
  std::string project;
  for (const std::string_view line : remarked.lines) project.append(line).append("\n");
  WriteCheckedFiles(folder, project);
  const CommandResult result = folder.Run(CheckArguments(options));
  const bool isError = remarked.remark.find(" error: ") != std::string::npos;
  EXPECT_EQ(result.output,
            "console.xml:" + remarked.remark + (isError ? "\n1 error, 0 warnings\n" : "\n0 errors, 1 warning\n"));
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitCode, isError ? 1 : 0);
}

}  // namespace ondrel::test
