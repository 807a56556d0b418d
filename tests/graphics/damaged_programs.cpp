// The damage, each done to a good program.
#include "graphics/damaged_programs.h"

#include <utility>

#include "support/little_endian_bytes.h"

namespace ondrel::test {
namespace {

constexpr std::size_t kHeadersOffset = 0x3C;
constexpr std::size_t kSignature = 0x40;
constexpr std::uint32_t kFlag = 0x80000000;  // of a place that is a directory's

// Where the program to damage has its directories and descriptions of data.
constexpr std::size_t kTypes = 0;
constexpr std::size_t kImages = 1;
constexpr std::size_t kGroups = 2;
constexpr std::size_t kFirstImage = 3;
constexpr std::size_t kFirstGroup = 5;
constexpr std::size_t kFirstImageData = 0;
constexpr std::size_t kGroupData = 2;

/// Damages one good program after the other.
class Damages {
 public:
  Damages(ProgramBytes program, DWORD error) : good(std::move(program)), m_error(error) {}

  void Word(const std::string& name, std::size_t offset, std::uint32_t value) {
    std::string bytes = good.bytes;
    PutWord(bytes, offset, value);
    Add(name, bytes);
  }
  void Dword(const std::string& name, std::size_t offset, std::uint32_t value) {
    std::string bytes = good.bytes;
    PutDword(bytes, offset, value);
    Add(name, bytes);
  }
  void Cut(const std::string& name, std::size_t length) { Add(name, good.bytes.substr(0, length)); }
  void Add(const std::string& name, const std::string& bytes) { m_programs.push_back({name, bytes, m_error}); }

  std::vector<DamagedProgram> All() const { return m_programs; }

  const ProgramBytes good;

 private:
  DWORD m_error;
  std::vector<DamagedProgram> m_programs;
};

std::size_t EntryOf(const ProgramBytes& program, std::size_t directory, std::size_t index = 0) {
  return program.directories[directory] + 16 + index * 8;
}
std::size_t PlaceIn(const ProgramBytes& program, std::size_t directory, std::size_t index = 0) {
  return EntryOf(program, directory, index) + 4;
}
std::size_t TextCountOf(const ProgramBytes& program, std::size_t directory) {
  return program.directories[directory] + 12;
}
std::size_t NumberCountOf(const ProgramBytes& program, std::size_t directory) {
  return program.directories[directory] + 14;
}
std::uint32_t PlaceOf(const ProgramBytes& program, std::size_t offset) {
  return static_cast<std::uint32_t>(offset - program.resources);
}

/// The directory of the groups as it is, but in the section without resources, behind theirs in memory and in front of
/// them in the file.
std::string WithGroupsInTheOtherSection(const ProgramBytes& program) {
  constexpr std::uint32_t kDistance = 0x10000;
  constexpr std::size_t kDirectoryBytes = 16 + 8;
  std::string bytes = program.bytes;
  const std::string groups = bytes.substr(program.directories[kGroups], kDirectoryBytes);
  bytes.replace(program.resources - 0x200, kDirectoryBytes, groups);
  PutDword(bytes, program.sectionTable + 12, kResourceAddress + kDistance);
  PutDword(bytes, PlaceIn(program, kTypes, 1), kFlag | kDistance);
  return bytes;
}

/// A program of the older kind, whose table of resources has types without end.
std::string OlderProgram(const ProgramBytes& program) {
  std::string bytes = program.bytes;
  bytes.resize(kSignature);
  bytes += "NE";
  bytes.resize(kSignature + 0x24);
  AppendWord(bytes, 0x40);  // where the table is, from the signature on
  bytes.resize(kSignature + 0x40);
  while (bytes.size() < program.bytes.size()) AppendWord(bytes, 0x8001);
  return bytes;
}

std::string WithBothCounts(const ProgramBytes& program, std::size_t directory, std::uint32_t count) {
  std::string bytes = program.bytes;
  PutWord(bytes, TextCountOf(program, directory), count);
  PutWord(bytes, NumberCountOf(program, directory), count);
  return bytes;
}

}  // namespace

ProgramBytes ProgramToDamage(ProgramKind kind, std::uint32_t emptySections) {
  return BuildProgram(IconResources({PatternPicture(32, 32, 4), PatternPicture(16, 16, 8)}), kind, emptySections);
}

std::vector<DamagedProgram> ProgramsWithDamagedHeaders() {
  Damages damages(ProgramToDamage(), ERROR_INVALID_DATA);
  const ProgramBytes& good = damages.good;
  const std::size_t sectionCount = good.fileHeader + 2;
  const std::size_t optionalLength = good.fileHeader + 16;
  damages.Cut("nothing behind the signature", good.fileHeader);
  damages.Cut("half a file header", good.fileHeader + 10);
  damages.Cut("no optional header", good.optionalHeader);
  damages.Cut("no data directories", good.directoryCount + 4);
  damages.Cut("no section table", good.sectionTable);
  damages.Cut("half a section table", good.resourceSection);
  damages.Cut("no resources behind the headers", good.resources);
  std::string headersLast = good.bytes + std::string("PE\0\0", 4);
  PutDword(headersLast, kHeadersOffset, static_cast<std::uint32_t>(good.bytes.size()));
  damages.Add("signature at the end of the file", headersLast);
  damages.Word("optional header of no length", optionalLength, 0);
  damages.Word("optional header without a count of directories", optionalLength, 111);
  damages.Word("optional header without directories", optionalLength, 112);
  damages.Word("optional header that ends in the directory of resources", optionalLength, 112 + 3 * 8 - 1);
  damages.Word("optional header beyond the file", optionalLength, 0xFFFF);
  damages.Word("optional header of no kind", good.optionalHeader, 0);
  damages.Word("optional header of a third kind", good.optionalHeader, 0x107);
  damages.Word("no section", sectionCount, 0);
  damages.Word("the section of the resources missing", sectionCount, 1);
  damages.Add("one section too many", ProgramToDamage(ProgramKind::pe32Plus, 95).bytes);
  damages.Add("most sections", ProgramToDamage(ProgramKind::pe32Plus, 0xFFFF - 2).bytes);
  damages.Dword("section that reaches into the next", good.sectionTable + 8, kResourceAddress - 0x1000 + 1);
  damages.Dword("resources in no section", good.resourceDirectory, 0x4000);
  damages.Dword("resources in the headers", good.resourceDirectory, 0x100);
  damages.Dword("headers that reach over the resources", good.optionalHeader + 60, kResourceAddress + 1);
  damages.Dword("resources at the highest address", good.resourceDirectory, 0xFFFFFFFF);
  damages.Dword("two sections at one address", good.sectionTable + 12, kResourceAddress);
  const std::size_t extent = good.resourceSection + 8;
  const std::size_t address = good.resourceSection + 12;
  const std::size_t length = good.resourceSection + 16;
  const std::size_t offset = good.resourceSection + 20;
  damages.Dword("section without bytes", length, 0);
  damages.Dword("section that ends in the first directory", length, 24);
  damages.Dword("section at another address", address, 0x6000);
  damages.Dword("section at the highest address", address, 0xFFFFFFFF);
  damages.Dword("section outside the file", offset, 0xFFFFFF00);
  damages.Dword("section at the end of the file", offset, static_cast<std::uint32_t>(good.bytes.size()));
  std::string largest = good.bytes;
  for (const std::size_t field : {extent, length, offset}) PutDword(largest, field, 0xFFFFFFFF);
  damages.Add("section of the highest numbers", largest);
  return damages.All();
}

std::vector<DamagedProgram> ProgramsWithDamagedTrees() {
  Damages damages(ProgramToDamage(), ERROR_INVALID_DATA);
  const ProgramBytes& good = damages.good;
  const auto end = static_cast<std::uint32_t>(good.bytes.size() - good.resources);
  const std::uint32_t root = kFlag;  // it has the place 0

  damages.Dword("groups that are the types", PlaceIn(good, kTypes, 1), root);
  damages.Dword("images that are the types", PlaceIn(good, kTypes, 0), root);
  damages.Dword("group that is the types", PlaceIn(good, kGroups), root);
  damages.Dword("group that is the groups", PlaceIn(good, kGroups), kFlag | PlaceOf(good, good.directories[kGroups]));
  damages.Dword("image that is the types", PlaceIn(good, kImages), root);
  damages.Dword("language that is the types", PlaceIn(good, kFirstGroup), root);
  damages.Dword("language that is the group", PlaceIn(good, kFirstGroup),
                kFlag | PlaceOf(good, good.directories[kFirstGroup]));
  damages.Dword("language of an image that is a directory", PlaceIn(good, kFirstImage), root);

  damages.Dword("groups that are data", PlaceIn(good, kTypes, 1), PlaceOf(good, good.descriptions[kGroupData]));
  damages.Dword("images that are data", PlaceIn(good, kTypes, 0), PlaceOf(good, good.descriptions[kGroupData]));
  damages.Dword("group that is data", PlaceIn(good, kGroups), PlaceOf(good, good.descriptions[kGroupData]));
  damages.Dword("image that is data", PlaceIn(good, kImages), PlaceOf(good, good.descriptions[kFirstImageData]));

  for (const std::size_t directory : {kTypes, kImages, kGroups, kFirstImage, kFirstGroup}) {
    const std::string where = " in directory " + std::to_string(directory);
    damages.Add("most entries, with a text and a number," + where, WithBothCounts(good, directory, 0xFFFF));
    damages.Word("most entries with a text" + where, TextCountOf(good, directory), 0xFFFF);
    damages.Word("most entries with a number" + where, NumberCountOf(good, directory), 0xFFFF);
  }
  damages.Add("directory in another section", WithGroupsInTheOtherSection(good));

  damages.Dword("groups twice", EntryOf(good, kTypes, 0), kIconGroupType);
  damages.Dword("images twice", EntryOf(good, kTypes, 1), kIconImageType);
  damages.Dword("an image twice", EntryOf(good, kImages, 0), 2);
  damages.Add("group in no language", WithBothCounts(good, kFirstGroup, 0));
  damages.Add("image in no language", WithBothCounts(good, kFirstImage, 0));

  for (const std::size_t place :
       {PlaceIn(good, kTypes, 0), PlaceIn(good, kTypes, 1), PlaceIn(good, kImages), PlaceIn(good, kGroups)}) {
    const std::string where = ", at " + std::to_string(place);
    damages.Dword("directory far outside" + where, place, 0xFFFFFFFF);
    damages.Dword("directory behind the section" + where, place, kFlag | end);
    damages.Dword("directory that ends behind the section" + where, place, kFlag | (end - 15));
  }
  for (const std::size_t place : {PlaceIn(good, kFirstImage), PlaceIn(good, kFirstGroup)}) {
    const std::string where = ", at " + std::to_string(place);
    damages.Dword("description of data far outside" + where, place, 0x7FFFFFFF);
    damages.Dword("description of data behind the section" + where, place, end);
    damages.Dword("description of data that ends behind the section" + where, place, end - 15);
  }
  // Its counts are 0x0020 and 0x8000: the halves of the place of the first type's directory.
  damages.Dword("directory over the first one", PlaceIn(good, kTypes, 1), kFlag | 8);
  return damages.All();
}

std::vector<DamagedProgram> ProgramsWithDamagedIcons() {
  Damages damages(ProgramToDamage(), ERROR_INVALID_DATA);
  const ProgramBytes& good = damages.good;
  const auto end = static_cast<std::uint32_t>(kResourceAddress + good.bytes.size() - good.resources);
  for (const std::size_t data : {good.descriptions[kGroupData], good.descriptions[kFirstImageData]}) {
    const std::string what = data == good.descriptions[kGroupData] ? "group " : "image ";
    damages.Dword(what + "at no address", data, 0);
    damages.Dword(what + "in no section", data, 0x4000);
    damages.Dword(what + "at the highest address", data, 0xFFFFFFFF);
    damages.Dword(what + "behind the section", data, end);
    damages.Dword(what + "that ends behind the section", data, end - 5);
    damages.Dword(what + "of no length", data + 4, 0);
  }
  damages.Dword("image as long as can be", good.descriptions[kFirstImageData] + 4, 0xFFFFFFFF);
  damages.Dword("image shorter than its header", good.descriptions[kFirstImageData] + 4, 39);
  damages.Dword("group shorter than its header", good.descriptions[kGroupData] + 4, 5);
  damages.Dword("group without its second image", good.descriptions[kGroupData] + 4, 6 + 2 * 14 - 1);
  const std::size_t group =
      good.bytes.find(IconGroupBytes({{1, PatternPicture(32, 32, 4)}, {2, PatternPicture(16, 16, 8)}}), good.data);
  damages.Word("group of more images than it has", group + 4, 3);
  damages.Word("group of the most images", group + 4, 0xFFFF);
  damages.Word("image that is not there", group + 6 + 12, 7);
  damages.Dword("number of the image is another", EntryOf(good, kImages), 7);
  damages.Dword("no images", EntryOf(good, kTypes), 2);

  const std::string picture = ImageBytes(PatternPicture(32, 32, 4));
  const std::size_t image = good.bytes.find(picture, good.data);
  damages.Dword("image with a header of no length", image, 0);
  damages.Dword("image of no width", image + 4, 0);
  damages.Word("image of an unknown depth", image + 14, 3);
  damages.Dword("image without its last rows of colour", good.descriptions[kFirstImageData] + 4,
                static_cast<std::uint32_t>(BytesBeforeMask(PatternPicture(32, 32, 4)) - 1));
  // Beside another image they would not be chosen: they say themselves that their size is another.
  const std::string alone = BuildProgram(IconResources({PatternPicture(32, 32, 4)})).bytes;
  for (const auto& [name, field] : {std::pair{"image wider than any", 4}, std::pair{"image higher than any", 8}}) {
    std::string bytes = alone;
    PutDword(bytes, alone.find(picture) + static_cast<std::size_t>(field), 0x7FFFFFFF);
    damages.Add(name, bytes);
  }
  return damages.All();
}

std::vector<DamagedProgram> ProgramsWithoutIcons() {
  Damages damages(ProgramToDamage(), ERROR_RESOURCE_DATA_NOT_FOUND);
  const ProgramBytes& good = damages.good;
  const auto length = static_cast<std::uint32_t>(good.bytes.size());
  damages.Cut("mark alone", 2);
  damages.Cut("no offset of headers", kHeadersOffset);
  damages.Cut("half an offset of headers", kHeadersOffset + 3);
  damages.Cut("no headers", kSignature);
  damages.Cut("half a signature", kSignature + 3);
  damages.Dword("headers at the end of the file", kHeadersOffset, length);
  damages.Dword("signature cut off", kHeadersOffset, length - 3);
  damages.Dword("headers behind the file", kHeadersOffset, 0x7FFFFFFF);
  damages.Dword("headers farthest behind", kHeadersOffset, 0xFFFFFFFF);
  damages.Dword("headers in front of the file", kHeadersOffset, 0xFFFFFFC0);
  damages.Dword("headers that are the start", kHeadersOffset, 0);
  damages.Dword("no signature", kSignature, 0);
  damages.Word("signature of another kind of programs", kSignature, 'L' | 'X' << 8);
  damages.Add("program of the older kind", OlderProgram(good));

  damages.Dword("resources at no address", good.resourceDirectory, 0);
  damages.Dword("two data directories", good.directoryCount, 2);
  damages.Add("no types", WithBothCounts(good, kTypes, 0));
  damages.Dword("groups of another type", EntryOf(good, kTypes, 1), 15);
  std::string texts = good.bytes;
  PutWord(texts, TextCountOf(good, kTypes), 2);
  PutWord(texts, NumberCountOf(good, kTypes), 0);
  damages.Add("groups in the place of a type with a text", texts);
  damages.Dword("resources that are zeros", good.resourceDirectory, 0x1000);
  damages.Add("no groups", WithBothCounts(good, kGroups, 0));

  const std::size_t group =
      good.bytes.find(IconGroupBytes({{1, PatternPicture(32, 32, 4)}, {2, PatternPicture(16, 16, 8)}}), good.data);
  damages.Word("group with a reserved word", group, 1);
  damages.Word("group of cursors", group + 2, kCursorFileType);
  damages.Word("group of no type", group + 2, 0);
  damages.Word("group of no images", group + 4, 0);
  // Image 1 is taken for the group then: it begins with the length of its header.
  damages.Dword("groups that are the images", PlaceIn(good, kTypes, 1),
                kFlag | PlaceOf(good, good.directories[kImages]));
  return damages.All();
}

std::vector<DamagedProgram> DamagedPrograms() {
  std::vector<DamagedProgram> all;
  for (const auto& programs :
       {ProgramsWithDamagedHeaders(), ProgramsWithDamagedTrees(), ProgramsWithDamagedIcons(), ProgramsWithoutIcons()}) {
    all.insert(all.end(), programs.begin(), programs.end());
  }
  return all;
}

}  // namespace ondrel::test
