// Random edits of code files and icon files.
#include "support/model/edit_program.h"

#include "support/model/digest.h"
#include "support/model/icon_strips.h"
#include "support/model/plain_conversions.h"
#include "support/model/seeded_random_device.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

/// The system's random numbers are few, so that the cookies drawn from them meet.
constexpr int kRandomNumbers = 6;
/// Image lists do not grow for ever.
constexpr int kMostListed = 40;

}  // namespace

void EditProgram::AddCodeFile() {
  const PlainText path = PathFrom(m_disk.CodePaths());
  const PlainTransform transform = Transform();
  const auto random = static_cast<unsigned>(Number(kRandomNumbers));
  __int64 expected = -5;
  __int64 got = -5;
  const HRESULT status = m_plain.AddCodeFile(path, transform, random, expected);
  const SeededRandomDevice device(random);
  const HRESULT given = m_set->AddCodeFile(Real(path), Real(transform), got);
  ExpectStatus(status, given);
  Expect("cookie " + std::to_string(expected), "cookie " + std::to_string(got));
}

void EditProgram::AddIconFile() {
  const PlainText path = PathFrom(m_disk.IconPaths());
  const auto random = static_cast<unsigned>(Number(kRandomNumbers));
  __int64 expected = -5;
  __int64 got = -5;
  const HRESULT status = m_plain.AddIconFile(path, m_disk, random, expected);
  const SeededRandomDevice device(random);
  const HRESULT given = m_set->AddIconFile(Real(path), got);
  ExpectStatus(status, given);
  Expect("cookie " + std::to_string(expected), "cookie " + std::to_string(got));
}

void EditProgram::InsertCodeFile() {
  const PlainText path = PathFrom(m_disk.CodePaths());
  const PlainTransform transform = Transform();
  const __int64 cookie = FileCookie();
  ExpectStatus(m_plain.InsertCodeFile(path, cookie, transform),
               CMMCObjectSetProbe::InsertCodeFile(*m_set, Real(path), cookie, Real(transform)));
}

void EditProgram::InsertCodeContents() {
  const __int64 cookie = FileCookie();
  const std::string contents(static_cast<std::size_t>(Number(5)), static_cast<char>(Number(256)));
  ExpectStatus(m_plain.InsertCodeFile(cookie, contents),
               CMMCObjectSetProbe::InsertCodeFile(*m_set, cookie, {contents.begin(), contents.end()}));
}

void EditProgram::InsertIconFile() {
  const PlainText path = PathFrom(m_disk.IconPaths());
  const __int64 cookie = FileCookie();
  ExpectStatus(m_plain.InsertIconFile(path, cookie, m_disk),
               CMMCObjectSetProbe::InsertIconFile(*m_set, Real(path), cookie));
}

void EditProgram::InsertIcon() {
  const __int64 cookie = FileCookie();
  const HandIcon icon = Icon();
  ExpectStatus(m_plain.InsertIconFile(cookie, icon), CMMCObjectSetProbe::InsertIconFile(*m_set, cookie, Real(icon)));
}

void EditProgram::GenerateFileCookie() {
  const auto random = static_cast<unsigned>(Number(kRandomNumbers));
  const SeededRandomDevice device(random);
  Expect("cookie " + std::to_string(m_plain.DrawFileCookie(random)),
         "cookie " + std::to_string(CMMCObjectSetProbe::GenerateFileCookie(*m_set)));
  Note("a cookie");
}

void EditProgram::GetCodeFiles() { ExpectCookies(m_plain.GetCodeFiles(), m_set->GetCodeFiles()); }

void EditProgram::GetIconFiles() { ExpectCookies(m_plain.GetIconFiles(), m_set->GetIconFiles()); }

void EditProgram::GetCodeFileContents() {
  const __int64 cookie = FileCookie();
  const std::string untouched = "untouched";
  std::vector<char> contents(untouched.begin(), untouched.end());
  const bool found = m_set->GetCodeFileContents(cookie, contents);
  const std::string* const expected = m_plain.GetCodeFileContents(cookie);
  Expect(expected == nullptr ? "false " + untouched : "true " + *expected,
         (found ? "true " : "false ") + std::string(contents.begin(), contents.end()));
  Note(found ? "true" : "false");
}

void EditProgram::GetFilePath() {
  const __int64 cookie = FileCookie();
  CString path = _T("untouched");
  const bool found = m_set->GetFilePath(cookie, path);
  const PlainText* const expected = m_plain.GetFilePath(cookie);
  Expect(expected == nullptr ? "false " + Describe(PlainText(u"untouched")) : "true " + Describe(*expected),
         (found ? "true " : "false ") + Describe(Plain(path)));
  Note(found ? "true" : "false");
}

void EditProgram::GetIconFile() {
  const __int64 cookie = FileCookie();
  const CMMCObjectIcon* icon = nullptr;
  const bool found = m_set->GetIconFile(cookie, &icon);
  const HandIcon* const expected = m_plain.GetIconFile(cookie);
  Expect(expected == nullptr ? "false" : "true", found ? "true" : "false");
  if (found) Expect(Digest(expected->Record()), Digest(Stored([&](CVellum& archive) { icon->Serialize(archive); })));
  Note(found ? "true" : "false");
}

void EditProgram::GetIconFileImage() {
  const __int64 cookie = FileCookie();
  constexpr int kUntouched = -99;
  int image = kUntouched;
  const bool found = m_set->GetIconFileImage(cookie, image);
  const int* const expected = m_plain.GetIconFileImage(cookie);
  Expect(expected == nullptr ? "false" : "true", found ? "true" : "false");
  Expect("image " + std::to_string(expected == nullptr ? kUntouched : *expected), "image " + std::to_string(image));
  Note(found ? "true" : "false");
}

void EditProgram::GetIconImageList() {
  const int size = Number(2) == 0 ? 16 : 32;
  if (m_list.GetSafeHandle() == nullptr || m_listed > kMostListed) {
    m_list.DeleteImageList();
    Expect("a list", m_list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1) ? "a list" : "none");
    m_listed = 0;
  }
  const int before = m_listed;
  m_listed = m_plain.AppendToImageList(m_listed);
  m_set->GetIconImageList(size, size, m_list);
  Expect(std::to_string(m_listed) + " images", std::to_string(m_list.GetImageCount()) + " images");
  Note(m_listed == before ? "nothing" : "images");
}

void EditProgram::GetIconBitmapImages() {
  const DWORD key = Number(2) == 0 ? 0x00FF00FF : 0x00123456;
  const Strips strips(*m_set, key);
  for (const bool large : {true, false}) {
    HandBitmap expected = m_plain.MakeStrips(large, key);
    // Without a size the platform makes the smallest bitmap that there is.
    if (expected.width == 0) expected = {.width = 1, .height = 1, .rowBytes = 2, .depth = 1, .bytes = {0, 0}};
    const testing::AssertionResult same = IsStrip(large ? strips.large : strips.smallIcon, expected);
    Expect("the strip of the rules", same ? "the strip of the rules" : same.message());
    Note(expected.bytes.size() == 2 ? "the smallest strip" : "a strip");
  }
}

void EditProgram::ChangeDisk() {
  static constexpr PlainDisk::Changing kChanges[] = {PlainDisk::Changing::good, PlainDisk::Changing::damaged,
                                                     PlainDisk::Changing::missing};
  m_disk.Change(kChanges[Number(3)]);
  Note("changed");
}

}  // namespace ondrel::test
