// The tests' view of a set's private operations.
#pragma once

#include <ondrel/MMCObjectSet.h>

class CMMCObjectSetProbe {
 public:
  static void Initialise(CMMCObjectSet& set) { set.Initialise(); }
  static void SetModifiedFlag(CMMCObjectSet& set, int modified) { set.SetModifiedFlag(modified); }
  static __int64 GenerateFileCookie(const CMMCObjectSet& set) { return set.GenerateFileCookie(); }
  static HRESULT InsertIconFile(CMMCObjectSet& set, CString path, __int64 cookie) {
    return set.InsertIconFile(std::move(path), cookie);
  }
  static HRESULT InsertIconFile(CMMCObjectSet& set, __int64 cookie, CMMCObjectIcon&& icon) {
    return set.InsertIconFile(cookie, std::move(icon));
  }
  static HRESULT InsertCodeFile(CMMCObjectSet& set, CString path, __int64 cookie, CMMCObjectSet::Transform transform) {
    return set.InsertCodeFile(std::move(path), cookie, std::move(transform));
  }
  static HRESULT InsertCodeFile(CMMCObjectSet& set, __int64 cookie, std::vector<char> contents) {
    return set.InsertCodeFile(cookie, std::move(contents));
  }
  static HRESULT SerializeNode(CMMCObjectSet& set, __int64 cookie, CComPtr<IXMLDOMDocument> document,
                               CComPtr<IXMLDOMElement> parent) {
    return set.SerializeNode(cookie, std::move(document), std::move(parent));
  }
  static HRESULT DeserializeNodes(CMMCObjectSet& set, __int64 parent, CComPtr<IXMLDOMNodeList> containers) {
    return set.DeserializeNodes(parent, std::move(containers));
  }
  static void SerializeNode(CMMCObjectSet& set, __int64 cookie, CVellum& archive) {
    set.SerializeNode(cookie, archive);
  }
  static void DeserializeNode(CMMCObjectSet& set, __int64 parent, CVellum& archive) {
    set.DeserializeNode(parent, archive);
  }
  /// The stores themselves, with the members of CMMCObjectSet::Tables.
  static const auto& Tables(const CMMCObjectSet& set) { return set.m_tables; }
  static std::map<__int64, int>& ImageIndices(CMMCObjectSet& set) { return set.m_imageIndices; }
  static CCriticalSection& Lock(const CMMCObjectSet& set) { return set.m_lock; }
  /// Whether MoveNodeDown takes the short way, and makes it take the long one the next time.
  static bool RecordsFitKeys(const CMMCObjectSet& set) { return set.RecordsFitKeys(); }
  static void DoubtCookies(CMMCObjectSet& set) { set.m_cookiesChanged = true; }
  /// Removes a cookie from the object index alone, to make the set inconsistent.
  static void ForgetObject(CMMCObjectSet& set, __int64 cookie) {
    set.m_tables.objects.erase(cookie);
    set.m_tables.lastNode.reset();
  }
};
