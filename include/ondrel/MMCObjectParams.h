// The record of one node of the console tree or of one dialog: values and cookies, never paths or pointers.
#pragma once

#include <atomic>
#include <utility>
#include <vector>

#include <ondrel/export.h>
#include <ondrel/platform/framework.h>
#include <ondrel/platform/vellum.h>
#include <ondrel/platform/xml.h>

/// The parameters of one node or dialog. A record owns its strings and lists and shares none of them with the set that
/// keeps it. The order of every list counts and is kept by copies, by the XML form and by the binary form; duplicates
/// are allowed. A record has no lock: one thread at a time, or only readers.
///
/// Cookies are signed 64-bit numbers. An object cookie names a node or dialog of a set; a file cookie names an icon
/// file or a code file (script, style sheet, query file), and 0 means none.
///
/// Copying and assigning raise std::bad_alloc when memory is short.
class ONDREL_API CMMCObjectParams {
 public:
  /// What a node shows.
  enum _eTypeNode : int {
    eList = 0,     ///< A list view.
    eHTML = 1,     ///< An HTML view, rendered by the style sheet from the render queries.
    eDialog = 2,   ///< A dialog.
    eUnknown = 3,  ///< What GetNodeType gives for a name that is none of the three.
  };

  /// The version of a record's format, as an object image carries it for all of its records.
  static const DWORD n_nCurrentVersion;  // 1
  /// The variant types in which cookies travel: VT_I8.
  static const int VT_OBJECT_COOKIE;
  static const int VT_FILE_COOKIE;

  using QueryList = std::vector<std::pair<CString, __int64>>;  ///< Pairs of a tag and the file cookie of its query.
  using ScriptList = std::vector<__int64>;                     ///< File cookies.

  /// Cookie 0, no name, List, no files.
  CMMCObjectParams();
  CMMCObjectParams(__int64 cookie, CString name, _eTypeNode type);
  CMMCObjectParams(const CMMCObjectParams& other);
  /// Takes the three lists over, which leaves those of `other` empty; everything else, the name too, is copied.
  CMMCObjectParams(CMMCObjectParams&& other);  // NOLINT(performance-noexcept-move-constructor): a copied name may raise
  CMMCObjectParams& operator=(const CMMCObjectParams& other);

  // The virtual operations stand in the order that callers' builds rely on: setters before getters, and the style sheet
  // last.
  virtual ~CMMCObjectParams();
  /// The low 32 bits of the cookie as a signed decimal number of at least four digits: "0007", "12345", "-0001".
  virtual CString GetIdentity() const;
  virtual void SetName(CString name);
  virtual CString GetName() const;  ///< The display name.
  virtual void SetIcon(__int64 fileCookie);
  virtual __int64 GetIcon() const;            ///< The icon file.
  virtual void SetNodeType(_eTypeNode type);  ///< Any value is kept, without a check.
  virtual _eTypeNode GetNodeType() const;
  /// The list setters take the argument's storage and leave it empty; handed the record's own list, they do nothing.
  /// The getters give copies.
  virtual void SetChildQueries(QueryList&& queries);
  virtual QueryList GetChildQueries() const;  ///< The queries that produce the node's children.
  virtual void SetMenuScript(__int64 fileCookie);
  virtual __int64 GetMenuScript() const;  ///< The script that builds the context menu.
  virtual void SetScripts(ScriptList&& fileCookies);
  virtual ScriptList GetScripts() const;  ///< The scripts attached to the node.
  virtual void SetRenderQueries(QueryList&& queries);
  virtual QueryList GetRenderQueries() const;  ///< The queries whose results the style sheet renders.
  virtual void SetStyleSheet(__int64 fileCookie);
  virtual __int64 GetStyleSheet() const;

  /// The object cookie, fixed at construction.
  __int64 GetCookie() const;

  /// The name of a node type: "List", "HTML", "Dialog", and "Oops!!" for every other value.
  static CString GetNodeTypeName(_eTypeNode type);
  /// The node type of a name, without regard to case; eUnknown for any name but the three.
  static _eTypeNode GetNodeType(CString name);

  /// The 64-bit member of a variant, whatever its type. Never null.
  static __int64 V_OBJECT_COOKIE(CComVariant* variant);
  static __int64 V_FILE_COOKIE(CComVariant* variant);

  /// Writes the record onto `element`, with attributes and child elements made by `document`. 0, or the status of the
  /// first document call that failed; what was attached before stays. Raises CMemoryException when text cannot be
  /// allocated.
  HRESULT Serialize(CComPtr<IXMLDOMDocument> document, CComPtr<IXMLDOMElement> element) const;
  /// Reads the record from an element. 0, or a failing status: 0x8007000D for a required attribute or element that is
  /// missing, the status of VariantChangeType for text that does not convert, or a document call's. What was read
  /// before a failure is kept. The three lists are added to, not replaced.
  HRESULT Deserialize(CComPtr<IXMLDOMNode> node);

  /// Stores the record: cookie (64 bits), name (text), icon (64), type (32), count (64) and pairs (text, 64) of the
  /// child queries, menu script (64), count (64) and scripts (64 each); for the types HTML and Dialog alone also style
  /// sheet (64), count (64) and pairs of the render queries. Raises the archive's exceptions.
  void Serialize(CVellum& archive) const;
  /// Loads a record. What was read before an exception is kept; the three lists are added to, not replaced.
  void Deserialize(CVellum& archive);

 protected:
  __int64 m_cookie = 0;
  CString m_name;
  __int64 m_icon = 0;
  _eTypeNode m_type = eList;
  QueryList m_childQueries;
  __int64 m_styleSheet = 0;
  __int64 m_menuScript = 0;
  ScriptList m_scripts;
  QueryList m_renderQueries;

 private:
  friend class CMMCObjectSet;

  void Swap(CMMCObjectParams& other) noexcept;
  /// Every later change of the cookie comes through here, and the set that keeps the record learns of it.
  void SetCookie(__int64 cookie);
  /// Whether records of this type have a style sheet and render queries, in both persistent forms.
  bool HasView() const;

  /// Of the set that keeps the record: set when its cookie changes. Null for a record that no set keeps. It belongs to
  /// the record's place and not to its values, so copies and moves leave it where it is.
  std::atomic<bool>* m_cookieChanged = nullptr;
};
