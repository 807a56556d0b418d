// Reading of icon groups and of the images that they list.
#include "icons/icon_resources.h"

#include <limits>
#include <optional>

#include "icons/icon_file.h"
#include "icons/icon_limits.h"
#include "icons/resource_tree.h"

namespace ondrel::platform {
namespace {

constexpr DWORD kImageType = 3;
constexpr DWORD kGroupType = 14;

constexpr std::size_t kGroupCountOffset = 4;
constexpr std::size_t kGroupEntryBytes = 14;
constexpr std::size_t kGroupWidthOffset = 0;
constexpr std::size_t kGroupHeightOffset = 1;
constexpr std::size_t kGroupBitsPerPixelOffset = 6;
constexpr std::size_t kGroupNumberOffset = 12;

/// Where the images are in the tree, by their numbers.
class ImageTable {
 public:
  /// False when there is one with this number already.
  bool Add(const ResourceEntry& entry) {
    std::optional<DWORD>& place = m_places[entry.number];
    if (place) return false;
    place = entry.place;
    return true;
  }
  const std::optional<DWORD>& operator[](WORD number) const { return m_places[number]; }

 private:
  std::vector<std::optional<DWORD>> m_places =
      std::vector<std::optional<DWORD>>(std::numeric_limits<WORD>::max() + std::size_t{1});
};

class IconReading {
 public:
  IconReading(const SourceFile& file, const Executable& program, IconSource& source)
      : m_file(file), m_program(program), m_source(source), m_tree(file, program.Find(program.Resources())) {}

  IconStatus Read() {
    IconStatus status = FindTypes();
    if (status.IsSuccess()) status = ReadFirstGroup();
    if (status.IsSuccess()) status = FindImages();
    if (status.IsSuccess()) status = ReadImages();
    return status;
  }

 private:
  IconStatus FindTypes() {
    ResourceDirectory types = {};
    if (const IconStatus status = m_tree.OpenTypes(types); !status.IsSuccess()) return status;
    const IconStatus status = m_tree.VisitNumbers(types, [this](const ResourceEntry& type) {
      if (type.number != kGroupType && type.number != kImageType) return kIconRead;
      std::optional<DWORD>& place = type.number == kGroupType ? m_groups : m_images;
      if (place) return kIconDamaged;  // which of the two counts, each reader would tell in its own way
      place = type.place;
      return kIconRead;
    });
    if (status.IsSuccess()) m_source.hasIconGroups = m_groups.has_value();
    return status;
  }

  IconStatus ReadFirstGroup() {
    if (!m_groups) return kNoIconThere;
    ResourceDirectory groups = {};
    if (const IconStatus status = m_tree.Open(*m_groups, groups); !status.IsSuccess()) return status;
    if (groups.Count() == 0) return kNoIconThere;
    DWORD first = 0;
    if (const IconStatus status = m_tree.ReadFirst(groups, first); !status.IsSuccess()) return status;
    ResourceData data = {};
    if (const IconStatus status = FindData(first, data); !status.IsSuccess()) return status;
    return ReadGroup(data);
  }

  IconStatus ReadGroup(const ResourceData& data) {
    const FileRun run = m_program.Find(data.address);
    if (data.length > run.length || data.length < kIconFileHeaderBytes) return kIconDamaged;
    m_group.resize(kIconFileHeaderBytes);
    if (const IconStatus status = m_file.Read(run.offset, m_group); !status.IsSuccess()) return status;
    if (!IsIconFile(m_group)) return kNoIconThere;
    const WORD count = ReadWord(m_group, kGroupCountOffset);
    const std::size_t length = kIconFileHeaderBytes + count * kGroupEntryBytes;
    if (count > kMostIconEntries || data.length < length) return kIconDamaged;
    m_group.resize(length);
    return m_file.Read(run.offset, m_group);
  }

  // Finds all of them before any is read, so that no memory is taken for more than an icon may have.
  IconStatus FindImages() {
    ImageTable table;
    if (m_images) {
      ResourceDirectory images = {};
      if (const IconStatus status = m_tree.Open(*m_images, images); !status.IsSuccess()) return status;
      const IconStatus status = m_tree.VisitNumbers(
          images, [&table](const ResourceEntry& image) { return table.Add(image) ? kIconRead : kIconDamaged; });
      if (!status.IsSuccess()) return status;
    }
    ULONGLONG sum = 0;
    for (std::size_t start = kIconFileHeaderBytes; start < m_group.size(); start += kGroupEntryBytes) {
      FileRun run = {};
      if (const auto& image = table[ReadWord(m_group, start + kGroupNumberOffset)]; image) {
        ResourceData data = {};
        if (const IconStatus status = FindData(*image, data); !status.IsSuccess()) return status;
        run = m_program.Find(data.address);
        run.length = run.length < data.length ? 0 : data.length;
      }
      m_runs.push_back(run);
      sum += run.length;
    }
    return sum <= kMostIconFileBytes ? kIconRead : kIconDamaged;
  }

  IconStatus ReadImages() {
    ULONGLONG sum = 0;
    for (const FileRun& run : m_runs) sum += run.length;
    m_source.bytes.assign(static_cast<std::size_t>(sum), 0);
    m_source.entries.clear();
    m_source.entries.reserve(m_runs.size());
    std::span<BYTE> left = m_source.bytes;
    std::size_t start = kIconFileHeaderBytes;
    for (const FileRun& run : m_runs) {
      const std::span<BYTE> image = left.first(static_cast<std::size_t>(run.length));
      left = left.subspan(image.size());
      if (const IconStatus status = m_file.Read(run.offset, image); !status.IsSuccess()) return status;
      const Bytes stated = Bytes(m_group).subspan(start, kGroupEntryBytes);
      start += kGroupEntryBytes;
      m_source.entries.push_back(DescribeIconEntry(StatedIconSize(stated[kGroupWidthOffset]),
                                                   StatedIconSize(stated[kGroupHeightOffset]),
                                                   ReadWord(stated, kGroupBitsPerPixelOffset), image));
    }
    return kIconRead;
  }

  // The data of the first language of a resource.
  IconStatus FindData(DWORD place, ResourceData& data) const {
    ResourceDirectory languages = {};
    if (const IconStatus status = m_tree.Open(place, languages); !status.IsSuccess()) return status;
    if (languages.Count() == 0) return kIconDamaged;
    DWORD first = 0;
    if (const IconStatus status = m_tree.ReadFirst(languages, first); !status.IsSuccess()) return status;
    return m_tree.ReadData(first, data);
  }

  const SourceFile& m_file;
  const Executable& m_program;
  IconSource& m_source;
  const ResourceTree m_tree;
  std::optional<DWORD> m_groups;  ///< Places of the directories of the two types.
  std::optional<DWORD> m_images;
  std::vector<BYTE> m_group;
  std::vector<FileRun> m_runs;  ///< The images, in the order of the group; of no length where there is none.
};

}  // namespace

IconStatus ReadIconResources(const SourceFile& file, const Executable& program, IconSource& source) {
  if (program.Resources() == 0) return kNoIconThere;
  return IconReading(file, program, source).Read();
}

}  // namespace ondrel::platform
