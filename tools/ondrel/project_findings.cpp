// The order and the choice of findings.
#include "project_findings.h"

#include <algorithm>

namespace ondrel::command {
namespace {

template <class Condition>
const Finding* FirstOf(const std::vector<Finding>& findings, Condition condition) {
  const auto found = std::find_if(findings.begin(), findings.end(), condition);
  return found == findings.end() ? nullptr : &*found;
}

}  // namespace

void ProjectFindings::Sort() {
  std::stable_sort(m_findings.begin(), m_findings.end(),
                   [](const Finding& left, const Finding& right) { return left.order < right.order; });
}

const Finding* ProjectFindings::First(HRESULT status) const {
  return FirstOf(m_findings,
                 [status](const Finding& finding) { return finding.status == status && !finding.endsNever; });
}

const Finding* ProjectFindings::Obstacle() const {
  return FirstOf(m_findings, [](const Finding& finding) { return finding.endsNever; });
}

}  // namespace ondrel::command
