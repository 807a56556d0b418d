#include "faults/definition.h"

#include <stdexcept>

#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

// Longer than what a string holds without memory of its own, and than what an archive loads without.
const CString& LongText() {
  static const CString text(_T('x'), 100);
  return text;
}

void Require(HRESULT status) {
  if (status != S_OK) throw std::logic_error("the definition cannot be made");
}

PngPicture Interlaced(PngPicture picture) {
  picture.interlaced = true;
  return picture;
}

CMMCObjectParams Full(__int64 cookie, CMMCObjectParams::_eTypeNode type) {
  RecordFields fields = FullRecord(type);
  fields.cookie = cookie;
  fields.childQueries.emplace_back(LongText(), 40);
  fields.renderQueries.emplace_back(LongText(), 41);
  return MakeRecord(fields);
}

}  // namespace

Definition::Definition() : m_projectName(In(_T("project.xml"))) {
  m_folder.Write("png.ico", IconFileBytes({StoredPng(Interlaced(PatternPng(32, 32, PngColour::palette, 8))),
                                           StoredPng(PatternPng(16, 16, PngColour::trueColourAlpha, 16))}));
  WriteIcon(m_folder, "colours.ico", {PatternPicture(32, 32, 32), PatternPicture(16, 16, 32)});
  WriteIcon(m_folder, "black_and_white.ico", {PatternPicture(32, 32, 1)});
  m_folder.Write("a.js", "var a = 1;");
  m_folder.Write("sub/b.xsl", std::string(300, 'b'));
}

std::unique_ptr<CMMCObjectSet> Definition::Make() const {
  auto set = std::make_unique<CMMCObjectSet>(LeaveToSet);
  Require(set->AddNode(CMMCObjectSet::RootNode, kTopNode, Full(kTopNode, CMMCObjectParams::eHTML)));
  Require(set->AddNode(kTopNode, kFirstChild, MakeRecord({.cookie = kFirstChild, .name = LongText(), .scripts = {1}})));
  Require(set->AddNode(kTopNode, kSecondChild, Full(kSecondChild, CMMCObjectParams::eList)));
  Require(set->AddNode(kFirstChild, kGrandchild,
                       MakeRecord({.cookie = kGrandchild,
                                   .name = _T("Odd"),
                                   .type = CMMCObjectParams::eUnknown,
                                   .childQueries = {{_T("a"), 40}},
                                   .scripts = {1}})));
  Require(set->AddDialog(kFirstDialog, Full(kFirstDialog, CMMCObjectParams::eDialog)));
  Require(set->AddDialog(
      21, MakeRecord({.cookie = 21, .name = LongText(), .type = CMMCObjectParams::eDialog, .scripts = {1}})));
  Require(Probe::InsertIconFile(*set, In(_T("png.ico")), 30));
  Require(Probe::InsertIconFile(*set, In(_T("colours.ico")), 31));
  Require(Probe::InsertIconFile(*set, In(_T("black_and_white.ico")), 32));
  // In the order of their paths, and before those in memory: an image holds them in the order of their cookies so.
  Require(Probe::InsertCodeFile(*set, In(_T("a.js")), 40, Unchanged));
  Require(Probe::InsertCodeFile(*set, In(_T("sub\\b.xsl")), 41, Unchanged));
  Require(Probe::InsertCodeFile(*set, 50, {'x'}));
  Require(Probe::InsertCodeFile(*set, 51, std::vector<char>(300, 'y')));
  Probe::SetModifiedFlag(*set, 1);
  return set;
}

}  // namespace ondrel::test
