// From two definition files to a list of differences on standard output.
#include "diff/diff.h"

#include <algorithm>

#include "diff/differences.h"
#include "json_values.h"
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
      std::string(1, NameOf(difference.change).mark).append(" ").append(KindName(difference.about.kind)).append(" ") +
      std::to_string(difference.about.cookie);
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
  std::string out;
  {
    JsonObjectWriter object(out);
    {
      JsonArrayWriter array(object, "differences");
      for (const Difference& difference : differences) {
        array.Add({{"change", NameOf(difference.change).name},
                   {"object", KindName(difference.about.kind)},
                   {"cookie", CookieJson(difference.about.cookie)},
                   {"name", difference.name},
                   {"detail", difference.detail}});
      }
    }
    for (const ChangeName& name : kChangeNames) object.Add(name.name, CountOf(differences, name.change));
  }
  return out + '\n';
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
