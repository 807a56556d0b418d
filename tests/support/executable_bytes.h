// Programs for tests, 32-bit and 64-bit, built from the published layout of executables and from nothing of the reader
// under test. They have headers, a section of nothing and a section of resources, whose addresses differ from their
// places in the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/icon_bytes.h"

namespace ondrel::test {

/// What a type, a resource or a language is found under: a number or a text.
struct ResourceKey {
  ResourceKey(std::uint32_t itsNumber) : number(itsNumber) {}
  ResourceKey(const char16_t* itsText) : text(itsText) {}

  std::uint32_t number = 0;
  std::u16string text = {};
};

struct ResourceLanguage {
  ResourceKey key;
  std::string data;
};

struct Resource {
  Resource(ResourceKey itsKey, std::vector<ResourceLanguage> itsLanguages)
      : key(std::move(itsKey)), languages(std::move(itsLanguages)) {}
  /// In one language.
  Resource(ResourceKey itsKey, std::string data) : Resource(std::move(itsKey), {{1033, std::move(data)}}) {}

  ResourceKey key;
  std::vector<ResourceLanguage> languages;
};

/// Everything in it is stored in the order given here. Real programs have the texts first, in their order, and then the
/// numbers in theirs.
struct ResourceType {
  ResourceKey key;
  std::vector<Resource> resources;
};

inline constexpr std::uint32_t kIconImageType = 3;
inline constexpr std::uint32_t kIconGroupType = 14;

/// What a group says of an image, and the number of the resource that the image is.
struct GroupEntry {
  std::uint16_t number;
  StoredImage image;
};

/// The data of a group.
std::string IconGroupBytes(const std::vector<GroupEntry>& entries, std::uint16_t type = kIconFileType);

/// The resources of a program with these images, numbered from 1, and one group of them.
std::vector<ResourceType> IconResources(const std::vector<StoredImage>& images);

enum class ProgramKind { pe32, pe32Plus };

/// A program, and where in its file stands what a test damages.
struct ProgramBytes {
  std::string bytes = {};
  std::size_t fileHeader = 0;
  std::size_t optionalHeader = 0;
  std::size_t directoryCount = 0;  ///< The count of data directories; they follow.
  std::size_t resourceDirectory = 0;
  std::size_t sectionTable = 0;
  std::size_t resourceSection = 0;             ///< Its entry in the table.
  std::size_t resources = 0;                   ///< The first byte of the section.
  std::vector<std::size_t> directories = {};   ///< Of all types, then of each type, then of each resource.
  std::vector<std::size_t> descriptions = {};  ///< Of the data, in the order of the tree.
  std::size_t data = 0;                        ///< Where the tree ends and the data start.
  std::size_t dataEnd = 0;                     ///< Zeros follow.
};

/// A program without resources has no data directory for them. It has two sections, the second one that of the
/// resources, and the empty ones.
ProgramBytes BuildProgram(const std::vector<ResourceType>& types, ProgramKind kind = ProgramKind::pe32Plus,
                          std::uint32_t emptySections = 0);

/// The address of the first byte of the resources.
inline constexpr std::uint32_t kResourceAddress = 0x5000;

}  // namespace ondrel::test
