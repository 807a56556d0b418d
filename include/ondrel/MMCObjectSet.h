// The whole definition of one snap-in: console tree, dialogs, icon files and code files, with its two persistent forms.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectIcon.h>
#include <ondrel/MMCObjectParams.h>

/// A snap-in's definition.
///
/// Nodes and dialogs are named by object cookies, which they share; icon files and code files by file cookies, which
/// those added from disk share. Both are signed 64-bit numbers, in spaces of their own. The set owns every record, icon
/// and code file's contents; lookups hand out pointers into it, valid until that entry changes.
///
/// Threads: every public operation that reads or changes the definition holds the set's recursive lock for its whole
/// run, but for IsModified, and but for saving and loading, which take it around each lookup alone: while a set is
/// saved or loaded, no other thread may change it. Records are used outside the lock.
///
/// Statuses are HRESULT values: 0 on success; 0x800700B7 for a cookie, name or path that is taken; 0x80070490 for a
/// cookie that names nothing; 0x800710D3 for a node with children. Where memory is short, std::bad_alloc or
/// CMemoryException is raised; the lock is free again whatever leaves an operation.
class ONDREL_API CMMCObjectSet {
 public:
  /// The parent cookie of top-level nodes. There is no record for it.
  static const __int64 RootNode;  // -1
  /// The version of the set's format, as an object image carries it.
  static const DWORD m_nCurrentVersion;  // 1

  /// Named values; the names are ordered without regard to case.
  using Variables = std::map<CCaselessSortStringT<CString>, CComVariant>;
  /// Turns a code file's bytes into those that an object image holds. While an image is written, the variables are its
  /// directory map: for every folder that code files lie in, with its closing separator, the cookie (VT_I8) of the
  /// first of them.
  using Transform = std::function<std::vector<char>(std::vector<char>, Variables)>;
  /// Gives the transform of the code file at a path.
  using TransformFactory = std::function<Transform(const WCHAR*)>;
  /// May write a code file's contents to the archive itself, as exactly one byte vector, and return true; or return
  /// false, having written nothing, and leave it to the set.
  using CodeFileWriter = bool (*)(const WCHAR* path, CVellum& archive, Transform transform, Variables variables);

  /// An empty, unmodified set. `writer` must not be null. Raises COleException when the lock cannot be made.
  explicit CMMCObjectSet(CodeFileWriter writer);
  virtual ~CMMCObjectSet();
  CMMCObjectSet(const CMMCObjectSet&) = delete;
  CMMCObjectSet& operator=(const CMMCObjectSet&) = delete;

  // Records

  /// True, and the address of the stored record of a node or dialog in `params`; false, and `params` untouched, for a
  /// cookie that names none. The address is valid until the entry is removed or the set is rebuilt (RemoveNode,
  /// RemoveDialog, MoveNodeDown, a load).
  bool GetParams(__int64 cookie, CMMCObjectParams*& params) const;
  /// Replaces the stored record; nothing happens when the cookie names none. Only the record changes: the entry is
  /// still found under its own cookie, and a dialog under its old name.
  void SetParams(__int64 cookie, const CMMCObjectParams* params);
  /// Whether an edit succeeded since the set was made, loaded or saved. Takes no lock.
  bool IsModified() const;

  // The console tree. The order of siblings is the order of their cookies.

  /// The cookies of a node's children, ascending. A child with a negative cookie is never listed.
  std::list<__int64> GetChildNodes(__int64 parent);
  /// Adds a node under any parent, present or not. Its cookie, the largest of all nodes and dialogs plus one (0 in an
  /// empty set), or -2 on failure, also when the largest is 2^63 - 1.
  __int64 AddNewNode(__int64 parent, CString name, CMMCObjectParams::_eTypeNode type);
  /// Files a record under a cookie, as loaders do: the modified flag stays as it is, and the record's own cookie is not
  /// compared. 0 or 0x800700B7.
  HRESULT AddNode(__int64 parent, __int64 cookie, CMMCObjectParams params);
  /// Removes a node without children. 0, 0x80070490 (also for a dialog's cookie) or 0x800710D3.
  HRESULT RemoveNode(__int64 cookie);
  /// Moves a node one place later among its siblings by exchanging cookies with the next one; children follow their
  /// parents. Afterwards the next one's old cookie names the moved node. 0, also when there is no next sibling;
  /// 0x80070490 (also for a dialog's cookie); or 0x800700B7 when the records do not fit together any more (two dialogs
  /// of one name). On failure the set is as before.
  HRESULT MoveNodeDown(__int64 cookie);

  // Dialogs. Names are compared exactly.

  /// Every dialog's cookie, ascending.
  std::list<__int64> GetDialogs();
  /// The cookie of the dialog of that name, or 0; 0 can also be a dialog's cookie.
  __int64 GetDialog(CString name) const;
  /// Adds a dialog. Its cookie, as AddNewNode gives it, or -2 when the name is taken.
  __int64 AddNewDialog(CString name);
  /// Files a record as a dialog, as loaders do: the modified flag stays as it is. 0 or 0x800700B7.
  HRESULT AddDialog(__int64 cookie, CMMCObjectParams params);
  /// Removes a dialog and its current name. 0 or 0x80070490 (also for a node's cookie).
  HRESULT RemoveDialog(__int64 cookie);

  // Code files. Paths are kept as they are given and compared exactly.

  /// Adds a file by its path; it is read only when an object image is written. `cookie` receives the new file cookie,
  /// or 0 on failure. 0 or 0x800700B7.
  HRESULT AddCodeFile(CString path, Transform transform, __int64& cookie);
  /// The cookies of the files on disk in the order of their paths, then of those in memory, ascending. A cookie that
  /// both kinds have is listed twice.
  std::list<__int64> GetCodeFiles();
  /// True, and a copy of the bytes, for a file in memory; false, and `contents` untouched, for any other.
  bool GetCodeFileContents(__int64 cookie, std::vector<char>& contents) const;
  /// True, and its path, for an icon file or code file on disk; false, and `path` untouched, for any other.
  bool GetFilePath(__int64 cookie, CString& path) const;
  /// Stores the cookie (64 bits) and, as a byte vector, the file's bytes as the transform gives them, or what the
  /// writer hook writes. Raises CArchiveException: cause 2 on a loading archive, cause 1 for a cookie that names no
  /// file on disk (the cookie is stored by then); CFileException for a file that cannot be read; std::bad_function_call
  /// for an empty transform; whatever the transform raises.
  void SerializeCodeFile(__int64 cookie, CVellum& archive, Transform transform, Variables variables) const;
  /// Loads such a record as a file in memory. Raises CArchiveException, and COleException (0x800700B7) for a cookie
  /// that a file in memory has.
  void DeserializeCodeFile(CVellum& archive);

  // Icon files. Paths are kept as they are given and compared exactly.

  /// Adds an icon file. `cookie` receives the new file cookie, or 0 on failure. 0, 0x800700B7, or a status of
  /// CMMCObjectIcon::Construct.
  HRESULT AddIconFile(CString path, __int64& cookie);
  /// Every icon file's cookie, ascending.
  std::list<__int64> GetIconFiles() const;
  /// True, and the address of the stored icon, valid as long as the set keeps it; false, and `*icon` untouched, for a
  /// cookie that names none.
  bool GetIconFile(__int64 cookie, const CMMCObjectIcon** icon) const;
  /// True, and the image index that the last image list or strips gave the file; false, and `image` untouched, without.
  bool GetIconFileImage(__int64 cookie, int& image) const;
  /// Appends to `list` the handle of each icon file, ascending, that fits cx x cy pixels best, and notes the image
  /// indices anew. Icons without handles (loaded from an object image) are left out.
  void GetIconImageList(int cx, int cy, CImageList& list);
  /// Makes two strips with one image for each icon file side by side, ascending, transparent pixels in the key colour,
  /// and notes the image indices anew. The sizes are those of the first icon; what of another icon does not fit is cut
  /// off. The handles are the caller's to delete; both are null on failure, with the reason in GetLastError().
  void GetIconBitmapImages(DWORD colour, HBITMAP& smallStrip, HBITMAP& largeStrip);
  /// Stores the cookie (64 bits) and the icon. Nothing at all for a cookie that names none. Raises the archive's
  /// exceptions.
  void SerializeIconFile(__int64 cookie, CVellum& archive) const;
  /// Loads such a record. Raises the archive's exceptions, and COleException (0x800700B7) for a cookie that is taken;
  /// the set is unchanged then.
  void DeserializeIconFile(CVellum& archive);

  // Persistent forms. COM must be initialised on a thread that saves or loads a project file.

  /// Saves the definition as an XML project file, or loads one, as the archive's direction says. Files whose paths
  /// begin with the folder of the archive's file name (m_strFileName, up to its last backslash) are named relative to
  /// it. `factory` is asked for the transform of each code file that is loaded; saving does not use it. On success the
  /// set is unmodified. Every failure is raised: COleException with 0x8007000D for text that is no project, with
  /// 0x800700B7 for a cookie, name or path that stands twice, or with the status of whatever failed; CMemoryException;
  /// the archive's exceptions; std::bad_function_call for an empty factory. A failed load leaves the set exactly as it
  /// was.
  void SerializeProjectFile(CVellum& archive, TransformFactory factory);

  /// Writes the definition as an object image, or loads one, as the archive's direction says. After success the
  /// modified flag is set when `setModified` is not 0, then cleared when `clearModified` is not 0. Raises
  /// CArchiveException: cause 7 for more than one top-level node and for an image of another version, cause 1 for a
  /// record that went missing while saving, cause 3 for an image that ends early; COleException (0x800700B7) for a
  /// cookie or name that stands twice; everything SerializeCodeFile raises. A failed load leaves what was read up to
  /// the failure, or, when the head of the image is refused, the set as it was.
  void SerializeObjects(CVellum& archive, int setModified, int clearModified);

 private:
  friend class CMMCObjectSetProbe;  // the tests' view of the private operations

  using ObjectStore = std::map<std::pair<__int64, __int64>, CMMCObjectParams>;
  using ObjectIndex = std::map<__int64, ObjectStore::iterator>;
  using IconPathTable = std::map<CString, __int64>;
  using CodePathTable = std::map<CString, std::pair<__int64, Transform>>;

  /// Everything that a load replaces.
  struct Tables {
    ObjectStore nodes;    ///< (parent, cookie): siblings lie together, in order.
    ObjectStore dialogs;  ///< (0, cookie)
    std::map<CString, __int64> dialogNames;
    ObjectIndex objects;                            ///< Where each node and dialog lies.
    std::optional<ObjectIndex::iterator> lastNode;  ///< The node that was added last, unless it was removed.
    IconPathTable iconPaths;
    std::map<__int64, IconPathTable::iterator> iconCookiePaths;
    std::map<__int64, CMMCObjectIcon> icons;
    CodePathTable codePaths;
    std::map<__int64, CodePathTable::iterator> codeCookiePaths;
    std::map<__int64, std::vector<char>> codeContents;

    /// Exchanges the four tables of nodes and dialogs with those of `other`.
    void SwapObjects(Tables& other) noexcept;
  };

  /// What operations that make an object return when they fail.
  static constexpr __int64 kNoCookie = -2;

  /// Empties the set, but for the image indices, which belong to the last image list. Takes no lock.
  void Initialise();
  void SetModifiedFlag(int modified);
  /// A random file cookie that no file on disk has, never 0.
  __int64 GenerateFileCookie() const;
  /// The cookie for a new object, or none when there is none beyond the largest in use. It may be any number, that of
  /// kNoCookie too.
  std::optional<__int64> NextObjectCookie() const;
  /// Files a record, which is emptied, in the node tree or the dialog table and in the object index. 0 or 0x800700B7.
  /// `before` is an entry that the new one is likely to stand behind, in both, or none; it becomes the new one.
  HRESULT AddObject(ObjectStore& store, const ObjectStore::key_type& key, CMMCObjectParams&& params,
                    std::optional<ObjectIndex::iterator>& before);
  /// Levels of the tree for which walks note where they have come to; all below the last share its place.
  static constexpr std::size_t kWalkLevels = 64;
  /// A walk over the tree in which every node comes before its children. While the keys of nodes and dialogs stay as
  /// they are, it goes from entry to entry; when one was added, removed or moved, it looks up each cookie that it
  /// listed before.
  struct TreeWalk {
    struct ListedNode {
      __int64 cookie;
      ObjectStore::iterator entry;
      std::size_t level;
    };
    /// The node of a level that was visited last.
    struct Place {
      __int64 cookie;
      ObjectStore::iterator behind;  ///< Behind its children.
    };
    std::vector<ListedNode> pending;  ///< The nodes still to be visited, the next one last.
    std::uint64_t edition = 0;        ///< Of the tables, when the first node was visited.
    std::array<std::optional<Place>, kWalkLevels> places;
  };
  /// Takes the next node and lists its children. Its record, or null when there is none any more; and the number of its
  /// children.
  const CMMCObjectParams* VisitNext(TreeWalk& walk, std::size_t& children);
  /// Removes an entry of the node tree or the dialog table and of the object index.
  void RemoveObject(ObjectStore& store, ObjectStore::iterator entry);
  /// Whether the object index has an entry for each node and dialog, as far as their numbers tell.
  bool IsIndexWhole() const;
  /// The entry of a node, or of a dialog, with that cookie; the end of `store` when there is none in it.
  ObjectStore::iterator FindObject(ObjectStore& store, __int64 cookie);

  /// Whether adding every node and dialog anew would put each where it is: records have the cookies that they are filed
  /// under, and dialogs the names. Looks at the dialogs; of the nodes it is known.
  bool RecordsFitKeys() const;
  /// Exchanges the cookies of two siblings, the keys of their children and the places in the object index, in tables
  /// whose records fit. Copies nothing and takes no memory.
  void ExchangeSiblings(ObjectStore::iterator node, ObjectStore::iterator next);
  /// Does the same by adding every node and dialog anew. 0, or 0x800700B7 where the records do not fit together; on
  /// failure the tables are as before.
  HRESULT AddAllExchanged(__int64 cookie, __int64 nextCookie);

  HRESULT InsertIconFile(CString path, __int64 cookie);
  HRESULT InsertIconFile(__int64 cookie, CMMCObjectIcon&& icon);
  /// Takes no lock; its callers hold it.
  HRESULT InsertCodeFile(CString path, __int64 cookie, Transform transform);
  HRESULT InsertCodeFile(__int64 cookie, std::vector<char>&& contents);

  /// Writes a node and its subtree as a "Node" element under `parent`. 0, 0x80070490 for a cookie that names none, or
  /// the first failing status; a failing node's element stays out of the document.
  HRESULT SerializeNode(__int64 cookie, CComPtr<IXMLDOMDocument> document, CComPtr<IXMLDOMElement> parent);
  /// Adds the "Node" children of every container, with their subtrees, under `parent`. 1 when everything was read, or
  /// the first failing status.
  HRESULT DeserializeNodes(__int64 parent, CComPtr<IXMLDOMNodeList> containers);
  /// Writes, or reads and adds below `parent`, the image entry of a node and its subtree.
  void SerializeNode(__int64 cookie, CVellum& archive);
  void DeserializeNode(__int64 parent, CVellum& archive);

  /// SerializeCodeFile, without a copy of its own of what every file of an image is given alike.
  void StoreCodeFile(__int64 cookie, CVellum& archive, const Transform& transform, const Variables& variables) const;
  void StoreProject(CVellum& archive);
  void LoadProject(CVellum& archive, const TransformFactory& factory);
  HRESULT ReadProject(IXMLDOMDocument* document, const CString& directory, const TransformFactory& factory);
  void StoreObjectImage(CVellum& archive);
  void LoadObjectImage(CVellum& archive);
  /// Writes the record of a node or dialog; raises CArchiveException with cause 1 when there is none.
  void StoreRecord(__int64 cookie, CVellum& archive) const;

  Tables m_tables;
  std::map<__int64, int> m_imageIndices;
  std::uint64_t m_edition = 1;  ///< Of the tables of objects: another one after each change of their keys.
  CodeFileWriter m_codeFileWriter;
  std::atomic<bool> m_modified = false;
  /// Whether a record may have another cookie than the one that it is filed under. Records set it when hosts change
  /// them, without the lock.
  std::atomic<bool> m_cookiesChanged = false;
  mutable CCriticalSection m_lock;
};
