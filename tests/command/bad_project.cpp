#include "bad_project.h"

#include <cstdio>

#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>
#include <ondrel/platform/program.h>

#include "bad_file.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

constexpr const char* kOldImage = "old image";

std::string StatusText(HRESULT status) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(status));
  return text;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const BadProject& bad) { return out << bad.name; }

std::string InGroup(const std::string& group, std::initializer_list<std::string_view> lines) {
  return "<Project>\n<" + group + ">\n" + Lines(lines) + "</" + group + ">\n</Project>\n";
}
std::string Nodes(std::initializer_list<std::string_view> lines) { return InGroup("NodeGroup", lines); }
std::string Dialogs(std::initializer_list<std::string_view> lines) { return InGroup("DialogGroup", lines); }
std::string Files(std::initializer_list<std::string_view> lines) { return InGroup("FileGroup", lines); }

BadProjectFolder::BadProjectFolder(std::string_view project) {
  Write("good.ico", SmallIconFile());
  Write("cut.ico", SmallIconFile().substr(0, 200));
  Write("text.ico", "This is no icon.\n");
  Write("empty.ico", "");
  Write("folder/inside", "");
  WriteProject(project);
  Write(kImageName, kOldImage);
}

HRESULT BadProjectFolder::LoadStatus() const {
  const auto writer = [](const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; };
  const auto factory = [](const WCHAR*) { return CMMCObjectSet::Transform(); };
  CMMCObjectSet set(writer);
  CFile file(Wide(*this / kProjectName), CFile::modeRead);
  CVellum archive(&file, CArchive::load);
  archive.m_strFileName = platform::FullPath(Wide(*this / kProjectName));
  const auto raised = Raised<COleException>([&] { set.SerializeProjectFile(archive, factory); });
  return raised ? raised->m_sc : S_OK;
}

void BadProjectFolder::ExpectExplained(const std::string& complaint, HRESULT status) const {
  ExpectAllFail(*this, kProjectName, "console.xml:" + complaint, StatusText(status));
  EXPECT_EQ(ReadBytes(*this / kImageName), kOldImage);
}

void BadProjectFolder::ExpectRaised(HRESULT status) const {
  EXPECT_EQ(StatusText(static_cast<DWORD>(LoadStatus())), StatusText(status)) << "raised by the library";
}

}  // namespace ondrel::test
