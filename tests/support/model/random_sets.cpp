#include "support/model/random_sets.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

constexpr int kMostNodes = 25;
constexpr int kMostDialogs = 5;
constexpr int kMostIcons = 4;
constexpr int kMostCodeFiles = 6;
constexpr int kMostCodeBytes = 5000;

class Generator {
 public:
  Generator(std::mt19937& random, Form form) : m_random(random), m_form(form) {}

  /// A number from 0 to `most`.
  int Number(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }

  bool ForProject() const { return m_form == Form::projectAndImage; }

  __int64 FileCookie() {
    // Extremes come up often enough to matter.
    switch (Number(5)) {
      case 0:
        return ForProject() ? 1 : 0;
      case 1:
        return std::numeric_limits<__int64>::max();
      case 2:
        return std::numeric_limits<__int64>::min();
      default:
        return std::uniform_int_distribution<__int64>(1, std::numeric_limits<__int64>::max())(m_random);
    }
  }

  CString Text() {
    static constexpr std::string_view kProjectUnits = "aZ09 <>&\"'\t\r\n\\/%;#x]]>--?=~";
    CString text;
    for (int left = Number(3) == 0 ? 0 : Number(12); left > 0; --left) {
      if (ForProject()) {
        const int index = Number(static_cast<int>(kProjectUnits.size()) - 1);
        text += static_cast<WCHAR>(kProjectUnits[static_cast<std::size_t>(index)]);
      } else {
        static constexpr WCHAR kMarked[] = {0, 0xD800, 0xDC00, 0xDFFF, 0xFFFE, 0xFFFF, 0xFEFF};
        text += Number(3) == 0 ? kMarked[Number(6)] : static_cast<WCHAR>(Number(0xFFFF));
      }
    }
    if (!ForProject() && Number(40) == 0) text += CString(_T('x'), 250 + Number(10));
    return text;
  }

  CMMCObjectParams::QueryList Queries() {
    CMMCObjectParams::QueryList queries;
    for (int left = Number(3); left > 0; --left) queries.emplace_back(Text(), FileCookie());
    return queries;
  }

  CMMCObjectParams::ScriptList Scripts() {
    CMMCObjectParams::ScriptList scripts;
    for (int left = Number(3); left > 0; --left) scripts.push_back(FileCookie());
    return scripts;
  }

  CMMCObjectParams Record(__int64 cookie, CString name, CMMCObjectParams::_eTypeNode type) {
    RecordFields fields{.cookie = cookie, .name = std::move(name), .icon = FileCookie(), .type = type};
    const bool hasView = type == CMMCObjectParams::eHTML || type == CMMCObjectParams::eDialog;
    fields.menuScript = Number(1) == 0 ? 0 : FileCookie();
    fields.scripts = Scripts();
    if (!ForProject() || type != CMMCObjectParams::eDialog) fields.childQueries = Queries();
    if (hasView) {
      fields.styleSheet = Number(1) == 0 ? 0 : FileCookie();
      fields.renderQueries = Queries();
    }
    return MakeRecord(std::move(fields));
  }

  CMMCObjectParams::_eTypeNode Type() {
    const int type = Number(4);
    if (type <= CMMCObjectParams::eUnknown) return static_cast<CMMCObjectParams::_eTypeNode>(type);
    return ForProject() ? CMMCObjectParams::eUnknown
                        : static_cast<CMMCObjectParams::_eTypeNode>(Number(2000000) - 1000000);
  }

  /// The path of a file below the folder, with one separator or the other.
  CString PathOf(const TemporaryFolder& folder, const std::string& name) {
    const bool asOnWindows = Number(1) == 0;
    CString below = Wide(name);
    if (asOnWindows) below.Replace(_T('/'), _T('\\'));
    return Wide(folder.Path()) + (asOnWindows ? _T("\\") : _T("/")) + below;
  }

  std::string CodeBytes() {
    std::string bytes;
    for (int left = Number(3) == 0 ? 0 : Number(kMostCodeBytes); left > 0; --left) {
      bytes.push_back(static_cast<char>(Number(255)));
    }
    return bytes;
  }

 private:
  std::mt19937& m_random;
  Form m_form;
};

void AddIcons(CMMCObjectSet& set, Generator& generator, const TemporaryFolder& folder) {
  static constexpr int kDepths[] = {1, 4, 8, 24, 32};
  for (int index = generator.Number(kMostIcons); index > 0; --index) {
    const int depth = kDepths[generator.Number(4)];
    const std::string name = (index % 2 == 0 ? "icons/" : "") + std::to_string(index) + " & 'icon'.ico";
    std::vector<IconPicture> pictures;
    if (generator.Number(1) == 0) pictures.push_back(PatternPicture(16, 16, kDepths[generator.Number(4)]));
    pictures.push_back(PatternPicture(generator.Number(3) == 0 ? 48 : 32, generator.Number(3) == 0 ? 48 : 32, depth));
    WriteIcon(folder, name, pictures);
    EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(set, generator.PathOf(folder, name), 1000 - index), S_OK);
  }
  if (generator.ForProject()) return;
  for (int index = generator.Number(2); index > 0; --index) {
    std::string bytes = Cookie(-index);
    for (int bitmap = 0; bitmap < 4; ++bitmap) {
      bytes += Long(generator.Number(9)) + Long(generator.Number(100) - 50) + Long(generator.Number(100) - 50) +
               Long(generator.Number(100) - 50) + Word(static_cast<unsigned>(generator.Number(0xFFFF))) +
               Word(static_cast<unsigned>(generator.Number(64))) + ByteVector(generator.CodeBytes());
    }
    LoadingArchive archive(bytes);
    set.DeserializeIconFile(*archive);
  }
}

void AddCodeFiles(CMMCObjectSet& set, Generator& generator, const TemporaryFolder& folder) {
  for (int index = generator.Number(kMostCodeFiles); index > 0; --index) {
    const std::string name = (index % 3 == 0   ? "code/"
                              : index % 3 == 1 ? "code/sub/"
                                               : "") +
                             std::to_string(index) + (index % 2 == 0 ? ".js" : " &lt;x.xslt");
    folder.Write(name, generator.CodeBytes());
    const CString path = generator.PathOf(folder, name);
    EXPECT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, path, 2000 - index, MarkingTransform(path)), S_OK);
  }
  if (generator.ForProject()) return;
  for (int index = generator.Number(kMostCodeFiles); index > 0; --index) {
    const std::string bytes = generator.CodeBytes();
    EXPECT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, index * 1000003LL - 3000000, {bytes.begin(), bytes.end()}), S_OK);
  }
}

}  // namespace

CMMCObjectSet::Transform MarkingTransform(const WCHAR* path) {
  const auto length = static_cast<unsigned char>(CString(path).GetLength());
  return [length](std::vector<char> bytes, CMMCObjectSet::Variables variables) {
    bytes.push_back(static_cast<char>(length));
    bytes.push_back(static_cast<char>(variables.size()));
    return bytes;
  };
}

void FillRandomly(CMMCObjectSet& set, std::mt19937& random, Form form, const TemporaryFolder& folder) {
  Generator generator(random, form);
  // The cookies that stand for nodes, and the next free one. Gaps are as common as runs.
  std::vector<__int64> parents = {CMMCObjectSet::RootNode};
  __int64 next = 0;
  for (int left = generator.Number(kMostNodes); left > 0; --left) {
    const __int64 parent =
        parents.size() == 1
            ? parents[0]
            : parents[1 + static_cast<std::size_t>(generator.Number(static_cast<int>(parents.size()) - 2))];
    next += 1 + generator.Number(3);
    EXPECT_EQ(set.AddNode(parent, next, generator.Record(next, generator.Text(), generator.Type())), S_OK);
    parents.push_back(next);
  }
  for (int left = generator.Number(kMostDialogs); left > 0; --left) {
    next += 1 + generator.Number(3);
    CString name = generator.Text();
    name += static_cast<WCHAR>(_T('0') + left);  // no two alike
    const auto type = generator.Number(3) == 0 ? generator.Type() : CMMCObjectParams::eDialog;
    EXPECT_EQ(set.AddDialog(next, generator.Record(next, name, type)), S_OK);
  }
  AddIcons(set, generator, folder);
  AddCodeFiles(set, generator, folder);
}

}  // namespace ondrel::test
