// Reading of a program's headers.
#include "icons/executable.h"

#include <algorithm>
#include <array>

#include "icons/icon_limits.h"

namespace ondrel::platform {
namespace {

constexpr BYTE kMark[kExecutableMarkBytes] = {'M', 'Z'};
constexpr std::size_t kHeadersOffset = 0x3C;

constexpr DWORD kSignature = 'P' | 'E' << 8;

// After the signature: the file header.
constexpr std::size_t kSectionCountOffset = 2;
constexpr std::size_t kOptionalLengthOffset = 16;
constexpr std::size_t kFileHeaderBytes = 20;

// The optional header starts with its kind. Behind its own fields stand the count of data directories and they.
constexpr std::size_t kMagicBytes = 2;
constexpr WORD kPe32 = 0x10B;
constexpr WORD kPe32Plus = 0x20B;
constexpr std::size_t kHeadersLengthOffset = 60;
constexpr std::size_t kPe32DirectoryCountOffset = 92;
constexpr std::size_t kPe32PlusDirectoryCountOffset = 108;
constexpr std::size_t kDirectoryBytes = 8;
constexpr DWORD kResourceDirectory = 2;
// No more of it counts than ends with the directory of the resources.
constexpr std::size_t kMostOptionalBytes =
    kPe32PlusDirectoryCountOffset + sizeof(DWORD) + (kResourceDirectory + 1) * kDirectoryBytes;

constexpr std::size_t kSectionBytes = 40;
constexpr std::size_t kSectionExtentOffset = 8;
constexpr std::size_t kSectionAddressOffset = 12;
constexpr std::size_t kSectionLengthOffset = 16;
constexpr std::size_t kSectionFileOffset = 20;

}  // namespace

bool IsExecutable(Bytes start) {
  return start.size() >= kExecutableMarkBytes && std::equal(std::begin(kMark), std::end(kMark), start.begin());
}

IconStatus Executable::ReadHeaders() {
  std::array<BYTE, sizeof(DWORD)> number = {};
  const auto fitsIn = [this](ULONGLONG offset) { return offset + sizeof(DWORD) <= m_file.Length(); };
  if (!fitsIn(kHeadersOffset)) return kNoIconThere;
  if (const IconStatus status = m_file.Read(kHeadersOffset, number); !status.IsSuccess()) return status;
  const ULONGLONG headers = ReadDword(number, 0);
  if (!fitsIn(headers)) return kNoIconThere;
  if (const IconStatus status = m_file.Read(headers, number); !status.IsSuccess()) return status;
  if (ReadDword(number, 0) != kSignature) return kNoIconThere;

  std::array<BYTE, kFileHeaderBytes> header = {};
  const ULONGLONG headerOffset = headers + sizeof(kSignature);
  if (const IconStatus status = m_file.Read(headerOffset, header); !status.IsSuccess()) return status;
  const ULONGLONG optionalOffset = headerOffset + kFileHeaderBytes;
  const WORD optionalLength = ReadWord(header, kOptionalLengthOffset);
  if (const IconStatus status = ReadOptionalHeader(optionalOffset, optionalLength); !status.IsSuccess()) return status;
  return ReadSections(optionalOffset + optionalLength, ReadWord(header, kSectionCountOffset));
}

IconStatus Executable::ReadOptionalHeader(ULONGLONG offset, WORD length) {
  std::array<BYTE, kMostOptionalBytes> bytes = {};
  const std::span header(bytes.data(), std::min<std::size_t>(length, bytes.size()));
  if (const IconStatus status = m_file.Read(offset, header); !status.IsSuccess()) return status;
  if (header.size() < kMagicBytes) return kIconDamaged;
  const WORD magic = ReadWord(header, 0);
  if (magic != kPe32 && magic != kPe32Plus) return kIconDamaged;
  const std::size_t countOffset = magic == kPe32 ? kPe32DirectoryCountOffset : kPe32PlusDirectoryCountOffset;
  if (!Holds(header, countOffset, sizeof(DWORD))) return kIconDamaged;
  if (ReadDword(header, countOffset) <= kResourceDirectory) return kIconRead;
  const std::size_t resources = countOffset + sizeof(DWORD) + kResourceDirectory * kDirectoryBytes;
  if (!Holds(header, resources, kDirectoryBytes)) return kIconDamaged;
  m_resources = ReadDword(header, resources);  // the length behind it is not needed: each part of them has its own
  // An address within the headers would be a place in the file, whatever the sections say.
  const bool isInHeaders = m_resources != 0 && m_resources < ReadDword(header, kHeadersLengthOffset);
  return isInHeaders ? kIconDamaged : kIconRead;
}

IconStatus Executable::ReadSections(ULONGLONG offset, WORD count) {
  if (count > kMostSections) return kIconDamaged;
  std::vector<BYTE> table(count * kSectionBytes);
  if (const IconStatus status = m_file.Read(offset, table); !status.IsSuccess()) return status;
  for (std::size_t start = 0; start < table.size(); start += kSectionBytes) {
    const Bytes section = Bytes(table).subspan(start, kSectionBytes);
    const DWORD length = ReadDword(section, kSectionLengthOffset);
    const DWORD extent = std::max(ReadDword(section, kSectionExtentOffset), length);
    if (extent == 0) continue;
    m_sections.push_back({
        .address = ReadDword(section, kSectionAddressOffset),
        .extent = extent,
        .offset = ReadDword(section, kSectionFileOffset),
        .length = length,
    });
  }
  std::sort(m_sections.begin(), m_sections.end(),
            [](const Section& left, const Section& right) { return left.address < right.address; });
  // What an address in two sections means, each reader would tell in its own way. Programs that are whole have none.
  const auto overlap = std::adjacent_find(
      m_sections.begin(), m_sections.end(),
      [](const Section& left, const Section& right) { return right.address - left.address < left.extent; });
  return overlap == m_sections.end() ? kIconRead : kIconDamaged;
}

FileRun Executable::Find(DWORD address) const {
  const auto section = std::find_if(m_sections.begin(), m_sections.end(), [address](const Section& candidate) {
    return address >= candidate.address && address - candidate.address < candidate.extent;
  });
  if (section == m_sections.end()) return {};
  const ULONGLONG start = ULONGLONG{section->offset} + (address - section->address);
  const ULONGLONG end = std::min(ULONGLONG{section->offset} + section->length, m_file.Length());
  return start < end ? FileRun{start, end - start} : FileRun{};
}

}  // namespace ondrel::platform
