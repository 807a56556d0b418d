// Byte vectors in an archive.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/archive_bytes.h"
#include "support/faulty_file.h"
#include "support/raised.h"

#include <ondrel/platform/framework/archive_block.h>

namespace ondrel::test {
namespace {

using namespace std::string_literals;

template <class Byte>
class Vellum : public testing::Test {};
using ByteTypes = testing::Types<char, unsigned char>;
TYPED_TEST_SUITE(Vellum, ByteTypes, );

template <class Byte>
std::vector<Byte> VectorOf(const std::string& bytes) {
  return {bytes.begin(), bytes.end()};
}

TYPED_TEST(Vellum, AVectorIsItsCountAndItsBytes) {
  const auto vector = VectorOf<TypeParam>("\x00\x7F\x80\xFF"s);
  EXPECT_EQ(Hex(Stored([&](CVellum& archive) { archive.Write(vector); })), "04 00 00 00 00 7F 80 FF");
}

TYPED_TEST(Vellum, AnEmptyVectorIsAZeroCount) {
  const std::vector<TypeParam> empty;
  const std::string bytes = Stored([&](CVellum& archive) { archive.Write(empty); });
  EXPECT_EQ(Hex(bytes), "00 00 00 00");
  LoadingArchive archive(bytes);
  auto loaded = VectorOf<TypeParam>("before");
  EXPECT_EQ(archive->Read(loaded), 0U);
  EXPECT_EQ(loaded, empty);
}

TYPED_TEST(Vellum, ReadingReplacesTheVectorAndStopsBehindIt) {
  LoadingArchive archive(
      "\x03\x00\x00\x00"
      "abc"
      "\x2A"s);
  auto loaded = VectorOf<TypeParam>("something longer before");
  EXPECT_EQ(archive->Read(loaded), 3U);
  EXPECT_EQ(loaded, VectorOf<TypeParam>("abc"));
  BYTE next = 0;
  *archive >> next;
  EXPECT_EQ(next, 0x2A);
}

TYPED_TEST(Vellum, VectorsOfManySizesComeBack) {
  for (const std::size_t size : {1UL, 4091UL, 4092UL, 4093UL, 4096UL, 262143UL, 262144UL, 262145UL, 1000003UL}) {
    std::vector<TypeParam> vector(size);
    for (std::size_t index = 0; index < size; ++index) vector[index] = static_cast<TypeParam>(index * 31 + index / 256);
    LoadingArchive archive(Stored([&](CVellum& storing) { storing.Write(vector); }));
    std::vector<TypeParam> loaded;
    EXPECT_EQ(archive->Read(loaded), size);
    EXPECT_TRUE(loaded == vector) << "a vector of " << size << " bytes did not come back";
    EXPECT_EQ(archive.Unused(), 0U) << "behind a vector of " << size;
  }
}

TYPED_TEST(Vellum, ACountBeyondTheDataRaisesEndOfFileAndKeepsTheVector) {
  for (const std::string& bytes : {""s, "\x01\x00\x00"s, "\x01\x00\x00\x00"s,
                                   "\x05\x00\x00\x00"
                                   "abcd"s,
                                   "\xFF\xFF\xFF\xFF"
                                   "abcd"s,
                                   "\x00\x00\x00\x80"s}) {
    LoadingArchive archive(bytes);
    auto vector = VectorOf<TypeParam>("before");
    const auto fault = Raised<CArchiveException>([&] { archive->Read(vector); });
    ASSERT_TRUE(fault) << Hex(bytes);
    EXPECT_EQ(fault->m_cause, CArchiveException::endOfFile) << Hex(bytes);
    EXPECT_EQ(fault->m_strFileName, CString()) << Hex(bytes);
    EXPECT_EQ(vector, VectorOf<TypeParam>("before")) << Hex(bytes);
  }
}

TYPED_TEST(Vellum, NoReadGoesFarAheadOfTheDataOnTheWordOfACount) {
  for (const std::size_t present : {std::size_t{2}, std::size_t{1000000}}) {
    const std::string bytes = "\xFF\xFF\xFF\xFF" + std::string(present, 'x');
    FaultyFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CVellum archive(&file, CArchive::load);
    std::vector<TypeParam> vector;
    EXPECT_TRUE(Raised<CArchiveException>([&] { archive.Read(vector); }));
    EXPECT_LE(file.LargestRead(), std::max(platform::kBlockStep, present)) << "with " << present << " bytes of data";
  }
}

TYPED_TEST(Vellum, AReadThatFailsKeepsTheVector) {
  const std::string bytes = "\x40\x9C\x00\x00"s + std::string(40000, 'x');
  for (int number = 1; number <= 3; ++number) {
    FaultyFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    file.FailRead(number);
    CVellum archive(&file, CArchive::load);
    auto vector = VectorOf<TypeParam>("before");
    const auto fault = Raised<CFileException>([&] { archive.Read(vector); });
    ASSERT_TRUE(fault) << "at read " << number;
    EXPECT_EQ(fault->m_cause, CFileException::hardIO);
    EXPECT_EQ(vector, VectorOf<TypeParam>("before"));
  }
}

TYPED_TEST(Vellum, AWriteThatFailsIsReported) {
  for (int number = 1; number <= 2; ++number) {
    FaultyFile file;
    file.FailWrite(number);
    CVellum archive(&file, CArchive::store);
    const auto fault = Raised<CFileException>([&] { archive.Write(std::vector<TypeParam>(40000)); });
    ASSERT_TRUE(fault) << "at write " << number;
    EXPECT_EQ(fault->m_cause, CFileException::diskFull);
  }
}

// Vectors of the sizes in question would take the machine's memory; the count of every vector is made here.
struct VectorCounts : CVellum {
  using CVellum::VectorCount;
};

TEST(VellumCount, OfFourGibibytesOrMoreIsRefused) {
  EXPECT_EQ(VectorCounts::VectorCount(0), 0U);
  EXPECT_EQ(VectorCounts::VectorCount(0xFFFFFFFF), 0xFFFFFFFF);
  EXPECT_TRUE(Raised<CInvalidArgException>([] { VectorCounts::VectorCount(0x100000000); }));
  EXPECT_TRUE(Raised<CInvalidArgException>([] { VectorCounts::VectorCount(0xFFFFFFFFFFFFFFFF); }));
}

TEST(VellumRaw, BytesOfTheArchiveAreStillThere) {
  const std::string bytes = Stored([](CVellum& archive) { archive.Write("raw", 3); });
  EXPECT_EQ(bytes, "raw");
  LoadingArchive archive(bytes);
  char loaded[3] = {};
  EXPECT_EQ(archive->Read(loaded, 3), 3U);
  EXPECT_EQ(std::string(loaded, 3), "raw");
}

}  // namespace
}  // namespace ondrel::test
