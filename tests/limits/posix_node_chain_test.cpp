// A chain of a million nodes as a project file. Wine's parser refuses elements that are nested so deep.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "node_chain.h"
#include "support/archive_bytes.h"
#include "support/model/set_forms.h"

namespace ondrel::test {
namespace {

/// A file in memory that leaves out the indentation, which says nothing and takes four parts of five.
class UnindentedFile : public CMemFile {
 public:
  void Write(const void* buffer, UINT count) override {
    const auto* byte = static_cast<const char*>(buffer);
    const char* const end = byte + count;
    while (byte != end) {
      const auto* tab = static_cast<const char*>(std::memchr(byte, '\t', static_cast<std::size_t>(end - byte)));
      if (tab == nullptr) tab = end;
      CMemFile::Write(byte, static_cast<UINT>(tab - byte));
      for (byte = tab; byte != end && *byte == '\t'; ++byte) {
      }
    }
  }
};

TEST(PosixNodeChain, IsSavedAsAProjectAndLoadedAgain) {
  RunOnStack(kChainStack, [] {
    UnindentedFile file;
    {
      CMMCObjectSet set(LeaveToSet);
      FillChain(set);
      CVellum archive(&file, CArchive::store);
      set.SerializeProjectFile(archive, nullptr);
      archive.Close();
    }
    // The record of each node, and the container of its children but for the last.
    const std::string name = R"(" Name="" Icon="0" Type="List">)";
    const std::string end = "<ChildQueries/>\r\n<MenuScript/>\r\n<Scripts/>\r\n";
    const std::string start =
        "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<Project>\r\n<NodeGroup>\r\n"
        "<Node Cookie=\"0" +
        name + "\r\n" + end + "<Nodes>\r\n<Node Cookie=\"1" + name + "\r\n";
    const auto* const bytes = reinterpret_cast<const char*>(file.GetBytes());
    ASSERT_GT(file.GetLength(), start.size());
    EXPECT_EQ(std::string(bytes, start.size()), start);

    CMMCObjectSet set(LeaveToSet);
    file.Seek(0, CFile::begin);
    CVellum archive(&file, CArchive::load);
    set.SerializeProjectFile(archive, UnchangedFor);
    ExpectChain(set);
  });
}

}  // namespace
}  // namespace ondrel::test
