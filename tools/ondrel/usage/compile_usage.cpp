// How `ondrel compile` is called.
#include "compile/compile.h"

#include <ondrel/platform/program.h>

#include "printable.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

/// The two sides of "LEFT=RIGHT", at the first "=".
struct Assignment {
  std::string left;
  std::string right;
};

Assignment ReadAssignment(const std::string& option, const std::string& text) {
  const std::size_t sign = text.find('=');
  if (sign == std::string::npos || sign == 0 || sign + 1 == text.size()) {
    throw CLI::ValidationError(option, Shortened(text) + " has no \"=\" with something on both sides");
  }
  return {text.substr(0, sign), text.substr(sign + 1)};
}

void ReadFilters(const std::vector<std::string>& texts, CompileRequest& request) {
  for (const std::string& text : texts) {
    const Assignment filter = ReadAssignment("--filter", text);
    request.rules.filters.push_back({Glob(platform::PathFromUtf8(filter.left)), filter.right});
  }
}

void ReadMap(const std::vector<std::string>& texts, CompileRequest& request) {
  for (const std::string& text : texts) {
    const Assignment place = ReadAssignment("--map", text);
    request.rules.map.Add(platform::PathFromUtf8(place.left), platform::PathFromUtf8(place.right));
  }
}

std::chrono::seconds ReadTimeLimit(const std::string& text) {
  constexpr std::size_t kMostDigits = 9;  // more than thirty years
  const bool isNumber = !text.empty() && text.size() <= kMostDigits &&
                        text.find_first_not_of("0123456789") == std::string::npos &&
                        text != std::string(text.size(), '0');
  if (!isNumber) {
    throw CLI::ValidationError("--timeout", Shortened(text) + " is no number of seconds from 1 to 999999999");
  }
  return std::chrono::seconds(std::stol(text));
}

void RequirePlaces(const CompileRequest& request) {
  if (request.listsInputs) return;
  const bool isOne = request.projects.size() == 1;
  if (!request.image && !request.directory) throw CLI::RequiredError("--output or --directory");
  if (request.image && request.directory) {
    throw CLI::ValidationError("--output", "it cannot be given together with --directory");
  }
  if (request.image && !isOne) {
    throw CLI::ValidationError("--output", "it is for one project; give several a --directory");
  }
  if (request.dependencyFile && !isOne) {
    throw CLI::ValidationError("--depfile", "it is for one project; compile each on its own");
  }
}

/// An option that may be given several times, with one value each.
void AddRepeated(CLI::App& command, const std::string& name, const char* value, const std::string& description,
                 void (*read)(const std::vector<std::string>&, CompileRequest&),
                 const std::shared_ptr<CompileRequest>& request) {
  command
      .add_option_function<std::vector<std::string>>(
          name, [read, request](const std::vector<std::string>& texts) { read(texts, *request); }, description)
      ->allow_extra_args(false)
      ->option_text(value);
}

}  // namespace

void DescribeCompile(CLI::App& command, Run& run) {
  const auto request = std::make_shared<CompileRequest>();
  command.add_option("PROJECT", request->projects, "The project files, XML (at least one)")
      ->required()
      ->option_text("...");
  command.add_option("-o,--output", request->image, "The object image; it is replaced whole, or not at all")
      ->option_text("IMAGE");
  command
      .add_option("-d,--directory", request->directory,
                  "The folder of the images, each with its project's name and the ending .img")
      ->option_text("DIR");
  AddTextReading(command, request->reading);
  AddRepeated(command, "--filter", "GLOB=COMMAND",
              "Run the code files that match through a command of the shell; of several the first that matches",
              ReadFilters, request);
  command
      .add_option_function<std::string>(
          "--timeout", [request](const std::string& text) { request->rules.timeLimit = ReadTimeLimit(text); },
          "Stop a filter that takes longer for a file, and fail; without it filters have all time")
      ->option_text("SECONDS");
  AddRepeated(command, "--map", "PREFIX=DIR",
              "Take the files whose absolute paths in the project begin with PREFIX from DIR; of several the first",
              ReadMap, request);
  command
      .add_option("--depfile", request->dependencyFile,
                  "Also write what the image depends on, in make's format, when the image is written")
      ->option_text("FILE");
  command.add_flag("--list", request->listsInputs, "Print the files that images would be made of, and make none");
  command.parse_complete_callback([request] { RequirePlaces(*request); });
  SetClosingText(
      command,
      "One of --output and --directory is needed. The project's icon and code files go into the image as they\n"
      "are, unless a filter says otherwise. Relative names in the project start at the project's folder. Of\n"
      "several projects the first that fails ends the command; the images of those before it stay.\n\n"
      "GLOB is compared with the paths that 'ondrel show' prints; without a separator, with their last parts.\n"
      "* and ? stay within a part, ** does not, [a-z] is one of these, [!a-z] any other; / and \\ are the same,\n"
      "and so are capital and small letters. COMMAND reads the file from its standard input, and the image holds\n"
      "what it writes to its standard output; it runs in the project's folder, by /bin/sh -c or cmd.exe /d /s /c,\n"
      "and an exit code other than 0 is a failure. Its environment has ONDREL_FILE, the file's path,\n"
      "ONDREL_COOKIE, its cookie, and ONDREL_FOLDERS, a line for each folder of code files: the cookie of the\n"
      "first file in it, a space and the folder. Each folder is also the name of a variable with that cookie, but\n"
      "for names with \"=\"; some shells do not hand those on. Folders that take more than 30,000 bytes are left "
      "out.\n\n"
      "PREFIX ends where a part of the path does; capital and small letters and / and \\ are the same. The image\n"
      "does not change by where its files were taken from.",
      "  ondrel compile console.xml -o console.img\n"
      "  ondrel compile console.xml -o console.img --filter '*.js=minify' --depfile console.d\n"
      "  ondrel compile disks.xml users.xml -d images --map 'C:\\icons=assets'\n");
  RunWith(command, run, request, Compile);
}

}  // namespace ondrel::command
