// What the checks find, put in order.
#include "check/remark.h"

#include <algorithm>
#include <optional>

#include "check/checks.h"
#include "check/contents.h"

namespace ondrel::command {
namespace {

void SortByLine(Remarks& remarks) {
  std::stable_sort(remarks.begin(), remarks.end(),
                   [](const Remark& left, const Remark& right) { return left.line < right.line; });
}

Remark RemarkOf(const Leftover& leftover) {
  return {Remark::Severity::warning, leftover.code, leftover.line, leftover.about, leftover.explanation};
}

}  // namespace

std::vector<Remark> RemarksOn(Definition& definition) {
  const bool isProject = definition.form == DefinitionForm::project;
  std::optional<ProjectContents> image;
  if (!isProject) image = ContentsOfImage(definition.set);
  const ProjectContents& contents = isProject ? definition.Project().Contents() : *image;

  Remarks remarks;
  RemarkOnLostNodes(contents, remarks);
  RemarkOnTypes(contents, remarks);
  RemarkOnDialogs(contents, remarks);
  RemarkOnNamelessScripts(contents, remarks);
  RemarkOnReferences(contents, remarks);
  RemarkOnFileNames(contents, remarks);
  RemarkOnStrips(definition, contents, remarks);
  if (isProject) {
    RemarkOnDisk(definition, contents, remarks);
    RemarkOnText(definition, remarks);
    for (const Leftover& leftover : definition.Project().Leftovers()) {
      if (leftover.isData) remarks.push_back(RemarkOf(leftover));
    }
  }
  SortByLine(remarks);
  if (!isProject) {
    for (Remark& remark : remarks) remark.line = 0;
  }
  return remarks;
}

std::vector<Remark> LossesOfSave(Definition& definition) {
  if (definition.form != DefinitionForm::project) return {};
  const ProjectContents& contents = definition.Project().Contents();
  Remarks losses;
  RemarkOnLostNodes(contents, losses);
  RemarkOnTypes(contents, losses);
  RemarkOnNamelessScripts(contents, losses);
  for (const Leftover& leftover : definition.Project().Leftovers()) losses.push_back(RemarkOf(leftover));
  SortByLine(losses);
  return losses;
}

}  // namespace ondrel::command
