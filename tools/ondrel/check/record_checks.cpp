// The checks of nodes and dialogs.
#include <map>
#include <optional>

#include "check/checks.h"
#include "printable.h"

namespace ondrel::command {
namespace {

/// The top-level node that a save and an image hold: of those whose cookie is not negative the one of the lowest.
std::size_t FindTopNode(const std::vector<ProjectRecord>& records) {
  std::size_t found = kNoRecord;
  for (std::size_t index = 0; index < records.size(); ++index) {
    const ProjectRecord& record = records[index];
    const bool isTop = !record.isDialog && record.parent == kNoRecord && record.cookie && *record.cookie >= 0;
    if (isTop && (found == kNoRecord || *record.cookie < *records[found].cookie)) found = index;
  }
  return found;
}

/// "node 5", "node 5 with the 3 nodes below it"
std::string SubtreeLabel(const ProjectRecord& record, std::size_t nodes) {
  if (nodes == 1) return record.label;
  return record.label + " with the " + Counted(nodes - 1, "node", "nodes") + " below it";
}

}  // namespace

void RemarkOnLostNodes(const ProjectContents& contents, Remarks& remarks) {
  const std::vector<ProjectRecord>& records = contents.records;
  const std::size_t top = FindTopNode(records);
  std::vector<std::size_t> lostWith(records.size(), kNoRecord);  // the topmost lost node of each lost one
  std::map<std::size_t, std::size_t> subtrees;                   // and how many are lost with it
  for (std::size_t index = 0; index < records.size(); ++index) {
    const ProjectRecord& record = records[index];
    if (record.isDialog || !record.cookie) continue;
    if (record.parent != kNoRecord) lostWith[index] = lostWith[record.parent];
    const bool isSecond = record.parent == kNoRecord && index != top;
    if (lostWith[index] == kNoRecord && (*record.cookie < 0 || isSecond)) lostWith[index] = index;
    if (lostWith[index] != kNoRecord) ++subtrees[lostWith[index]];
  }
  for (const auto& [index, nodes] : subtrees) {
    const ProjectRecord& record = records[index];
    if (*record.cookie < 0) {
      remarks.push_back({Remark::Severity::error, "node-lost", record.line, record.About(),
                         SubtreeLabel(record, nodes) +
                             " would be lost: neither a save nor an image holds a node of a negative cookie; give it "
                             "a cookie of 0 or more"});
    } else {
      const std::string kept = records[top].label;
      remarks.push_back({Remark::Severity::error, "second-top-node", record.line, record.About(),
                         SubtreeLabel(record, nodes) + " stands at the top beside " + kept +
                             ": an image refuses that, and a save would keep " + kept + " alone; put it below " +
                             kept});
    }
  }
}

void RemarkOnTypes(const ProjectContents& contents, Remarks& remarks) {
  for (const ProjectRecord& record : contents.records) {
    switch (record.type) {
      case CMMCObjectParams::eList:
      case CMMCObjectParams::eHTML:
      case CMMCObjectParams::eDialog:
        break;
      default:
        remarks.push_back({Remark::Severity::warning, "unknown-type", record.line, record.About(),
                           record.label +
                               " is of no known type, and a save writes \"Oops!!\" for it; give it the type List, HTML "
                               "or Dialog"});
    }
  }
}

void RemarkOnDialogs(const ProjectContents& contents, Remarks& remarks) {
  std::map<CCaselessSortStringT<CString>, const ProjectRecord*> names;
  for (const ProjectRecord& record : contents.records) {
    if (!record.isDialog) continue;
    if (record.cookie == 0) {
      remarks.push_back({Remark::Severity::warning, "dialog-cookie-zero", record.line, record.About(),
                         "dialog 0 cannot be looked up by its name, because 0 stands for no dialog there; give it "
                         "another cookie"});
    }
    const auto [alike, isNew] = names.try_emplace(record.name, &record);
    if (isNew || alike->second->name == record.name) continue;  // a load refuses the same name
    remarks.push_back({Remark::Severity::warning, "dialog-names-alike", record.line, record.About(),
                       record.label + " has the name " + Quoted(record.name) + ", which differs from that of " +
                           alike->second->label + " by letter case alone; give it another"});
  }
}

}  // namespace ondrel::command
