// Random edits of nodes and dialogs.
#include <optional>

#include "support/model/edit_program.h"
#include "support/model/plain_conversions.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

std::string Text(CMMCObjectParams* record) {
  return record == nullptr ? "no record" : test::Describe(FieldsOf(*record));
}
std::string Text(PlainRecord* record) { return record == nullptr ? "no record" : Describe(*record); }

CMMCObjectParams* Find(const CMMCObjectSet& set, __int64 cookie) {
  CMMCObjectParams* record = nullptr;
  const bool found = set.GetParams(cookie, record);
  return found ? record : nullptr;
}

}  // namespace

void EditProgram::AddNewNode() {
  const __int64 parent = ObjectCookie();
  const PlainText name = Name();
  const int type = Type();
  const __int64 expected = m_plain.AddNewNode(parent, name, type);
  const __int64 got = m_set->AddNewNode(parent, Real(name), static_cast<CMMCObjectParams::_eTypeNode>(type));
  Expect("cookie " + std::to_string(expected), "cookie " + std::to_string(got));
  Note(got == -2 ? "-2" : "a cookie");
}

void EditProgram::AddNode() {
  const __int64 parent = ObjectCookie();
  const __int64 cookie = ObjectCookie();
  const PlainRecord record = Record(cookie);
  ExpectStatus(m_plain.AddNode(parent, cookie, record), m_set->AddNode(parent, cookie, Real(record)));
}

void EditProgram::RemoveNode() {
  const __int64 cookie = ObjectCookie();
  ExpectStatus(m_plain.RemoveNode(cookie), m_set->RemoveNode(cookie));
}

void EditProgram::MoveNodeDown() {
  const __int64 cookie = ObjectCookie();
  ExpectStatus(m_plain.MoveNodeDown(cookie), m_set->MoveNodeDown(cookie));
}

void EditProgram::AddNewDialog() {
  const PlainText name = Name();
  const __int64 expected = m_plain.AddNewDialog(name);
  const __int64 got = m_set->AddNewDialog(Real(name));
  Expect("cookie " + std::to_string(expected), "cookie " + std::to_string(got));
  Note(got == -2 ? "-2" : "a cookie");
}

void EditProgram::AddDialog() {
  const __int64 cookie = ObjectCookie();
  const PlainRecord record = Record(cookie);
  ExpectStatus(m_plain.AddDialog(cookie, record), m_set->AddDialog(cookie, Real(record)));
}

void EditProgram::RemoveDialog() {
  const __int64 cookie = ObjectCookie();
  ExpectStatus(m_plain.RemoveDialog(cookie), m_set->RemoveDialog(cookie));
}

void EditProgram::GetDialog() {
  const PlainText name = Name();
  const __int64 got = m_set->GetDialog(Real(name));
  Expect("cookie " + std::to_string(m_plain.GetDialog(name)), "cookie " + std::to_string(got));
  Note(got == 0 ? "0" : "a cookie");
}

void EditProgram::GetDialogs() { ExpectCookies(m_plain.GetDialogs(), m_set->GetDialogs()); }

void EditProgram::GetChildNodes() {
  const __int64 parent = ObjectCookie();
  ExpectCookies(m_plain.GetChildNodes(parent), m_set->GetChildNodes(parent));
}

void EditProgram::GetParams() {
  const __int64 cookie = ObjectCookie();
  CMMCObjectParams* const got = Find(*m_set, cookie);
  Expect(Text(m_plain.GetParams(cookie)), Text(got));
  Note(got == nullptr ? "false" : "true");
}

void EditProgram::ChangeInPlace() {
  const __int64 cookie = ObjectCookie();
  const PlainText name = Name();
  PlainRecord* const plain = m_plain.GetParams(cookie);
  CMMCObjectParams* const real = Find(*m_set, cookie);
  Expect(Text(plain), Text(real));
  Note(plain == nullptr ? "nothing" : "a record");
  if (plain == nullptr) return;
  // The record is the set's own: the set knows nothing of the change, neither flag nor names.
  plain->name = name;
  real->SetName(Real(name));
}

void EditProgram::SetParams() {
  const __int64 cookie = ObjectCookie();
  const PlainRecord record = Record(cookie);
  Note(m_plain.GetParams(cookie) == nullptr ? "nothing" : "a record");
  m_plain.SetParams(cookie, record);
  const CMMCObjectParams real = Real(record);
  m_set->SetParams(cookie, &real);
}

void EditProgram::SetModifiedFlag() {
  const bool modified = Number(2) != 0;
  m_plain.SetModifiedFlag(modified);
  CMMCObjectSetProbe::SetModifiedFlag(*m_set, modified ? 1 : 0);
  Note(modified ? "modified" : "unmodified");
}

void EditProgram::Initialise() {
  if (Number(4) != 0) return;  // so that sets have the time to grow
  m_plain.Initialise();
  CMMCObjectSetProbe::Initialise(*m_set);
  Note("emptied");
}

}  // namespace ondrel::test
