// Memory that runs short while icon files and code files are added and loaded, and while strips are made: nothing is
// left of them, and the cookie is 0.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "faults/allocation_sweep.h"
#include "faults/definition.h"
#include "support/archive_bytes.h"
#include "support/executable_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/png_bytes.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

const std::vector<Outcome> kShortOfMemoryOrItsStatus{kMemoryException, kBadAlloc, Returns(kOutOfMemory)};

/// What stands in an output before a call.
constexpr __int64 kStale = 77;

class FilesMemory : public testing::Test {
 protected:
  void SweepAdding(const char* name, const std::string& file) {
    const CString path = Wide(m_definition.Folder().Write("added", file));
    __int64 cookie = 0;
    FailEachAllocation({.name = name,
                        .make = [this] { return m_definition.Make(); },
                        .run =
                            [&](CMMCObjectSet& set) {
                              cookie = 0;
                              CString argument(path);
                              cookie = kStale;
                              return set.AddIconFile(std::move(argument), cookie);
                            },
                        .allowed = kShortOfMemoryOrItsStatus,
                        .afterFailure = [&](CMMCObjectSet&) { EXPECT_EQ(cookie, 0); }});
    EXPECT_NE(cookie, 0);
    EXPECT_NE(cookie, kStale);
  }

  const Definition m_definition;
};

TEST_F(FilesMemory, RunningShortWhileAnIconFileIsAddedLeavesNothing) {
  PngPicture interlaced = PatternPng(32, 32, PngColour::palette, 8);
  interlaced.interlaced = true;
  SweepAdding("AddIconFile (PNG)",
              IconFileBytes({StoredPng(interlaced), StoredPng(PatternPng(16, 16, PngColour::trueColour, 16))}));
  SweepAdding("AddIconFile (32 bits)", IconFileBytes({PatternPicture(32, 32, 32), PatternPicture(16, 16, 32)}));
  SweepAdding("AddIconFile (1 bit)", IconFileBytes({PatternPicture(32, 32, 1)}));
  SweepAdding("AddIconFile (program)", BuildProgram(IconResources({PatternPicture(32, 32, 8)})).bytes);
}

TEST_F(FilesMemory, RunningShortWhileACodeFileIsAddedLeavesNothing) {
  const CString path(_T('p'), 100);
  // With so much in it that it needs memory of its own.
  const std::string suffix(100, '/');
  const CMMCObjectSet::Transform transform = [suffix](std::vector<char> bytes, CMMCObjectSet::Variables) {
    bytes.insert(bytes.end(), suffix.begin(), suffix.end());
    return bytes;
  };
  __int64 cookie = 0;
  FailEachAllocation({.name = "AddCodeFile",
                      .make = [this] { return m_definition.Make(); },
                      .run =
                          [&](CMMCObjectSet& set) {
                            cookie = 0;
                            CString argument(path);
                            CMMCObjectSet::Transform copy(transform);
                            cookie = kStale;
                            return set.AddCodeFile(std::move(argument), std::move(copy), cookie);
                          },
                      .afterFailure = [&](CMMCObjectSet&) { EXPECT_EQ(cookie, 0); }});
  EXPECT_NE(cookie, 0);
}

TEST_F(FilesMemory, RunningShortWhileAnIconRecordIsLoadedLeavesNothing) {
  const std::string record = Cookie(5) + TinyIconBytes();
  FailEachAllocation({.name = "DeserializeIconFile",
                      .make = [this] { return m_definition.Make(); },
                      .run =
                          [&](CMMCObjectSet& set) {
                            LoadingArchive archive(record);
                            set.DeserializeIconFile(*archive);
                            return S_OK;
                          }});
}

TEST_F(FilesMemory, RunningShortWhileACodeRecordIsLoadedLeavesNothing) {
  const std::string record = Cookie(5) + ByteVector("some code");
  FailEachAllocation({.name = "DeserializeCodeFile",
                      .make = [this] { return m_definition.Make(); },
                      .run =
                          [&](CMMCObjectSet& set) {
                            LoadingArchive archive(record);
                            set.DeserializeCodeFile(*archive);
                            return S_OK;
                          }});
}

TEST_F(FilesMemory, RunningShortWhileStripsAreMadeGivesNullHandles) {
  constexpr DWORD kKey = 0x00FF00FF;
  auto* const stale = reinterpret_cast<HBITMAP>(kStale);
  HBITMAP smallStrip = nullptr;
  HBITMAP largeStrip = nullptr;
  FailEachAllocation({.name = "GetIconBitmapImages",
                      .make = [this] { return m_definition.Make(); },
                      .run =
                          [&](CMMCObjectSet& set) {
                            smallStrip = largeStrip = stale;
                            SetLastError(ERROR_SUCCESS);
                            set.GetIconBitmapImages(kKey, smallStrip, largeStrip);
                            if (smallStrip == nullptr || largeStrip == nullptr)
                              return HRESULT_FROM_WIN32(GetLastError());
                            DeleteObject(smallStrip);
                            DeleteObject(largeStrip);
                            return S_OK;
                          },
                      .allowed = kShortOfMemoryOrItsStatus,
                      .afterFailure =
                          [&](CMMCObjectSet& set) {
                            EXPECT_EQ(smallStrip, nullptr);
                            EXPECT_EQ(largeStrip, nullptr);
                            // They are derived from the icons, and thrown away before anything else happens.
                            CMMCObjectSetProbe::ImageIndices(set).clear();
                          }});
}

}  // namespace
}  // namespace ondrel::test
