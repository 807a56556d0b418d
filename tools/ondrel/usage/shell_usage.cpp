// How `ondrel completion` and `ondrel man` are called, and what they do: both are about the grammar itself.
#include <algorithm>

#include <ondrel/platform/program.h>

#include "failure.h"
#include "output.h"
#include "usage/completion.h"
#include "usage/man_page.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

struct CompletionRequest {
  std::string shell;
};

int PrintCompletion(const CompletionRequest& request) {
  const Shell shell = request.shell == "zsh" ? Shell::zsh : request.shell == "fish" ? Shell::fish : Shell::bash;
  WriteOutput(CompletionScript(shell, FactsOfAllCommands()));
  return kDone;
}

struct ManRequest {
  std::string command;
  std::string folder;
};

void WritePage(const std::string& place, const std::string& page) {
  try {
    platform::ReplacementFile file(platform::PathFromUtf8(place));
    file.Write(page.data(), static_cast<UINT>(page.size()));
    file.Commit();
  } catch (const std::exception&) {
    throw CurrentFailure({place});
  }
}

int PrintManual(const ManRequest& request) {
  const auto all = FactsOfAllCommands();
  for (const CommandFacts* const command : CommandsWithPages(all)) {
    if (!request.folder.empty()) {
      WritePage(request.folder + '/' + ManPageName(*command) + ".1", ManPage(all, *command));
    } else if (command->name == (request.command.empty() ? "ondrel" : "ondrel " + request.command)) {
      WriteOutput(ManPage(all, *command));
    }
  }
  return kDone;
}

}  // namespace

void DescribeCompletion(CLI::App& command, Run& run) {
  const auto request = std::make_shared<CompletionRequest>();
  command.add_option("SHELL", request->shell, "The shell that the script is for (required)")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh", "fish"}))
      ->option_text("bash|zsh|fish");
  SetClosingText(command, "The packages bring these scripts along; this is for where there is no package.",
                 "  source <(ondrel completion bash)\n  ondrel completion zsh > ~/.zfunc/_ondrel\n"
                 "  ondrel completion fish > ~/.config/fish/completions/ondrel.fish\n");
  RunWith(command, run, request, PrintCompletion);
}

void DescribeMan(CLI::App& command, Run& run) {
  const auto request = std::make_shared<ManRequest>();
  CLI::Option* const name =
      command.add_option("COMMAND", request->command, "The command; without it, the page of ondrel itself")
          ->option_text(" ")
          ->check([](const std::string& given) {
            const auto all = FactsOfAllCommands();
            const auto below = CommandsBelow(all, "ondrel");
            const bool isKnown = std::any_of(below.begin(), below.end(),
                                             [&](const auto* facts) { return facts->name == "ondrel " + given; });
            return isKnown ? std::string() : "there is no command " + given + "; see 'ondrel --help'";
          });
  command.add_option("-d,--directory", request->folder, "Write all pages into a folder instead, as ondrel.1 and so on")
      ->option_text("DIR")
      ->excludes(name);
  SetClosingText(command, "", "  ondrel man | man -l -\n  ondrel man compile | man -l -\n");
  RunWith(command, run, request, PrintManual);
}

}  // namespace ondrel::command
