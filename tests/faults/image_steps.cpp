#include "faults/image_steps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

#include "support/archive_bytes.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

void RequireAdded(HRESULT status) {
  if (status != S_OK) throw std::logic_error("an object cannot be added");
}

CMMCObjectIcon CopyOf(const CMMCObjectIcon& icon) {
  const std::string bytes = Stored([&](CVellum& archive) { icon.Serialize(archive); });
  LoadingArchive archive(bytes);
  CMMCObjectIcon copy;
  copy.Deserialize(*archive);
  return copy;
}

void AddNodesBelow(CMMCObjectSet& whole, __int64 parent, CMMCObjectSet& set, const std::function<void()>& note) {
  for (const __int64 cookie : whole.GetChildNodes(parent)) {
    RequireAdded(set.AddNode(parent, cookie, RecordOf(whole, cookie)));
    note();
    AddNodesBelow(whole, cookie, set, note);
  }
}

}  // namespace

ImageSteps::ImageSteps(CMMCObjectSet& stored) : m_image(SavedImage(stored)) {
  m_states.push_back(Observed(*MakeOldSet()));
  CMMCObjectSet whole(LeaveToSet);
  LoadImage(whole, m_image);
  // The same again, object by object.
  CMMCObjectSet set(LeaveToSet);
  const auto note = [&] { m_states.push_back(Observed(set)); };
  note();
  AddNodesBelow(whole, CMMCObjectSet::RootNode, set, note);
  for (const __int64 cookie : whole.GetDialogs()) {
    RequireAdded(set.AddDialog(cookie, RecordOf(whole, cookie)));
    note();
  }
  for (const __int64 cookie : whole.GetIconFiles()) {
    const CMMCObjectIcon* icon = nullptr;
    whole.GetIconFile(cookie, &icon);
    RequireAdded(Probe::InsertIconFile(set, cookie, CopyOf(*icon)));
    note();
  }
  for (const __int64 cookie : whole.GetCodeFiles()) {
    std::vector<char> contents;
    whole.GetCodeFileContents(cookie, contents);
    RequireAdded(Probe::InsertCodeFile(set, cookie, std::move(contents)));
    note();
  }
  if (m_states.back() != Observed(whole)) throw std::logic_error("the steps do not lead to the whole image");
}

std::unique_ptr<CMMCObjectSet> ImageSteps::MakeOldSet() {
  auto set = std::make_unique<CMMCObjectSet>(LeaveToSet);
  RequireAdded(set->AddNode(CMMCObjectSet::RootNode, 1, MakeRecord({.cookie = 1, .name = _T("Old")})));
  RequireAdded(Probe::InsertCodeFile(*set, 2, {'o', 'l', 'd'}));
  Probe::SetModifiedFlag(*set, 1);
  return set;
}

int ImageSteps::StepOf(CMMCObjectSet& set) const {
  const auto state = std::find(m_states.begin(), m_states.end(), Observed(set));
  return state == m_states.end() ? -1 : static_cast<int>(state - m_states.begin());
}

void ImageLoads::ExpectStep(CMMCObjectSet& set, const Outcome& outcome) {
  const int step = m_steps.StepOf(set);
  EXPECT_GE(step, m_step) << "the set holds:\n" << Observed(set);
  if (outcome == kSuccess) {
    EXPECT_EQ(step, m_steps.LastStep());
  } else if (m_isFirst) {
    EXPECT_EQ(step, 0) << "the set was touched before there was anything for it";
  }
  m_isFirst = false;
  m_step = std::max(step, m_step);
  EXPECT_GE(set.AddNewDialog(_T("Added after the fault")), 0);
  LoadImage(set, m_steps.Image());
  EXPECT_EQ(m_steps.StepOf(set), m_steps.LastStep()) << "the set is of no use any more";
}

}  // namespace ondrel::test
