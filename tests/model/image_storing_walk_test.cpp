// Storing the nodes of an image: trees of any form, and sets that change while they are stored.

#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/model/random_sets.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

constexpr __int64 kTopParent = -1;

/// The record of a list node with nothing but a name.
std::string BareRecord(__int64 cookie, const std::string& name) {
  return Cookie(cookie) + ShortText(name) + Cookie(0) + Long(0) + Count(0) + Cookie(0) + Count(0);
}

/// A whole image with these nodes below the root and nothing else.
std::string ImageOfNodes(std::size_t top, const std::string& nodes) {
  return Long(1) + Long(1) + Count(top) + nodes + Count(0) + Count(0) + Count(0) + Count(0);
}

std::string TextBytes(const CString& text) {
  std::string bytes = "\xFF\xFE\xFF";
  const auto length = static_cast<unsigned>(text.GetLength());
  bytes += length < 0xFF ? std::string(1, static_cast<char>(length)) : "\xFF" + Word(length);
  for (const WCHAR unit : text.View()) bytes += Word(unit);
  return bytes;
}

std::string QueryBytes(const CMMCObjectParams::QueryList& queries) {
  std::string bytes = Count(queries.size());
  for (const auto& [tag, file] : queries) bytes += TextBytes(tag) + Cookie(file);
  return bytes;
}

std::string RecordBytes(const RecordFields& fields) {
  std::string bytes = Cookie(fields.cookie) + TextBytes(fields.name) + Cookie(fields.icon) + Long(fields.type) +
                      QueryBytes(fields.childQueries) + Cookie(fields.menuScript) + Count(fields.scripts.size());
  for (const __int64 script : fields.scripts) bytes += Cookie(script);
  const bool hasView = fields.type == CMMCObjectParams::eHTML || fields.type == CMMCObjectParams::eDialog;
  return hasView ? bytes + Cookie(fields.styleSheet) + QueryBytes(fields.renderQueries) : bytes;
}

/// What storing a node and all below it should leave, told with the set's public operations alone.
std::string PlainlyStored(CMMCObjectSet& set, __int64 cookie) {
  const std::list<__int64> children = set.GetChildNodes(cookie);
  std::string bytes = RecordBytes(FieldsOf(RecordOf(set, cookie))) + Count(children.size());
  for (const __int64 child : children) bytes += PlainlyStored(set, child);
  return bytes;
}

std::string StoredNode(CMMCObjectSet& set, __int64 cookie) {
  return Stored([&](CVellum& archive) { CMMCObjectSetProbe::SerializeNode(set, cookie, archive); });
}

/// A file that changes a set while it is written: once, when it has so many bytes.
class ChangingFile final : public CMemFile {
 public:
  ChangingFile(ULONGLONG length, std::function<void()> change) : m_length(length), m_change(std::move(change)) {}

  bool HasChanged() const { return m_change == nullptr; }
  void Write(const void* buffer, UINT count) override {
    CMemFile::Write(buffer, count);
    if (GetLength() >= m_length && m_change != nullptr) std::exchange(m_change, nullptr)();
  }

 private:
  ULONGLONG m_length;
  std::function<void()> m_change;
};

/// A top node 0 with the children 1 to 4, of which 2 has the children 5 and 6, and 4 the child 7.
class SetThatChanges : public testing::Test {
 protected:
  void SetUp() override {
    AddNamed(m_set, kTopParent, 0, _T("n"));
    for (const __int64 cookie : {1, 2, 3, 4}) AddNamed(m_set, 0, cookie, _T("n"));
    for (const __int64 cookie : {5, 6}) AddNamed(m_set, 2, cookie, _T("n"));
    AddNamed(m_set, 4, 7, _T("n"));
  }

  static std::string Node(__int64 cookie, std::size_t children) { return BareRecord(cookie, "n") + Count(children); }
  /// The length of an image that ends within the record of the node that so many others stand before.
  static ULONGLONG Within(std::size_t nodesBefore) {
    return 16 + nodesBefore * Node(0, 0).size() + Node(0, 0).size() / 2;
  }
  /// Stores the set through a small buffer; `change` runs when the file has `length` bytes.
  std::string StoreChanging(ULONGLONG length, std::function<void()> change) {
    ChangingFile file(length, std::move(change));
    CVellum archive(&file, CArchive::store, 8);
    m_set.SerializeObjects(archive, 0, 0);
    archive.Close();
    EXPECT_TRUE(file.HasChanged());
    return BytesOf(file);
  }

  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(SetThatChanges, IsStoredWhenItDoesNot) {
  EXPECT_EQ(Hex(StoreChanging(0, [] {})), Hex(ImageOfNodes(1, Node(0, 4) + Node(1, 0) + Node(2, 2) + Node(5, 0) +
                                                                  Node(6, 0) + Node(3, 0) + Node(4, 1) + Node(7, 0))));
}

TEST_F(SetThatChanges, ANodeThatWasListedAndIsGoneRaisesAnException) {
  for (const __int64 removed : {3, 6}) {
    SCOPED_TRACE(removed);
    const auto raised = Raised<CArchiveException>([&] {
      // Within node 5, when 6, 3 and 4 are listed.
      ChangingFile file(Within(3), [&] { ASSERT_EQ(m_set.RemoveNode(removed), S_OK); });
      CVellum archive(&file, CArchive::store, 8);
      m_set.SerializeObjects(archive, 0, 0);
    });
    ASSERT_TRUE(raised);
    EXPECT_EQ(raised->m_cause, CArchiveException::genericException);
    AddNamed(m_set, removed == 3 ? 0 : 2, removed, _T("n"));
  }
}

TEST_F(SetThatChanges, ANodeThatComesWhereChildrenWereListedIsNotStored) {
  const std::string bytes = StoreChanging(Within(3), [&] {
    AddNamed(m_set, 0, 8, _T("late"));
    AddNamed(m_set, 2, 9, _T("late"));
    AddNamed(m_set, 1, 10, _T("late"));
  });
  EXPECT_EQ(Hex(bytes), Hex(ImageOfNodes(1, Node(0, 4) + Node(1, 0) + Node(2, 2) + Node(5, 0) + Node(6, 0) +
                                                Node(3, 0) + Node(4, 1) + Node(7, 0))));
}

TEST_F(SetThatChanges, ANodeThatComesBelowANodeStillToComeIsStored) {
  const std::string bytes = StoreChanging(Within(3), [&] {
    AddNamed(m_set, 3, 8, _T("n"));
    AddNamed(m_set, 4, 9, _T("n"));
    AddNamed(m_set, 8, 10, _T("n"));
  });
  EXPECT_EQ(Hex(bytes),
            Hex(ImageOfNodes(1, Node(0, 4) + Node(1, 0) + Node(2, 2) + Node(5, 0) + Node(6, 0) + Node(3, 1) +
                                    Node(8, 1) + Node(10, 0) + Node(4, 2) + Node(7, 0) + Node(9, 0))));
}

TEST_F(SetThatChanges, ANodeThatWasRemovedAndAddedAgainElsewhereIsStoredWhereItWasListed) {
  const std::string bytes = StoreChanging(Within(3), [&] {
    ASSERT_EQ(m_set.RemoveNode(3), S_OK);
    AddNamed(m_set, 7, 3, _T("n"));
  });
  EXPECT_EQ(Hex(bytes), Hex(ImageOfNodes(1, Node(0, 4) + Node(1, 0) + Node(2, 2) + Node(5, 0) + Node(6, 0) +
                                                Node(3, 0) + Node(4, 1) + Node(7, 1) + Node(3, 0))));
}

TEST_F(SetThatChanges, ARecordThatChangesIsStoredAsItIsThen) {
  const std::string bytes = StoreChanging(Within(3), [&] {
    const CMMCObjectParams renamed(3, _T("renamed"), CMMCObjectParams::eList);
    m_set.SetParams(3, &renamed);
  });
  EXPECT_EQ(Hex(bytes), Hex(ImageOfNodes(1, Node(0, 4) + Node(1, 0) + Node(2, 2) + Node(5, 0) + Node(6, 0) +
                                                BareRecord(3, "renamed") + Count(0) + Node(4, 1) + Node(7, 0))));
}

TEST_F(SetThatChanges, NodesThatMoveAreStoredOnceEach) {
  const std::string bytes = StoreChanging(Within(3), [&] { ASSERT_EQ(m_set.MoveNodeDown(3), S_OK); });
  // 3 and 4 have exchanged their cookies, and with them their children.
  EXPECT_EQ(Hex(bytes), Hex(ImageOfNodes(1, Node(0, 4) + Node(1, 0) + Node(2, 2) + Node(5, 0) + Node(6, 0) +
                                                Node(3, 1) + Node(7, 0) + Node(4, 0))));
}

TEST(ImageOfNodes, HasNoNodesWithNegativeCookiesNorWhatIsBelowThem) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, kTopParent, 5, _T("n"));
  for (const __int64 cookie : {-9, -1, 0, 7}) AddNamed(set, 5, cookie, _T("n"));
  for (const __int64 parent : {-9, 0, 7}) {
    AddNamed(set, parent, parent - 1000, _T("n"));
    AddNamed(set, parent, parent + 1000, _T("n"));
  }
  const auto node = [](__int64 cookie, std::size_t children) { return BareRecord(cookie, "n") + Count(children); };
  EXPECT_EQ(Hex(SavedImage(set)),
            Hex(ImageOfNodes(1, node(5, 2) + node(0, 1) + node(1000, 0) + node(7, 1) + node(1007, 0))));
}

TEST(ImageOfNodes, BeginsAtTheRootThoughItIsANodeToo) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, kTopParent, kTopParent, _T("own child"));
  AddNamed(set, kTopParent, 3, _T("n"));
  AddNamed(set, 3, 1, _T("n"));
  EXPECT_EQ(Hex(SavedImage(set)), Hex(ImageOfNodes(1, BareRecord(3, "n") + Count(1) + BareRecord(1, "n") + Count(0))));
  EXPECT_EQ(Hex(StoredNode(set, kTopParent)), Hex(PlainlyStored(set, kTopParent)));
}

// Beyond a number of levels, walks note one place for all of them.
TEST(ImageOfNodes, OfDeepChainsWithSiblingsIsWhole) {
  constexpr int kLevels = 200;
  for (const int order : {1, -1, 7}) {
    // Cookies that ascend, descend and go up and down with the depth.
    const auto cookieOf = [&](int level, int sibling) {
      const int place = order == 7 ? (level * 73) % 211 : order == 1 ? level : kLevels - level;
      return static_cast<__int64>(place) * 10 + sibling;
    };
    CMMCObjectSet set(LeaveToSet);
    __int64 parent = kTopParent;
    for (int level = 0; level <= kLevels; ++level) {
      for (const int sibling : {0, 3, 6}) {
        if (level == 0 && sibling != 3) continue;
        const __int64 cookie = cookieOf(level, sibling);
        AddNamed(set, parent, cookie, _T("n"));
        if (sibling != 3) AddNamed(set, cookie, cookie + 100'000, _T("leaf"));
      }
      parent = cookieOf(level, 3);
    }
    const std::string expected = ImageOfNodes(1, PlainlyStored(set, cookieOf(0, 3)));
    EXPECT_EQ(expected.size(), ImageOfNodes(1, "").size() + (1 + 3 * kLevels) * (BareRecord(0, "n").size() + 8) +
                                   2 * kLevels * (BareRecord(0, "leaf").size() + 8));
    EXPECT_TRUE(SavedImage(set) == expected) << "order " << order;
  }
}

TEST(ImageOfNodes, OfRandomTreesIsWhatAPlainWriterWrites) {
  for (std::uint32_t seed = 1; seed <= 200; ++seed) {
    std::mt19937 random(seed);
    const auto number = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
    CMMCObjectSet set(LeaveToSet);
    const int nodes = 1 + number(120);
    const int spread = 1 + number(400);
    std::vector<__int64> cookies = {number(spread)};
    AddNamed(set, kTopParent, cookies.front(), _T("top"));
    while (static_cast<int>(cookies.size()) < nodes) {
      const __int64 parent = cookies[static_cast<std::size_t>(number(static_cast<int>(cookies.size())))];
      const __int64 cookie = number(spread * 4) - spread / 4;
      const CMMCObjectParams params(cookie, _T("n"), CMMCObjectParams::eList);
      if (set.AddNode(parent, cookie, params) != S_OK) {
        AddNamed(set, parent, static_cast<__int64>(10'000 + cookies.size()), _T("other"));
        cookies.push_back(static_cast<__int64>(10'000 + cookies.size()));
      } else {
        cookies.push_back(cookie);
      }
      if (number(10) == 0)
        set.MoveNodeDown(cookies[static_cast<std::size_t>(number(static_cast<int>(cookies.size())))]);
    }
    const std::list<__int64> top = set.GetChildNodes(kTopParent);
    if (top.empty()) continue;
    ASSERT_TRUE(StoredNode(set, top.front()) == PlainlyStored(set, top.front())) << "seed " << seed;
  }
}

TEST(ImageOfNodes, OfRandomSetsIsWhatAPlainWriterWrites) {
  int withNodes = 0;
  for (std::uint32_t seed = 0; seed < 40; ++seed) {
    const TemporaryFolder folder;
    std::mt19937 random(seed);
    CMMCObjectSet set(LeaveToSet);
    FillRandomly(set, random, Form::image, folder);
    const std::list<__int64> top = set.GetChildNodes(kTopParent);
    std::string expected = Long(1) + Long(1) + Count(top.size());
    for (const __int64 cookie : top) expected += PlainlyStored(set, cookie);
    const std::list<__int64> dialogs = set.GetDialogs();
    expected += Count(dialogs.size());
    for (const __int64 cookie : dialogs) expected += RecordBytes(FieldsOf(RecordOf(set, cookie)));
    ASSERT_TRUE(SavedImage(set).starts_with(expected)) << "seed " << seed;
    withNodes += top.empty() ? 0 : 1;
  }
  EXPECT_GT(withNodes, 20);
}

}  // namespace
}  // namespace ondrel::test
