// The list of all commands.
#include "usage/grammar.h"

#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

constexpr const char* kBuild = "Build";
constexpr const char* kEdit = "Edit";
constexpr const char* kLook = "Look";
constexpr const char* kShell = "Shell";

constexpr Usage kUsages[] = {
    {"compile", kBuild, "Compile a project file into an object image", DescribeCompile},
    {"check", kBuild, "Check a project file or an object image, and say what to do", DescribeCheck},
    {"strips", kBuild, "Write a definition's icons side by side into pictures", DescribeStrips},
    {"new", kEdit, "Make a project file", DescribeNew},
    {"add", kEdit, "Add a node, a dialog, icon files or code files to a project", DescribeAdd},
    {"set", kEdit, "Change the name, type or files of a node or dialog", DescribeSet},
    {"move-down", kEdit, "Move a node behind its next sibling", DescribeMoveDown},
    {"remove", kEdit, "Remove a node, with all below it, or a dialog", DescribeRemove},
    {"show", kLook, "Show what a project file or an object image holds", DescribeShow},
    {"diff", kLook, "Tell what differs between two definitions", DescribeDiff},
    {"extract", kLook, "Write the files of an object image, and a project that compiles to it", DescribeExtract},
    {"report", kLook, "Write a page that shows a definition, to look at in a browser", DescribeReport},
    {"icon", kLook, "Show what an icon file, a program or a library gives as an icon", DescribeIcon},
    {"completion", kShell, "Print a script with which a shell completes ondrel's command lines", DescribeCompletion},
    {"man", kShell, "Print the manual", DescribeMan},
};

}  // namespace

std::unique_ptr<CLI::App> MakeGrammar(Run& run, const std::string& command) {
  auto app =
      std::make_unique<CLI::App>("Compiles the definitions of console snap-ins, and shows what they hold.", "ondrel");
  app->set_version_flag("--version", "ondrel " ONDREL_VERSION, "Print the version and exit");
  app->allow_windows_style_options(false);  // "/tmp/console.img" is a path everywhere
  app->require_subcommand(1);
  SetClosingText(*app, "", "  ondrel compile console.xml -o console.img\n  ondrel check console.xml\n  ondrel show console.img\n",
                 std::string("Each command explains itself with --help.\n") + kExitCodes);
  for (const Usage& usage : kUsages) {
    CLI::App* const added = app->add_subcommand(usage.name, usage.purpose)->group(usage.group);
    if (command.empty() || command == usage.name) usage.describe(*added, run);
  }
  return app;
}

}  // namespace ondrel::command
