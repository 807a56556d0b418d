// The export table of Ondrel.dll, read from the file: the exported classes and ShowMessage, and nothing else. Other
// systems export by visibility, where the templates of the standard library come along.
#include <gtest/gtest.h>

#include <cxxabi.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <stdexcept>

#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

// The layout is that of the PE format's documentation.
constexpr std::size_t kHeaderOffset = 0x3C;  // where the file says where its PE header stands
constexpr std::size_t kSectionCount = 6;     // in the PE header
constexpr std::size_t kOptionalHeaderSize = 20;
constexpr std::size_t kOptionalHeader = 24;
constexpr std::size_t kExportDirectory = 112;  // in the optional header of a 64-bit file
constexpr std::size_t kSectionHeaderSize = 40;
constexpr std::size_t kNameCount = 24;  // in the export directory
constexpr std::size_t kNameTable = 32;

class PortableExecutable {
 public:
  explicit PortableExecutable(std::string bytes) : m_bytes(std::move(bytes)) {
    m_header = Number<std::uint32_t>(kHeaderOffset);
    if (m_bytes.substr(m_header, 4) != std::string("PE\0\0", 4)) throw std::runtime_error("no PE file");
  }

  std::set<std::string> ExportedNames() const {
    const std::size_t directory = Offset(Number<std::uint32_t>(m_header + kOptionalHeader + kExportDirectory));
    const std::size_t table = Offset(Number<std::uint32_t>(directory + kNameTable));
    const auto count = Number<std::uint32_t>(directory + kNameCount);
    std::set<std::string> names;
    for (std::uint32_t index = 0; index < count; ++index) {
      names.insert(m_bytes.c_str() + Offset(Number<std::uint32_t>(table + 4 * index)));
    }
    return names;
  }

 private:
  template <class Type>
  Type Number(std::size_t offset) const {
    Type number{};
    if (offset + sizeof number > m_bytes.size()) throw std::runtime_error("the PE file ends early");
    std::memcpy(&number, m_bytes.data() + offset, sizeof number);
    return number;
  }

  // Where in the file stands what is loaded at this address, relative to the image.
  std::size_t Offset(std::uint32_t address) const {
    const auto sections = Number<std::uint16_t>(m_header + kSectionCount);
    std::size_t section = m_header + kOptionalHeader + Number<std::uint16_t>(m_header + kOptionalHeaderSize);
    for (int index = 0; index < sections; ++index, section += kSectionHeaderSize) {
      const auto size = Number<std::uint32_t>(section + 16);
      const auto start = Number<std::uint32_t>(section + 12);
      if (address >= start && address - start < size) return address - start + Number<std::uint32_t>(section + 20);
    }
    throw std::runtime_error("an address outside of every section");
  }

  std::string m_bytes;
  std::size_t m_header = 0;
};

std::string Demangled(const std::string& name) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> text(abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status),
                                                         &std::free);
  return status == 0 ? text.get() : name;
}

const std::set<std::string> kExportedClasses = {"CMMCObjectSet",    "CMMCObjectParams",
                                                "CMMCObjectIcon",   "CMMCObjectIcon::CBitmapData",
                                                "CMMCObjectBitmap", "CMMCArchiveFile"};

// Whether a name belongs to one of the classes: a member, or what the compiler makes for a class.
bool IsOfAnExportedClass(std::string name) {
  for (const std::string prefix : {"vtable for ", "typeinfo for ", "typeinfo name for "}) {
    if (name.starts_with(prefix)) return kExportedClasses.contains(name.substr(prefix.size()));
  }
  name = name.substr(0, name.find('('));
  const std::size_t member = name.rfind("::");
  return member != std::string::npos && kExportedClasses.contains(name.substr(0, member));
}

TEST(Exports, AreTheClassesAndShowMessageAndNothingElse) {
  const auto names = PortableExecutable(ReadBytes(ONDREL_LIBRARY)).ExportedNames();
  std::set<std::string> demangled;
  std::set<std::string> others;
  for (const std::string& name : names) {
    demangled.insert(Demangled(name));
    if (!IsOfAnExportedClass(Demangled(name))) others.insert(name);
  }
  EXPECT_EQ(others, std::set<std::string>{"ShowMessage"});
  for (const std::string& name : kExportedClasses) {
    EXPECT_TRUE(demangled.contains("vtable for " + name)) << name;
    EXPECT_TRUE(demangled.contains("typeinfo for " + name)) << name;
  }
  for (const char* const name :
       {"CMMCObjectSet::RootNode", "CMMCObjectSet::m_nCurrentVersion", "CMMCObjectParams::n_nCurrentVersion",
        "CMMCObjectParams::VT_OBJECT_COOKIE", "CMMCObjectParams::VT_FILE_COOKIE"}) {
    EXPECT_TRUE(demangled.contains(name)) << name;
  }
}

}  // namespace
}  // namespace ondrel::test
