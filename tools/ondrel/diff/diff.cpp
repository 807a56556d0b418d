// From two definition files to a list of differences on standard output.
#include "diff/diff.h"

#include <algorithm>

#include "diff/differences.h"
#include "json_output.h"
#include "output.h"
#include "printable.h"

namespace ondrel::command {
namespace {

using Change = Difference::Change;

struct ChangeName {
  Change change;
  char mark;
  const char* name;
};
constexpr ChangeName kChangeNames[] = {
    {Change::added, '+', "added"},
    {Change::removed, '-', "removed"},
    {Change::moved, '>', "moved"},
    {Change::changed, '~', "changed"},
};

const ChangeName& NameOf(Change change) {
  return *std::find_if(std::begin(kChangeNames), std::end(kChangeNames),
                       [change](const ChangeName& name) { return name.change == change; });
}

std::size_t CountOf(const Differences& differences, Change change) {
  return static_cast<std::size_t>(
      std::count_if(differences.begin(), differences.end(),
                    [change](const Difference& difference) { return difference.change == change; }));
}

std::string PlainLine(const Difference& difference) {
  std::string line =
      NameOf(difference.change).mark + (' ' + std::string(difference.object)) + ' ' + std::to_string(difference.cookie);
  if (!difference.name.empty()) line += " \"" + difference.name + '"';
  if (!difference.detail.empty()) line += (difference.change == Change::moved ? " moved " : ": ") + difference.detail;
  return line + '\n';
}

std::string PlainText(const Differences& differences) {
  if (differences.empty()) return "nothing differs\n";
  std::string text;
  for (const Difference& difference : differences) text += PlainLine(difference);
  std::string summary;
  for (const ChangeName& name : kChangeNames) {
    summary.append(summary.empty() ? "" : ", ");
    summary.append(std::to_string(CountOf(differences, name.change))).append(" ").append(name.name);
  }
  return text + summary + '\n';
}

std::string JsonText(const Differences& differences) {
  std::string text = "{\"differences\":[";
  for (const Difference& difference : differences) {
    text.append(&difference == differences.data() ? "\n" : ",\n");
    text.append("{\"change\":\"").append(NameOf(difference.change).name);
    text.append("\",\"object\":\"").append(difference.object);
    text.append("\",\"cookie\":\"").append(std::to_string(difference.cookie));
    text.append("\",\"name\":").append(JsonString(difference.name));
    text.append(",\"detail\":").append(JsonString(difference.detail)).append("}");
  }
  text += ']';
  for (const ChangeName& name : kChangeNames) {
    text.append(",\n\"").append(name.name).append("\":").append(std::to_string(CountOf(differences, name.change)));
  }
  return text + "}\n";
}

}  // namespace

int Diff(const DiffRequest& request) {
  try {
    const auto older = ReadDefinition(request.older, request.reading);
    const auto newer = ReadDefinition(request.newer, request.reading);
    Differences differences;
    FindNodeDifferences(*older, *newer, differences);
    FindDialogDifferences(*older, *newer, differences);
    FindFileDifferences(*older, *newer, differences);
    WriteOutput(request.json ? JsonText(differences) : PlainText(differences));
    return differences.empty() ? kDone : kDiffers;
  } catch (const std::exception&) {
    throw CurrentFailure({}).With(kTrouble);
  }
}

}  // namespace ondrel::command
