// Steps through a program's resources.
#include "icons/resource_tree.h"

namespace ondrel::platform {
namespace {

constexpr DWORD kDirectoryFlag = 0x80000000;

constexpr std::size_t kTextsOffset = 12;
constexpr std::size_t kNumbersOffset = 14;

constexpr std::size_t kDataBytes = 16;
constexpr std::size_t kDataAddressOffset = 0;
constexpr std::size_t kDataLengthOffset = 4;

}  // namespace

IconStatus ResourceTree::Open(DWORD place, ResourceDirectory& directory) const {
  return (place & kDirectoryFlag) != 0 ? OpenAt(place & ~kDirectoryFlag, directory) : kIconDamaged;
}

IconStatus ResourceTree::OpenAt(DWORD place, ResourceDirectory& directory) const {
  std::array<BYTE, kHeaderBytes> header = {};
  if (const IconStatus status = Read(place, header); !status.IsSuccess()) return status;
  directory = {.place = place, .texts = ReadWord(header, kTextsOffset), .numbers = ReadWord(header, kNumbersOffset)};
  const std::size_t length = kHeaderBytes + directory.Count() * kEntryBytes;
  return length <= m_run.length - place ? kIconRead : kIconDamaged;
}

IconStatus ResourceTree::ReadFirst(const ResourceDirectory& directory, DWORD& place) const {
  std::array<BYTE, kEntryBytes> entry = {};
  const IconStatus status = Read(ULONGLONG{directory.place} + kHeaderBytes, entry);
  if (status.IsSuccess()) place = ReadDword(entry, kPlaceOffset);
  return status;
}

IconStatus ResourceTree::ReadData(DWORD place, ResourceData& data) const {
  if ((place & kDirectoryFlag) != 0) return kIconDamaged;
  std::array<BYTE, kDataBytes> bytes = {};
  const IconStatus status = Read(place, bytes);
  if (status.IsSuccess()) data = {ReadDword(bytes, kDataAddressOffset), ReadDword(bytes, kDataLengthOffset)};
  return status;
}

IconStatus ResourceTree::Read(ULONGLONG place, std::span<BYTE> bytes) const {
  if (place > m_run.length || bytes.size() > m_run.length - place) return kIconDamaged;
  return m_file.Read(m_run.offset + place, bytes);
}

}  // namespace ondrel::platform
