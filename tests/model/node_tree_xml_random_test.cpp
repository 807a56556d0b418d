// Random trees through XML elements and back.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "support/model/documents.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

/// Random values that XML carries.
class Values {
 public:
  explicit Values(std::uint32_t seed) : m_random(seed) {}

  int Number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }
  /// Any 64-bit number; half of them small.
  __int64 Cookie() {
    if (Number(2) == 0) return Number(100);
    return std::uniform_int_distribution<__int64>(INT64_MIN, INT64_MAX)(m_random);
  }
  __int64 FileCookie() { return std::max<__int64>(1, Cookie() & INT64_MAX); }
  CString Text() {
    static constexpr WCHAR kUnits[] = {'a',  'Z', '0',  ' ',    '<',    '>',  '&', '"',
                                       '\'', '/', 0xE4, 0x2260, 0xFFFD, '\t', '\n'};
    CString text;
    for (int count = Number(12); count > 0; --count) {
      if (Number(12) == 0) {
        text += static_cast<WCHAR>(0xD83D);  // a pair of surrogates
        text += static_cast<WCHAR>(0xDE00);
      } else {
        text += kUnits[Number(static_cast<int>(std::size(kUnits)))];
      }
    }
    return text;
  }
  CMMCObjectParams::QueryList Queries() {
    CMMCObjectParams::QueryList queries;
    for (int count = Number(4); count > 0; --count) queries.emplace_back(Text(), Number(3) == 0 ? 0 : Cookie());
    return queries;
  }
  /// A record that comes back as it is: a view only for the types that have one, scripts only with a file.
  RecordFields Record(__int64 cookie) {
    RecordFields record{.cookie = cookie,
                        .name = Text(),
                        .icon = Cookie(),
                        .type = static_cast<CMMCObjectParams::_eTypeNode>(Number(4)),
                        .menuScript = Cookie()};
    for (int count = Number(4); count > 0; --count) record.scripts.push_back(FileCookie());
    if (record.type != CMMCObjectParams::eDialog) record.childQueries = Queries();
    if (record.type == CMMCObjectParams::eHTML || record.type == CMMCObjectParams::eDialog) {
      record.styleSheet = Cookie();
      record.renderQueries = Queries();
    }
    return record;
  }

 private:
  std::mt19937 m_random;
};

TEST(NodeTreeXmlRandom, TreesComeBackAsTheyWere) {
  constexpr int kRuns = 60;
  std::size_t nodes = 0;
  for (std::uint32_t seed = 1; seed <= kRuns; ++seed) {
    Values values(seed);
    CMMCObjectSet set(LeaveToSet);
    std::vector<__int64> cookies{values.FileCookie()};
    ASSERT_EQ(set.AddNode(-1, cookies[0], MakeRecord(values.Record(cookies[0]))), 0);
    for (int count = values.Number(80); count > 0; --count) {
      const __int64 cookie = values.FileCookie();  // not negative, so that it is listed
      const __int64 parent = cookies[static_cast<std::size_t>(values.Number(static_cast<int>(cookies.size())))];
      if (set.AddNode(parent, cookie, MakeRecord(values.Record(cookie))) == 0) cookies.push_back(cookie);
    }
    nodes += cookies.size();

    const CComPtr<IXMLDOMDocument> document = NewDocument();
    const CComPtr<IXMLDOMElement> root = AddRoot(document, _T("P"));
    CComPtr<IXMLDOMElement> group;
    ASSERT_EQ(document->createElement(CComBSTR(_T("G")), &group), 0);
    ASSERT_EQ(root->appendChild(group, nullptr), 0);
    ASSERT_EQ(Probe::SerializeNode(set, cookies[0], document, group), 0);
    CMMCObjectSet loaded(LeaveToSet);
    ASSERT_EQ(Probe::DeserializeNodes(loaded, -1, Select(root, _T("G"))), 1) << "seed " << seed;
    ASSERT_EQ(DescribeObjects(loaded), DescribeObjects(set)) << "seed " << seed;
    EXPECT_FALSE(loaded.IsModified());
  }
  EXPECT_GT(nodes, 1000U);
}

}  // namespace
}  // namespace ondrel::test
