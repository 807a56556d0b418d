// How a program of random edits runs, draws its arguments and compares.
#include "support/model/edit_program.h"

#include <algorithm>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "support/model/plain_conversions.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/status_text.h"

namespace ondrel::test {
namespace {

constexpr int kMostSteps = 300;
/// The first of the operations, edits of nodes and dialogs, come up more often than the others, so that trees grow.
constexpr int kEdits = 8;
constexpr int kMoreEdits = 3 * kEdits;
/// Steps from one comparison of everything to the next.
constexpr int kStepsBetween = 8;

constexpr __int64 kLargest = std::numeric_limits<__int64>::max();
constexpr __int64 kSmallest = std::numeric_limits<__int64>::min();

std::string Raised(const std::function<void()>& call) {
  try {
    call();
  } catch (const PlainRefusal& refusal) {
    return refusal.text;
  } catch (const CArchiveException& exception) {
    return "CArchiveException " + std::to_string(exception.m_cause);
  } catch (const COleException& exception) {
    return "COleException " + StatusText(exception.m_sc);
  } catch (const CFileException&) {
    return "CFileException";
  } catch (const CMemoryException&) {
    return "CMemoryException";
  } catch (const std::bad_function_call&) {
    return "std::bad_function_call";
  } catch (const std::runtime_error&) {
    return "std::runtime_error";
  }
  return "nothing";
}

std::string Shown(const PlainText& text) { return Describe(text); }
std::string Shown(const PlainRecord& record) { return "{" + Describe(record) + "}"; }
std::string Shown(__int64 number) { return std::to_string(number); }

/// The lines of one text that the other lacks.
std::string Without(const std::string& text, const std::string& other) {
  std::vector<std::string> others;
  std::string line;
  for (std::istringstream lines(other); std::getline(lines, line);) others.push_back(line);
  std::string left;
  for (std::istringstream lines(text); std::getline(lines, line);) {
    if (std::find(others.begin(), others.end(), line) == others.end()) left += "\n  " + line;
  }
  return left.empty() ? "\n  the same lines in another order or number:\n" + text : left;
}

}  // namespace

const EditProgram::Operation EditProgram::kOperations[] = {
    {"AddNewNode", &EditProgram::AddNewNode},
    {"AddNode", &EditProgram::AddNode},
    {"RemoveNode", &EditProgram::RemoveNode},
    {"MoveNodeDown", &EditProgram::MoveNodeDown},
    {"AddNewDialog", &EditProgram::AddNewDialog},
    {"AddDialog", &EditProgram::AddDialog},
    {"RemoveDialog", &EditProgram::RemoveDialog},
    {"SetParams", &EditProgram::SetParams},
    {"GetDialog", &EditProgram::GetDialog},
    {"GetDialogs", &EditProgram::GetDialogs},
    {"GetChildNodes", &EditProgram::GetChildNodes},
    {"GetParams", &EditProgram::GetParams},
    {"ChangeInPlace", &EditProgram::ChangeInPlace},
    {"SetModifiedFlag", &EditProgram::SetModifiedFlag},
    {"Initialise", &EditProgram::Initialise},
    {"AddCodeFile", &EditProgram::AddCodeFile},
    {"AddIconFile", &EditProgram::AddIconFile},
    {"InsertCodeFile", &EditProgram::InsertCodeFile},
    {"InsertCodeContents", &EditProgram::InsertCodeContents},
    {"InsertIconFile", &EditProgram::InsertIconFile},
    {"InsertIcon", &EditProgram::InsertIcon},
    {"GenerateFileCookie", &EditProgram::GenerateFileCookie},
    {"GetCodeFiles", &EditProgram::GetCodeFiles},
    {"GetIconFiles", &EditProgram::GetIconFiles},
    {"GetCodeFileContents", &EditProgram::GetCodeFileContents},
    {"GetFilePath", &EditProgram::GetFilePath},
    {"GetIconFile", &EditProgram::GetIconFile},
    {"GetIconFileImage", &EditProgram::GetIconFileImage},
    {"GetIconImageList", &EditProgram::GetIconImageList},
    {"GetIconBitmapImages", &EditProgram::GetIconBitmapImages},
    {"ChangeDisk", &EditProgram::ChangeDisk},
    {"StoreCodeFile", &EditProgram::StoreCodeFile},
    {"StoreIconFile", &EditProgram::StoreIconFile},
    {"LoadCodeFile", &EditProgram::LoadCodeFile},
    {"LoadIconFile", &EditProgram::LoadIconFile},
    {"StoreWhereOneLoads", &EditProgram::StoreWhereOneLoads},
    {"ReloadImage", &EditProgram::ReloadImage},
    {"LoadDamagedImage", &EditProgram::LoadDamagedImage},
    {"ReloadProject", &EditProgram::ReloadProject},
    {"LoadCutProject", &EditProgram::LoadCutProject},
};

EditProgram::EditProgram(std::span<const std::uint8_t> bytes, PlainDisk& disk)
    : m_bytes(bytes), m_disk(disk), m_set(std::make_unique<CMMCObjectSet>(WriteHooked)) {
  m_disk.Change(PlainDisk::Changing::good);
}

void EditProgram::Run() {
  while (!m_bytes.empty() && m_step < kMostSteps) {
    ++m_step;
    const int number = Number(static_cast<int>(std::size(kOperations)) + kMoreEdits);
    const Operation& operation = kOperations[number < kMoreEdits ? number % kEdits : number - kMoreEdits];
    m_operation = operation.name;
    m_arguments.clear();
    (this->*operation.run)();
    Expect(m_plain.IsModified() ? "modified" : "unmodified", m_set->IsModified() ? "modified" : "unmodified");
    if (m_step % kStepsBetween == 0) CompareWhole(*m_set, m_plain);
  }
  CompareWhole(*m_set, m_plain);
}

int EditProgram::Number(int below) {
  if (m_bytes.empty()) return 0;
  const int number = m_bytes.front() % below;
  m_bytes = m_bytes.subspan(1);
  return number;
}

std::size_t EditProgram::Position(std::size_t below) {
  const auto high = static_cast<std::size_t>(Number(256));
  const auto low = static_cast<std::size_t>(Number(256));
  return (high * 256 + low) * below / 65536;
}

__int64 EditProgram::ObjectCookie() {
  const int number = Number(32);
  switch (number) {
    case 27:
      return Told(kLargest);
    case 28:
      return Told(kLargest - 1);
    case 29:
      return Told(kSmallest);
    case 30:
      return Told(static_cast<__int64>(-1));
    case 31:
      return Told(static_cast<__int64>(Number(120)));
    default:
      if (number < 18) return Told(static_cast<__int64>(number - 4));
      return Told(OneOf(m_plain.GetObjects()));
  }
}

__int64 EditProgram::FileCookie() {
  const int number = Number(20);
  if (number < 10) return Told(static_cast<__int64>(number - 2));
  if (number == 10) return Told(kLargest);
  if (number == 11) return Told(kLargest - 1);
  if (number == 12) return Told(kSmallest);
  std::list<__int64> cookies = m_plain.GetCodeFiles();
  cookies.splice(cookies.end(), m_plain.GetIconFiles());
  return Told(OneOf(cookies));
}

__int64 EditProgram::OneOf(const std::list<__int64>& cookies) {
  if (cookies.empty()) return 0;
  return *std::next(cookies.begin(), Number(256) % static_cast<int>(cookies.size()));
}

PlainText EditProgram::Name() {
  static const PlainText kNames[] = {u"",
                                     u"a",
                                     u"b",
                                     u"c",
                                     u"d",
                                     u"A",
                                     u"ab",
                                     u"aB",
                                     u"ba",
                                     u"ab",
                                     u"<&\">'%d>",
                                     u" \t\r\n a ",
                                     u"\u00E9\u4E2D",
                                     PlainText(254, u'y'),
                                     PlainText(255, u'y'),
                                     PlainText(300, u'x')};
  return Told(kNames[Number(static_cast<int>(std::size(kNames)))]);
}

int EditProgram::Type() {
  static constexpr int kTypes[] = {kPlainList, kPlainHtml, kPlainDialog, kPlainUnknown, 4, -1, 0x7FFFFFFF, 0x100};
  const int kinds = Number(2) == 0 ? 3 : 8;  // those that there are come up more often
  return static_cast<int>(Told(static_cast<__int64>(kTypes[Number(kinds)])));
}

PlainQueries EditProgram::Queries() {
  PlainQueries queries;
  for (int left = Number(3); left > 0; --left) {
    const PlainText tag = Name();
    queries.emplace_back(tag, FileCookie());
  }
  return queries;
}

PlainRecord EditProgram::Record(__int64 cookie) {
  PlainRecord record;
  const int form = Number(16);
  record.cookie = form == 0 ? ObjectCookie() : cookie;
  record.name = Name();
  record.type = Type();
  if (form < 8) return Told(record);
  record.icon = FileCookie();
  record.childQueries = Queries();
  record.styleSheet = FileCookie();
  record.menuScript = FileCookie();
  // A script without a file keeps a project from being loaded; most have one.
  for (int left = Number(3); left > 0; --left) {
    const __int64 script = FileCookie();
    record.scripts.push_back(script == 0 && form != 8 ? 1 : script);
  }
  record.renderQueries = Queries();
  return Told(record);
}

PlainTransform EditProgram::Transform() {
  const int number = Number(16);
  if (number == 0) return {PlainTransform::Kind::none, 0};
  if (number == 1) return {PlainTransform::Kind::raises, 0};
  if (number == 2) return {PlainTransform::Kind::empties, 0};
  return {PlainTransform::Kind::marks, number};
}

HandIcon EditProgram::Icon() {
  const HandIcon ordinary{FilledImage(3, 2, 32, 1), FilledImage(2, 2, 32, 3)};
  switch (Number(5)) {
    case 0:
      return {};
    case 1:
      return {FilledImage(4, 4, 8, 5), FilledImage(2, 1, 32, 7)};
    case 2:
      return {FilledImage(5, 3, 32, 9), FilledImage(1, 1, 1, 11)};
    case 3:
      return {FilledImage(2, 2, 32, 13), FilledImage(3, 3, 24, 15)};
    default:
      return ordinary;
  }
}

PlainText EditProgram::PathFrom(const std::vector<PlainText>& paths) {
  return Told(paths[static_cast<std::size_t>(Number(static_cast<int>(paths.size())))]);
}

template <class Value>
Value EditProgram::Told(Value value) {
  m_arguments += " " + Shown(value);
  return value;
}

void EditProgram::Expect(const std::string& expected, const std::string& got) {
  if (expected == got) return;
  throw std::logic_error("step " + std::to_string(m_step) + ", " + m_operation + m_arguments + ": expected " +
                         expected + ", got " + got);
}

void EditProgram::ExpectStatus(HRESULT expected, HRESULT got) {
  Expect(StatusText(expected), StatusText(got));
  Note(StatusText(got));
}

void EditProgram::ExpectCookies(const std::list<__int64>& expected, const std::list<__int64>& got) {
  const auto listed = [](const std::list<__int64>& cookies) {
    std::string text;
    for (const __int64 cookie : cookies) text += " " + std::to_string(cookie);
    return text + ";";
  };
  Expect("the cookies" + listed(expected), "the cookies" + listed(got));
  Note(got.empty() ? "none" : "some");
}

bool EditProgram::BothEnd(const std::function<void()>& plain, const std::function<void()>& real) {
  const std::string expected = Raised(plain);
  Expect(expected + " raised", Raised(real) + " raised");
  Note(expected);
  return expected == "nothing";
}

void EditProgram::CompareWhole(CMMCObjectSet& set, const PlainSet& plain) {
  const std::string expected = plain.Observed();
  const std::string got = Observed(set);
  if (expected != got) Expect("a set with" + Without(expected, got), "\na set with" + Without(got, expected));
  const auto indices = [](const std::map<__int64, int>& images) {
    std::string text;
    for (const auto& [cookie, image] : images) {
      text += " " + std::to_string(cookie) + "->" + std::to_string(image);
    }
    return text;
  };
  Expect("the image indices" + indices(plain.ImageIndices()),
         "the image indices" + indices(CMMCObjectSetProbe::ImageIndices(set)));
}

}  // namespace ondrel::test
