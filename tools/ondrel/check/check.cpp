// From a definition file to a list of remarks on standard output.
#include "check/check.h"

#include <algorithm>
#include <vector>

#include <ondrel/platform/program.h>

#include "check/remark.h"
#include "json_values.h"
#include "output.h"
#include "printable.h"

namespace ondrel::command {
namespace {

bool IsError(const Remark& remark) { return remark.severity == Remark::Severity::error; }

const char* SeverityName(const Remark& remark) { return IsError(remark) ? "error" : "warning"; }

/// What was found on a definition that does not load, with `refusal`.
std::vector<Remark> RemarksOnRefused(Definition& definition, const Failure& refusal) {
  const auto refused = [&](const char* code) {
    return Remark{Remark::Severity::error, code, refusal.Line(), std::nullopt, refusal.Explanation()};
  };
  if (definition.form == DefinitionForm::image) return {refused("image-damaged")};
  const ProjectInspector& project = definition.Project();
  if (project.Fault()) return {refused("xml-malformed")};
  std::vector<Remark> remarks;
  for (const Finding& finding : project.Findings().All()) {
    remarks.push_back({Remark::Severity::error, finding.code, finding.line, finding.about, finding.explanation});
  }
  for (Remark& remark : RemarksOn(definition)) remarks.push_back(std::move(remark));
  if (std::none_of(remarks.begin(), remarks.end(), IsError)) remarks.push_back(refused("load-refused"));
  std::stable_sort(remarks.begin(), remarks.end(),
                   [](const Remark& left, const Remark& right) { return left.line < right.line; });
  return remarks;
}

std::string PlainText(const std::string& file, const std::vector<Remark>& remarks, std::size_t errors) {
  const std::string place = PrintablePath(file) + ':';
  if (remarks.empty()) return place + " nothing was found\n";
  std::string text;
  for (const Remark& remark : remarks) {
    text += place;
    if (remark.line > 0) text += std::to_string(remark.line) + ':';
    text.append(" ").append(SeverityName(remark)).append(": ").append(Printable(remark.explanation));
    text.append(" [").append(remark.code).append("]\n");
  }
  return text + Counted(errors, "error", "errors") + ", " + Counted(remarks.size() - errors, "warning", "warnings") +
         '\n';
}

Json RemarkJson(const Remark& remark) {
  constexpr std::string_view kBeforeAdvice = "; ";
  const std::size_t end = remark.explanation.rfind(kBeforeAdvice);
  return {{"severity", SeverityName(remark)},
          {"code", remark.code},
          {"line", remark.line > 0 ? Json(remark.line) : Json()},
          {"object", remark.about ? Json(KindName(remark.about->kind)) : Json()},
          {"cookie", remark.about ? CookieJson(remark.about->cookie) : Json()},
          {"text", remark.explanation.substr(0, end)},
          {"advice", end == std::string::npos ? "" : remark.explanation.substr(end + kBeforeAdvice.size())}};
}

std::string JsonText(const std::string& file, const std::vector<Remark>& remarks, std::size_t errors) {
  std::string out;
  {
    JsonObjectWriter object(out);
    object.Add("file", platform::ToUtf8(platform::PathFromUtf8(file)));
    {
      JsonArrayWriter array(object, "remarks");
      for (const Remark& remark : remarks) array.Add(RemarkJson(remark));
    }
    object.Add("errors", errors);
    object.Add("warnings", remarks.size() - errors);
  }
  return out + '\n';
}

}  // namespace

int Check(const CheckRequest& request) {
  const InspectedDefinition inspected = InspectDefinition(request.file, request.reading);
  std::vector<Remark> remarks;
  try {
    Definition& definition = *inspected.definition;
    if (inspected.refusal) {
      remarks = RemarksOnRefused(definition, *inspected.refusal);
    } else {
      remarks = request.lossesAlone ? LossesOfSave(definition) : RemarksOn(definition);
    }
  } catch (const std::exception&) {
    throw CurrentFailure({request.file});
  }
  const auto errors = static_cast<std::size_t>(std::count_if(remarks.begin(), remarks.end(), IsError));
  WriteOutput(request.json ? JsonText(request.file, remarks, errors) : PlainText(request.file, remarks, errors));
  return errors > 0 || (request.areWarningsErrors && !remarks.empty()) ? kFailed : kDone;
}

}  // namespace ondrel::command
