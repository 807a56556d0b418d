// Building of programs, byte by byte.
#include "support/executable_bytes.h"

#include <algorithm>

#include "support/little_endian_bytes.h"

namespace ondrel::test {
namespace {

constexpr std::uint32_t kFlag = 0x80000000;  // of a text in an entry's key, and of a directory in its place
constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kDirectoryCount = 16;
constexpr std::size_t kSectionBytes = 40;

void PadTo(std::string& bytes, std::size_t multiple) {
  while (bytes.size() % multiple != 0) bytes += '\0';
}

/// The tree is written in layers: all directories, the descriptions of data, the texts, the data. Places that are not
/// known yet are put in when they are.
class ResourceWriter {
 public:
  explicit ResourceWriter(ProgramBytes& program) : m_program(program), m_bytes(program.bytes) {}

  void Write(const std::vector<ResourceType>& types) {
    WriteDirectory(types);
    for (const ResourceType& type : types) {
      LeadHere(kFlag);
      WriteDirectory(type.resources);
    }
    for (const ResourceType& type : types) {
      for (const Resource& resource : type.resources) {
        LeadHere(kFlag);
        WriteDirectory(resource.languages);
      }
    }
    ForEachData(types, [this](const std::string& data) {
      LeadHere(0);
      m_program.descriptions.push_back(m_bytes.size());
      AppendDword(m_bytes, 0);  // the address
      AppendDword(m_bytes, static_cast<std::uint32_t>(data.size()));
      AppendDword(m_bytes, 0);  // code page
      AppendDword(m_bytes, 0);  // reserved
    });
    for (const auto& [key, text] : m_texts) {
      PutDword(m_bytes, key, kFlag | Place());
      AppendWord(m_bytes, static_cast<std::uint32_t>(text.size()));
      for (const char16_t unit : text) AppendWord(m_bytes, unit);
    }
    PadTo(m_bytes, 4);
    m_program.data = m_bytes.size();
    std::size_t index = 0;
    ForEachData(types, [this, &index](const std::string& data) {
      PutDword(m_bytes, m_program.descriptions[index++], kResourceAddress + Place());
      m_bytes += data;
      PadTo(m_bytes, 4);
    });
    m_program.dataEnd = m_bytes.size();
  }

 private:
  std::uint32_t Place() const { return static_cast<std::uint32_t>(m_bytes.size() - m_program.resources); }

  template <class Entries>
  void WriteDirectory(const Entries& entries) {
    m_program.directories.push_back(m_bytes.size());
    const auto texts =
        std::count_if(entries.begin(), entries.end(), [](const auto& entry) { return !entry.key.text.empty(); });
    AppendDword(m_bytes, 0);  // characteristics
    AppendDword(m_bytes, 0);  // time
    AppendDword(m_bytes, 0);  // version
    AppendWord(m_bytes, static_cast<std::uint32_t>(texts));
    AppendWord(m_bytes, static_cast<std::uint32_t>(entries.size()) - static_cast<std::uint32_t>(texts));
    for (const auto& entry : entries) {
      if (!entry.key.text.empty()) m_texts.emplace_back(m_bytes.size(), entry.key.text);
      AppendDword(m_bytes, entry.key.number);
      m_open.push_back(m_bytes.size());
      AppendDword(m_bytes, 0);
    }
  }

  // What follows is what the oldest entry leads to that does not yet lead anywhere.
  void LeadHere(std::uint32_t flag) { PutDword(m_bytes, m_open[m_led++], flag | Place()); }

  template <class Visit>
  static void ForEachData(const std::vector<ResourceType>& types, Visit visit) {
    for (const ResourceType& type : types) {
      for (const Resource& resource : type.resources) {
        for (const ResourceLanguage& language : resource.languages) visit(language.data);
      }
    }
  }

  ProgramBytes& m_program;
  std::string& m_bytes;
  std::vector<std::size_t> m_open;
  std::size_t m_led = 0;
  std::vector<std::pair<std::size_t, std::u16string>> m_texts;
};

void AppendFileHeader(std::string& bytes, bool isPlus, std::uint32_t sections) {
  AppendWord(bytes, isPlus ? 0x8664 : 0x014C);  // processor
  AppendWord(bytes, sections);
  AppendDword(bytes, 0);  // time
  AppendDword(bytes, 0);  // symbols, and their count
  AppendDword(bytes, 0);
  AppendWord(bytes, isPlus ? 0xF0 : 0xE0);      // bytes of the optional header
  AppendWord(bytes, isPlus ? 0x2022 : 0x2102);  // a library
}

void AppendOptionalHeader(std::string& bytes, bool isPlus) {
  // Addresses and sizes in memory that are as wide as the program's addresses.
  const auto appendWide = [&](std::uint32_t value) {
    AppendDword(bytes, value);
    if (isPlus) AppendDword(bytes, 0);
  };
  AppendWord(bytes, isPlus ? 0x20B : 0x10B);
  AppendWord(bytes, 0);                                           // linker
  for (int field = 0; field < 5; ++field) AppendDword(bytes, 0);  // sizes of code and data, entry point, code's address
  if (!isPlus) AppendDword(bytes, 0);                             // the data's address
  appendWide(0x10000000);                                         // where it would be loaded
  AppendDword(bytes, kSectionAlignment);
  AppendDword(bytes, kFileAlignment);
  for (const std::uint32_t version : {6U, 0U, 6U, 0U}) AppendDword(bytes, version);  // system, image, subsystem, 0
  AppendDword(bytes, 0x100000);                                                      // bytes in memory
  AppendDword(bytes, kFileAlignment);                                                // bytes of the headers
  AppendDword(bytes, 0);                                                             // checksum
  AppendWord(bytes, 2);                                                              // windowed
  AppendWord(bytes, 0);
  for (int field = 0; field < 4; ++field) appendWide(0x1000);  // stack and heap
  AppendDword(bytes, 0);                                       // loader flags
}

void AppendSection(std::string& bytes, const char (&name)[9], std::uint32_t address, std::uint32_t extent,
                   std::uint32_t offset, std::uint32_t length) {
  bytes.append(name, 8);
  AppendDword(bytes, extent);
  AppendDword(bytes, address);
  AppendDword(bytes, length);
  AppendDword(bytes, offset);
  for (int field = 0; field < 3; ++field) AppendDword(bytes, 0);  // relocations and line numbers
  AppendDword(bytes, 0x40000040);                                 // initialised data, readable
}

}  // namespace

std::string IconGroupBytes(const std::vector<GroupEntry>& entries, std::uint16_t type) {
  std::string bytes;
  AppendWord(bytes, 0);  // reserved
  AppendWord(bytes, type);
  AppendWord(bytes, static_cast<std::uint32_t>(entries.size()));
  for (const GroupEntry& entry : entries) {
    bytes += static_cast<char>(entry.image.statedWidth);
    bytes += static_cast<char>(entry.image.statedHeight);
    bytes += '\0';         // colours: none stated
    bytes += '\0';         // reserved
    AppendWord(bytes, 1);  // planes
    AppendWord(bytes, entry.image.statedBits);
    AppendDword(bytes, static_cast<std::uint32_t>(entry.image.bytes.size()));
    AppendWord(bytes, entry.number);
  }
  return bytes;
}

std::vector<ResourceType> IconResources(const std::vector<StoredImage>& images) {
  std::vector<Resource> imageResources;
  std::vector<GroupEntry> entries;
  for (const StoredImage& image : images) {
    entries.push_back({static_cast<std::uint16_t>(entries.size() + 1), image});
    imageResources.emplace_back(entries.back().number, image.bytes);
  }
  return {{kIconImageType, imageResources}, {kIconGroupType, {{1, IconGroupBytes(entries)}}}};
}

ProgramBytes BuildProgram(const std::vector<ResourceType>& types, ProgramKind kind, std::uint32_t emptySections) {
  const bool isPlus = kind == ProgramKind::pe32Plus;
  ProgramBytes program;
  std::string& bytes = program.bytes;
  bytes = "MZ";
  bytes.resize(0x3C);
  AppendDword(bytes, 0x40);  // the real headers
  bytes.append("PE\0\0", 4);
  program.fileHeader = bytes.size();
  AppendFileHeader(bytes, isPlus, 2 + emptySections);
  program.optionalHeader = bytes.size();
  AppendOptionalHeader(bytes, isPlus);
  program.directoryCount = bytes.size();
  AppendDword(bytes, kDirectoryCount);
  program.resourceDirectory = bytes.size() + 2 * 8;
  bytes.append(kDirectoryCount * 8, '\0');
  program.sectionTable = bytes.size();
  const std::size_t sectionCount = 2 + std::size_t{emptySections};
  bytes.append(sectionCount * kSectionBytes, '\0');
  PadTo(bytes, kFileAlignment);
  const auto headerBytes = static_cast<std::uint32_t>(bytes.size());
  bytes.append(kFileAlignment, '\0');  // the section in front of the resources
  program.resources = bytes.size();

  std::string table;
  AppendSection(table, ".text\0\0\0", 0x1000, 0x1000, headerBytes, kFileAlignment);
  AppendSection(table, ".rsrc\0\0\0", kResourceAddress, 0, headerBytes + kFileAlignment, 0);
  for (std::uint32_t index = 0; index < emptySections; ++index) {
    AppendSection(table, ".bss\0\0\0\0", 0x100000 + index * kSectionAlignment, kSectionAlignment, 0, 0);
  }
  bytes.replace(program.sectionTable, table.size(), table);
  program.resourceSection = program.sectionTable + kSectionBytes;

  if (!types.empty()) ResourceWriter(program).Write(types);
  const auto extent = static_cast<std::uint32_t>(bytes.size() - program.resources);
  PadTo(bytes, kFileAlignment);
  PutDword(bytes, program.resourceSection + 8, extent);
  PutDword(bytes, program.resourceSection + 16, static_cast<std::uint32_t>(bytes.size() - program.resources));
  if (!types.empty()) {
    PutDword(bytes, program.resourceDirectory, kResourceAddress);
    PutDword(bytes, program.resourceDirectory + 4, extent);
  }
  return program;
}

}  // namespace ondrel::test
