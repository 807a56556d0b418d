// The set's lock is free whatever exception leaves an operation: another thread gets it at once.

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/failing_allocation.h"
#include "support/faulty_file.h"
#include "support/model/icon_fixtures.h"
#include "support/model/lock_watch.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

/// What the code of a host raises here.
struct HostFailure : std::runtime_error {
  HostFailure() : std::runtime_error("the host fails") {}
};

/// A writer hook that raises for one path, and leaves the others to the set.
bool RaiseForOne(const WCHAR* path, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) {
  if (CString(path) == _T("hooked.js")) throw HostFailure();
  return false;
}

std::vector<char> Raise(std::vector<char>, CMMCObjectSet::Variables) { throw HostFailure(); }

/// A transform that raises when it is copied, once it is told to.
struct RaisingCopy {
  explicit RaisingCopy(const bool& itsRaises) : raises(&itsRaises) {}
  RaisingCopy(const RaisingCopy& other) : raises(other.raises) {
    if (*raises) throw HostFailure();
  }
  std::vector<char> operator()(std::vector<char> bytes, CMMCObjectSet::Variables) const { return bytes; }

  const bool* raises;
};

/// Cookies of the set below.
constexpr __int64 kCodeFile = 5;
constexpr __int64 kHookedFile = 6;
constexpr __int64 kMissingFile = 7;
constexpr __int64 kFileInMemory = 8;
constexpr __int64 kIcon = 9;

class LockRelease : public testing::Test {
 protected:
  LockRelease() : m_set(RaiseForOne), m_icon(WriteIcon(m_folder, "icon.ico", {SolidIcon(32, 0), SolidIcon(16, 0)})) {
    Fill(m_set);
  }

  /// A node with a child, a dialog, an icon from a file, a code file on disk and one in memory.
  void Fill(CMMCObjectSet& set) {
    const CString longName(_T('n'), 100);  // beyond what a string holds without memory of its own
    const RecordFields top{.cookie = 1, .name = longName, .childQueries = {{longName, 1}}, .scripts = {1, 2}};
    ASSERT_EQ(set.AddNode(-1, 1, MakeRecord(top)), S_OK);
    ASSERT_EQ(set.AddNode(1, 2, MakeRecord({.cookie = 2, .name = longName})), S_OK);
    ASSERT_EQ(set.AddNode(1, 3, MakeRecord({.cookie = 3, .name = longName})), S_OK);
    ASSERT_EQ(set.AddDialog(4, MakeRecord({.cookie = 4, .name = longName, .type = CMMCObjectParams::eDialog})), S_OK);
    const CString code = Wide(m_folder.Write("a.js", "alpha"));
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, code, kCodeFile, Unchanged), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, kFileInMemory, std::vector<char>(100, 'm')), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, m_icon, kIcon), S_OK);
  }

  /// The call raises such an exception, and the lock of the set is free then.
  template <class Exception, class Call>
  void ExpectFree(const char* what, const Call& call) {
    EXPECT_THROW(call(), Exception) << what;
    EXPECT_TRUE(m_watch.IsFree(m_set)) << what;
  }

  TemporaryFolder m_folder;
  LockWatch m_watch;
  CMMCObjectSet m_set;
  CString m_icon;
};

/// Calls on an archive over a file whose first write fails; its buffer is so small that every call writes.
template <class Call>
void StoreOnFullDisk(const Call& call) {
  FaultyFile file;
  file.FailWrite(1);
  CVellum archive(&file, CArchive::store, 16);
  call(archive);
  archive.Close();
}

TEST_F(LockRelease, WhenAnArchiveHasTheWrongDirection) {
  LoadingArchive loading(std::string(100, '\1'));
  ExpectFree<CArchiveException>("SerializeIconFile", [&] { m_set.SerializeIconFile(kIcon, *loading); });
  ExpectFree<CArchiveException>("SerializeCodeFile",
                                [&] { m_set.SerializeCodeFile(kCodeFile, *loading, Unchanged, {}); });
  CMemFile file;
  CVellum storing(&file, CArchive::store, 4096);
  ExpectFree<CArchiveException>("DeserializeIconFile", [&] { m_set.DeserializeIconFile(storing); });
  ExpectFree<CArchiveException>("DeserializeCodeFile", [&] { m_set.DeserializeCodeFile(storing); });
}

TEST_F(LockRelease, WhenTheFileUnderAnArchiveFails) {
  ExpectFree<CFileException>("SerializeIconFile", [&] {
    StoreOnFullDisk([&](CVellum& archive) { m_set.SerializeIconFile(kIcon, archive); });
  });
  ExpectFree<CFileException>("SerializeCodeFile", [&] {
    StoreOnFullDisk([&](CVellum& archive) { m_set.SerializeCodeFile(kCodeFile, archive, Unchanged, {}); });
  });
  ExpectFree<CFileException>("the save of an image", [&] {
    StoreOnFullDisk([&](CVellum& archive) { m_set.SerializeObjects(archive, 0, 0); });
  });
  ExpectFree<CFileException>("the save of a project", [&] {
    StoreOnFullDisk([&](CVellum& archive) { m_set.SerializeProjectFile(archive, nullptr); });
  });
  const std::string image = SavedImage(m_set);
  const std::string project = SavedProject(m_set);
  const auto loadFailing = [&](const std::string& bytes, const auto& load) {
    FaultyFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    file.FailRead(1);
    CVellum archive(&file, CArchive::load, 16);
    load(archive);
  };
  ExpectFree<CFileException>("the load of an image", [&] {
    loadFailing(image, [&](CVellum& archive) { m_set.SerializeObjects(archive, 0, 0); });
  });
  ExpectFree<CFileException>("the load of a project", [&] {
    loadFailing(project, [&](CVellum& archive) { m_set.SerializeProjectFile(archive, UnchangedFor); });
  });
}

TEST_F(LockRelease, WhenABytesEndEarly) {
  LoadingArchive icon(Cookie(20) + TinyIconBytes().substr(0, 30));
  ExpectFree<CArchiveException>("DeserializeIconFile", [&] { m_set.DeserializeIconFile(*icon); });
  LoadingArchive code(Cookie(20) + Long(5) + "abcd");
  ExpectFree<CArchiveException>("DeserializeCodeFile", [&] { m_set.DeserializeCodeFile(*code); });
  const std::string project = SavedProject(m_set);
  ExpectFree<COleException>("the load of a project",
                            [&] { LoadProject(m_set, project.substr(0, project.size() / 2)); });
  const std::string image = SavedImage(m_set);
  for (std::size_t length = 0; length < image.size(); length += 1 + image.size() / 40) {
    ExpectFree<CArchiveException>("the load of an image", [&] { LoadImage(m_set, image.substr(0, length)); });
  }
}

TEST_F(LockRelease, WhenACookieIsTaken) {
  LoadingArchive icon(Cookie(kIcon) + TinyIconBytes());
  ExpectFree<COleException>("DeserializeIconFile", [&] { m_set.DeserializeIconFile(*icon); });
  LoadingArchive code(Cookie(kFileInMemory) + ByteVector("x"));
  ExpectFree<COleException>("DeserializeCodeFile", [&] { m_set.DeserializeCodeFile(*code); });
  const std::string element = R"(<Icon Cookie="1" Path="missing.ico"/>)";
  ExpectFree<COleException>("the load of a project",
                            [&] { LoadProject(m_set, "<Project><FileGroup>" + element + "</FileGroup></Project>"); });
  const std::string file = R"(<File Cookie="1" Path="a.js"/>)";
  ExpectFree<COleException>("the load of a project with files", [&] {
    LoadProject(m_set, "<Project><FileGroup>" + file + file + "</FileGroup></Project>");
  });
  ASSERT_EQ(m_set.AddNode(-1, 30, MakeRecord({.cookie = 30})), S_OK);
  ExpectFree<CArchiveException>("the save of an image", [&] { SavedImage(m_set); });
}

TEST_F(LockRelease, WhenTheHostsCodeRaises) {
  const auto store = [&](__int64 cookie, CMMCObjectSet::Transform transform) {
    Stored([&](CVellum& archive) { m_set.SerializeCodeFile(cookie, archive, transform, {}); });
  };
  ExpectFree<HostFailure>("a transform", [&] { store(kCodeFile, Raise); });
  ExpectFree<std::bad_function_call>("no transform", [&] { store(kCodeFile, nullptr); });
  ExpectFree<CArchiveException>("no such file", [&] { store(99, Unchanged); });
  const std::string project =
      R"(<Project><FileGroup><File Cookie="1" Path="a.js"/><File Cookie="2" Path="b.js"/></FileGroup></Project>)";
  ExpectFree<HostFailure>("a factory", [&] {
    LoadProject(m_set, project, _T("p.xml"), [](const WCHAR*) -> CMMCObjectSet::Transform { throw HostFailure(); });
  });
  ExpectFree<std::bad_function_call>("no factory", [&] { LoadProject(m_set, project, _T("p.xml"), nullptr); });

  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, _T("missing.js"), kMissingFile, Unchanged), S_OK);
  ExpectFree<CFileException>("a missing file", [&] { store(kMissingFile, Unchanged); });
  ExpectFree<CFileException>("the save of an image with a missing file", [&] { SavedImage(m_set); });
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, _T("hooked.js"), kHookedFile, Unchanged), S_OK);
  ExpectFree<HostFailure>("a writer hook", [&] { store(kHookedFile, Unchanged); });
  ExpectFree<HostFailure>("the save of an image with a writer hook that raises", [&] { SavedImage(m_set); });
}

TEST_F(LockRelease, WhenATransformCannotBeCopied) {
  bool raises = false;
  const CMMCObjectSet::Transform transform = RaisingCopy(raises);
  __int64 cookie = 0;
  ASSERT_EQ(m_set.AddCodeFile(_T("0.js"), transform, cookie), S_OK);  // before all others, by its path
  raises = true;
  ExpectFree<HostFailure>("AddCodeFile", [&] { m_set.AddCodeFile(_T("1.js"), transform, cookie); });
  ExpectFree<HostFailure>("the save of an image", [&] { SavedImage(m_set); });
  raises = false;
  EXPECT_EQ(m_set.AddCodeFile(_T("1.js"), transform, cookie), S_OK) << "nothing of it was kept";
}

/// Every public operation, each allocation of it failing in turn.
TEST_F(LockRelease, WhenMemoryRunsShort) {
  static const CString longName(_T('m'), 100);
  static const CMMCObjectParams record = MakeRecord({.cookie = 7, .name = longName, .scripts = {1, 2}});
  struct Operation {
    const char* name;
    std::function<void(CMMCObjectSet&)> run;
  };
  const std::string iconRecord = Cookie(20) + TinyIconBytes();
  const std::string codeRecord = Cookie(20) + ByteVector(std::string(100, 'x'));
  const std::string image = SavedImage(m_set);
  const std::string project = SavedProject(m_set);
  const Operation operations[] = {
      {"SetParams", [](CMMCObjectSet& set) { set.SetParams(1, &record); }},
      {"GetChildNodes", [](CMMCObjectSet& set) { set.GetChildNodes(1); }},
      {"AddNewNode", [](CMMCObjectSet& set) { set.AddNewNode(-1, longName, CMMCObjectParams::eList); }},
      {"AddNode", [](CMMCObjectSet& set) { set.AddNode(-1, 7, record); }},
      {"RemoveNode", [](CMMCObjectSet& set) { set.RemoveNode(1); }},
      {"MoveNodeDown",
       [](CMMCObjectSet& set) {
         CMMCObjectSetProbe::DoubtCookies(set);  // so that it takes the way that needs memory
         set.MoveNodeDown(2);
       }},
      {"GetDialogs", [](CMMCObjectSet& set) { set.GetDialogs(); }},
      {"GetDialog", [](CMMCObjectSet& set) { set.GetDialog(longName); }},
      {"AddNewDialog", [](CMMCObjectSet& set) { set.AddNewDialog(longName); }},
      {"AddDialog", [](CMMCObjectSet& set) { set.AddDialog(7, record); }},
      {"RemoveDialog", [](CMMCObjectSet& set) { set.RemoveDialog(4); }},
      {"AddCodeFile",
       [](CMMCObjectSet& set) {
         __int64 cookie = 0;
         set.AddCodeFile(longName, Unchanged, cookie);
       }},
      {"GetCodeFiles", [](CMMCObjectSet& set) { set.GetCodeFiles(); }},
      {"GetCodeFileContents",
       [](CMMCObjectSet& set) {
         std::vector<char> contents;
         set.GetCodeFileContents(kFileInMemory, contents);
       }},
      {"GetFilePath",
       [](CMMCObjectSet& set) {
         CString path;
         set.GetFilePath(kIcon, path);
       }},
      {"SerializeCodeFile",
       [](CMMCObjectSet& set) {
         Stored([&](CVellum& archive) { set.SerializeCodeFile(kCodeFile, archive, Unchanged, {}); });
       }},
      {"DeserializeCodeFile",
       [&](CMMCObjectSet& set) {
         LoadingArchive archive(codeRecord);
         set.DeserializeCodeFile(*archive);
       }},
      {"AddIconFile",
       [this](CMMCObjectSet& set) {
         __int64 cookie = 0;
         set.AddIconFile(m_icon + _T(""), cookie);
       }},
      {"GetIconFiles", [](CMMCObjectSet& set) { set.GetIconFiles(); }},
      {"GetIconImageList",
       [](CMMCObjectSet& set) {
         CImageList list;
         list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1);
         set.GetIconImageList(16, 16, list);
       }},
      {"GetIconBitmapImages",
       [](CMMCObjectSet& set) {
         HBITMAP smallStrip = nullptr;
         HBITMAP largeStrip = nullptr;
         set.GetIconBitmapImages(0, smallStrip, largeStrip);
         const platform::UniqueBitmap smallOwner(smallStrip);
         const platform::UniqueBitmap largeOwner(largeStrip);
       }},
      {"SerializeIconFile",
       [](CMMCObjectSet& set) { Stored([&](CVellum& archive) { set.SerializeIconFile(kIcon, archive); }); }},
      {"DeserializeIconFile",
       [&](CMMCObjectSet& set) {
         LoadingArchive archive(iconRecord);
         set.DeserializeIconFile(*archive);
       }},
      {"the save of an image", [](CMMCObjectSet& set) { SavedImage(set); }},
      {"the load of an image", [&](CMMCObjectSet& set) { LoadImage(set, image); }},
  };
  for (const Operation& operation : operations) {
    int failures = 0;
    for (bool ranShort = true; ranShort;) {
      CMMCObjectSet set(RaiseForOne);
      Fill(set);
      {
        const FailingAllocation failing(failures);
        try {
          operation.run(set);
        } catch (const std::bad_alloc&) {
          // Which exception or status it is, and what becomes of the set, is tested with the faults.
        } catch (const CException&) {
        }
        ranShort = failing.HasFailed();
      }
      ASSERT_TRUE(m_watch.IsFree(set)) << operation.name << ", allocation " << failures;
      if (ranShort) ++failures;
    }
    EXPECT_GT(failures, 0) << operation.name << " allocates nothing, so nothing was tested";
  }
}

}  // namespace
}  // namespace ondrel::test
