// A record's binary form where something is wrong: the direction, data that ends early, counts that promise too much.

#include <gtest/gtest.h>

#include <string>

#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/model/sets.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

/// The values of a full HTML record, one by one.
struct Value {
  const char* what;
  std::string bytes;
};
const std::vector<Value> kValues = {
    {"cookie", Cookie(12)},
    {"name", ShortText("Status")},
    {"icon", Cookie(31)},
    {"type", Long(1)},
    {"child-query count", Count(2)},
    {"first child tag", ShortText("Disks")},
    {"first child file", Cookie(40)},
    {"second child tag", ShortText("Fans")},
    {"second child file", Cookie(41)},
    {"menu script", Cookie(43)},
    {"script count", Count(3)},
    {"first script", Cookie(44)},
    {"second script", Cookie(45)},
    {"third script", Cookie(46)},
    {"style sheet", Cookie(42)},
    {"render-query count", Count(2)},
    {"first render tag", ShortText("Summary")},
    {"first render file", Cookie(47)},
    {"second render tag", ShortText("Detail")},
    {"second render file", Cookie(48)},
};

/// The record after so many of its values have been read.
RecordFields After(std::size_t values) {
  const RecordFields full = FullRecord(CMMCObjectParams::eHTML);
  RecordFields fields;
  if (values >= 1) fields.cookie = full.cookie;
  if (values >= 2) fields.name = full.name;
  if (values >= 3) fields.icon = full.icon;
  if (values >= 4) fields.type = full.type;
  if (values >= 7) fields.childQueries.push_back(full.childQueries[0]);
  if (values >= 9) fields.childQueries.push_back(full.childQueries[1]);
  if (values >= 10) fields.menuScript = full.menuScript;
  for (std::size_t script = 0; script < 3; ++script) {
    if (values >= 12 + script) fields.scripts.push_back(full.scripts[script]);
  }
  if (values >= 15) fields.styleSheet = full.styleSheet;
  if (values >= 18) fields.renderQueries.push_back(full.renderQueries[0]);
  if (values >= 20) fields.renderQueries.push_back(full.renderQueries[1]);
  return fields;
}

TEST(ParamsBinaryFaults, StoringOnALoadingArchiveRaisesReadOnlyWithTheFileName) {
  const CMMCObjectParams record = MakeRecord(FullRecord(CMMCObjectParams::eHTML));
  LoadingArchive archive("some bytes");
  archive->m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { record.Serialize(*archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, 2);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
  EXPECT_EQ(archive.Unused(), 10U) << "no byte is moved";
}

TEST(ParamsBinaryFaults, LoadingFromAStoringArchiveRaisesWriteOnlyWithTheFileName) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = _T("image.bin");
  CMMCObjectParams record = MakeRecord(FullRecord(CMMCObjectParams::eHTML));
  const auto raised = Raised<CArchiveException>([&] { record.Deserialize(archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, 4);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
  EXPECT_TRUE(SameRecord(record, FullRecord(CMMCObjectParams::eHTML)));
  archive.Close();
  EXPECT_EQ(file.GetLength(), 0U) << "no byte is moved";
}

/// An archive whose direction turns after so many bytes, to show that the direction is checked before each value.
class TurningArchive : public CVellum {
 public:
  using CVellum::CVellum;
  void Turn() { m_nMode ^= CArchive::load; }
};

/// A file that turns the archive when the store hands it its first bytes, or the load asks for its next ones.
class TurningFile : public CMemFile {
 public:
  using CMemFile::CMemFile;
  TurningArchive* archive = nullptr;
  ULONGLONG turnAt = 0;

  UINT Read(void* buffer, UINT count) override {
    // Byte by byte, so that the archive has nothing beyond the value that it was asked for.
    const UINT read = CMemFile::Read(buffer, count > 0 ? 1 : 0);
    if (GetPosition() == turnAt) archive->Turn();
    return read;
  }
};

TEST(ParamsBinaryFaults, TheDirectionOfALoadIsCheckedBeforeEachValue) {
  std::string bytes;
  for (const Value& value : kValues) bytes += value.bytes;
  std::size_t end = 0;
  for (std::size_t index = 0; index + 1 < kValues.size(); ++index) {
    end += kValues[index].bytes.size();
    TurningFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    TurningArchive archive(&file, CArchive::load | CArchive::bNoFlushOnDelete, 8);
    file.archive = &archive;
    file.turnAt = end;
    CMMCObjectParams record;
    const auto raised = Raised<CArchiveException>([&] { record.Deserialize(archive); });
    if (!raised) {
      ADD_FAILURE() << "no exception after the " << kValues[index].what;
      continue;
    }
    EXPECT_EQ(raised->m_cause, 4) << "after the " << kValues[index].what;
    EXPECT_TRUE(SameRecord(record, After(index + 1))) << "after the " << kValues[index].what;
  }
}

/// A file that turns the archive when it is handed its bytes for the chosen time.
class TurningTarget : public CMemFile {
 public:
  TurningArchive* archive = nullptr;
  int turnAt = 0;
  int writes = 0;

  void Write(const void* buffer, UINT count) override {
    CMemFile::Write(buffer, count);
    if (++writes == turnAt) archive->Turn();
  }
};

TEST(ParamsBinaryFaults, TheDirectionOfAStoreIsCheckedBeforeEachValue) {
  std::string bytes;
  for (const Value& value : kValues) bytes += value.bytes;
  const CMMCObjectParams record = MakeRecord(FullRecord(CMMCObjectParams::eHTML));
  // A buffer of one cookie is handed on before nearly every value; the value that follows is stored, the next refused.
  constexpr int kLeastWrites = 14;
  int turns = 0;
  for (bool turned = true; turned; ++turns) {
    TurningTarget file;
    TurningArchive archive(&file, CArchive::store | CArchive::bNoFlushOnDelete, 8);
    file.archive = &archive;
    file.turnAt = turns + 1;
    const auto raised = Raised<CArchiveException>([&] { record.Serialize(archive); });
    turned = file.writes >= file.turnAt;
    EXPECT_EQ(raised.has_value(), turned) << "turned at write " << file.turnAt;
    if (raised) {
      EXPECT_EQ(raised->m_cause, 2) << "turned at write " << file.turnAt;
    }
    EXPECT_EQ(Hex(BytesOf(file)), Hex(bytes.substr(0, file.GetLength()))) << "turned at write " << file.turnAt;
  }
  EXPECT_GE(turns, kLeastWrites);
}

TEST(ParamsBinaryFaults, DataThatEndsInAnyValueRaisesEndOfFileAndKeepsWhatWasRead) {
  std::string bytes;
  for (std::size_t index = 0; index < kValues.size(); ++index) {
    for (std::size_t part = 0; part < kValues[index].bytes.size(); ++part) {
      LoadingArchive archive(bytes + kValues[index].bytes.substr(0, part));
      archive->m_strFileName = _T("image.bin");
      CMMCObjectParams record;
      const auto raised = Raised<CArchiveException>([&] { record.Deserialize(*archive); });
      if (!raised) {
        ADD_FAILURE() << "no exception after " << part << " bytes of the " << kValues[index].what;
        continue;
      }
      EXPECT_EQ(raised->m_cause, 3) << part << " bytes of the " << kValues[index].what;
      EXPECT_TRUE(SameRecord(record, After(index))) << part << " bytes of the " << kValues[index].what;
    }
    bytes += kValues[index].bytes;
  }
  LoadingArchive archive(bytes);
  CMMCObjectParams record;
  record.Deserialize(*archive);
  EXPECT_TRUE(SameRecord(record, After(kValues.size())));
}

TEST(ParamsBinaryFaults, ACountBeyondTheDataRaisesEndOfFileAfterTheEntriesThatAreThere) {
  const std::string head = Cookie(12) + ShortText("Status") + Cookie(31) + Long(1);
  for (const std::uint64_t count :
       {std::uint64_t{2}, std::uint64_t{1} << 32, std::uint64_t{1} << 63, ~std::uint64_t{0}}) {
    CMMCObjectParams record;
    LoadingArchive queries(head + Count(count) + ShortText("Disks") + Cookie(40));
    auto raised = Raised<CArchiveException>([&] { record.Deserialize(*queries); });
    ASSERT_TRUE(raised) << count << " child queries";
    EXPECT_EQ(raised->m_cause, 3) << count << " child queries";
    EXPECT_TRUE(SameRecord(record, After(7))) << count << " child queries";

    record = CMMCObjectParams();
    LoadingArchive scripts(head + Count(0) + Cookie(43) + Count(count) + Cookie(44));
    raised = Raised<CArchiveException>([&] { record.Deserialize(*scripts); });
    ASSERT_TRUE(raised) << count << " scripts";
    EXPECT_EQ(raised->m_cause, 3) << count << " scripts";
    EXPECT_EQ(record.GetScripts(), CMMCObjectParams::ScriptList{44}) << count << " scripts";

    record = CMMCObjectParams();
    LoadingArchive renders(head + Count(0) + Cookie(43) + Count(0) + Cookie(42) + Count(count) + ShortText("Summary") +
                           Cookie(47));
    raised = Raised<CArchiveException>([&] { record.Deserialize(*renders); });
    ASSERT_TRUE(raised) << count << " render queries";
    EXPECT_EQ(raised->m_cause, 3) << count << " render queries";
    EXPECT_EQ(record.GetRenderQueries().size(), 1U) << count << " render queries";
  }
}

}  // namespace
}  // namespace ondrel::test
