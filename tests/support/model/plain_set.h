// The rules of nodes and dialogs, told a second time: as plainly as they can be written, to check the set against.
#pragma once

#include <list>
#include <map>
#include <string>
#include <utility>

#include "support/model/sets.h"

namespace ondrel::test {

/// What a set should hold and answer. Nothing here is made to be quick.
class PlainSet {
 public:
  __int64 AddNewNode(__int64 parent, const CString& name, CMMCObjectParams::_eTypeNode type);
  HRESULT AddNode(__int64 parent, __int64 cookie, const RecordFields& record);
  HRESULT RemoveNode(__int64 cookie);
  HRESULT MoveNodeDown(__int64 cookie);
  __int64 AddNewDialog(const CString& name);
  HRESULT AddDialog(__int64 cookie, const RecordFields& record);
  HRESULT RemoveDialog(__int64 cookie);
  void SetParams(__int64 cookie, const RecordFields& record);

  std::list<__int64> GetChildNodes(__int64 parent) const;
  std::list<__int64> GetDialogs() const;
  __int64 GetDialog(const CString& name) const;
  bool IsModified() const { return m_modified; }

  /// The text that DescribeObjects gives for a set that holds the same.
  std::string Describe() const;

 private:
  struct Node {
    __int64 parent;
    RecordFields record;
  };

  bool IsTaken(__int64 cookie) const { return m_nodes.contains(cookie) || m_dialogs.contains(cookie); }
  __int64 NextCookie() const;
  /// Nodes in the order of the tree: by parent, then by cookie.
  std::map<std::pair<__int64, __int64>, RecordFields> InTreeOrder() const;

  std::map<__int64, Node> m_nodes;  ///< By the cookie they were added under.
  std::map<__int64, RecordFields> m_dialogs;
  std::map<CString, __int64> m_dialogNames;
  bool m_modified = false;
};

}  // namespace ondrel::test
