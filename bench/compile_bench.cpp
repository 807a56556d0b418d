// The command's way from a project to its image as a whole process, against others that make one file of many.
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <ondrel/platform/program.h>

#include "definition_files.h"
#include "forms.h"
#include "measure.h"
#include "processes.h"

namespace ondrel::bench {
namespace {

constexpr const char* kOutput = "output";  // in the folder of the files; each run writes it anew

/// A compiler: how it is called for a folder of files, and what it must have written.
struct Compiler {
  std::string name;
  std::string program;
  std::vector<std::string> arguments;
};

const Compiler kOurs = {"ours", ONDREL_COMMAND, {"compile", DefinitionFiles::kProject, "-o", kOutput}};
const Compiler kRcc = {
    "rcc", ONDREL_BENCH_RCC, {"--binary", "--no-compress", DefinitionFiles::kQtResources, "-o", kOutput}};
const Compiler kGlib = {
    "glib-compile-resources", ONDREL_BENCH_GLIB, {std::string("--target=") + kOutput, DefinitionFiles::kGlibResources}};
const Compiler kTar = {"tar", ONDREL_BENCH_TAR, {"cf", kOutput, DefinitionFiles::kCode}};

int ManyCodeFiles() { return IsQuick() ? 40 : 2'000; }

/// Files of 7,000 bytes on the average, 14 MB together in a full run.
const DefinitionFiles& ManyFiles() {
  constexpr std::size_t kMean = 7'000;
  constexpr std::size_t kSpread = 3'000;
  static const DefinitionFiles files(ManyCodeFiles(), kMean * static_cast<std::size_t>(ManyCodeFiles()), kSpread, 0);
  return files;
}

constexpr int kTypicalCodeFiles = 40;

/// 50 nodes, 40 code files of 4 KB, 10 icons.
const DefinitionFiles& TypicalFiles() {
  static const DefinitionFiles files(kTypicalCodeFiles, std::size_t{4'096} * kTypicalCodeFiles, 0, 10);
  return files;
}

/// An image holds the bytes of each file that the project names.
void RequireImage(const DefinitionFiles& files) {
  const auto project = MakeSet();
  const auto image = MakeSet();
  const CString projectPath = platform::FullPath(ondrel::test::Wide(files.Folder() / DefinitionFiles::kProject));
  CFile projectFile(projectPath, CFile::modeRead);
  LoadProject(*project, projectFile);
  CFile imageFile(ondrel::test::Wide(files.Folder() / kOutput), CFile::modeRead);
  LoadImage(*image, imageFile);

  const auto cookies = project->GetCodeFiles();
  Require(cookies.size() == files.CodeFiles().size() && image->GetCodeFiles().size() == cookies.size() &&
              image->GetIconFiles().size() == files.IconFiles().size(),
          "the image has not the number of files that it should have");
  for (const __int64 cookie : cookies) {
    CString path;
    std::vector<char> contents;
    Require(project->GetFilePath(cookie, path) && image->GetCodeFileContents(cookie, contents),
            "the image lacks a code file");
    path.Replace(_T('\\'), _T('/'));
    const std::string source = ondrel::test::ReadBytes(platform::PathToUtf8(path));
    Require(source == std::string_view(contents.data(), contents.size()), "the image has other bytes than a code file");
  }
}

/// What a peer has written is long enough, and the first and the last file are in it.
void RequirePeerOutput(const DefinitionFiles& files, const Compiler& compiler) {
  const std::string output = ondrel::test::ReadBytes(files.Folder() / kOutput);
  Require(output.size() >= files.Bytes(), compiler.name + " has written too little");
  for (const std::string& name : {files.CodeFiles().front(), files.CodeFiles().back()}) {
    Require(output.find(ondrel::test::ReadBytes(files.Folder() / name)) != std::string::npos,
            compiler.name + " has not written " + name);
  }
}

enum class Cache { warm, cold };

void Compile(benchmark::State& state, const DefinitionFiles& files, const Compiler& compiler, Cache cache) {
  const Program program = {compiler.program, compiler.arguments, files.Folder()};
  const Program greeting = {compiler.program, {"--version"}, files.Folder()};
  for (auto _ : state) {
    std::filesystem::remove(files.Folder() / kOutput);
    if (cache == Cache::cold) {
      ForgetFiles(files.Folder(), !IsQuick());  // a quick run leaves the caches of others alone
      SecondsOf(greeting);                      // the program itself is not what has to be read
    } else {
      SettleDisk();
    }
    state.SetIterationTime(SecondsOf(program));
  }
  if (compiler.name == kOurs.name) {
    RequireImage(files);
  } else {
    RequirePeerOutput(files, compiler);
  }
}

}  // namespace

void AddBenchmarks() {
  const auto add = [](const std::string& work, const Compiler& compiler, const DefinitionFiles& (*files)(), Cache cache,
                      int codeFiles, int iterations) {
    AddWork(work + '/' + compiler.name, codeFiles, iterations,
            [=](benchmark::State& state) { Compile(state, files(), compiler, cache); });
  };
  for (const Compiler& compiler : {kOurs, kRcc, kGlib, kTar}) {
    add("compile_files_warm", compiler, ManyFiles, Cache::warm, ManyCodeFiles(), 1);
    add("compile_files_cold", compiler, ManyFiles, Cache::cold, ManyCodeFiles(), 1);
  }
  for (const Compiler& compiler : {kOurs, kRcc}) {
    add("compile_typical", compiler, TypicalFiles, Cache::warm, kTypicalCodeFiles, IsQuick() ? 1 : 5);
  }
}

}  // namespace ondrel::bench
