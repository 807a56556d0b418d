// Values that straddle the end of the buffer, for every small buffer, over whole and short reads.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <variant>
#include <vector>

#include "support/archive_bytes.h"
#include "support/faulty_file.h"
#include "support/print_text.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

constexpr int kLargestSmallBuffer = 64;

void AppendLittleEndian(std::string& bytes, ULONGLONG value, int width) {
  for (int index = 0; index < width; ++index) bytes += static_cast<char>(value >> (8 * index));
}

// A run of values of mixed types, and the same run as bytes put together by the format's rules.
struct MixedRun {
  using Value = std::variant<BYTE, WORD, DWORD, LONGLONG, CString, std::vector<char>, std::vector<unsigned char>>;

  explicit MixedRun(unsigned seed) {
    std::mt19937 random(seed);
    for (int count = 0; count < 200; ++count) Add(random);
  }

  void Add(std::mt19937& random) {
    const auto number = static_cast<ULONGLONG>(random()) << 32 | random();
    const std::size_t length = random() % 70;
    switch (random() % 7) {
      case 0:
        values.emplace_back(static_cast<BYTE>(number));
        AppendLittleEndian(bytes, number, 1);
        break;
      case 1:
        values.emplace_back(static_cast<WORD>(number));
        AppendLittleEndian(bytes, number, 2);
        break;
      case 2:
        values.emplace_back(static_cast<DWORD>(number));
        AppendLittleEndian(bytes, number, 4);
        break;
      case 3:
        values.emplace_back(static_cast<LONGLONG>(number));
        AppendLittleEndian(bytes, number, 8);
        break;
      case 4: {
        CString text;
        bytes += "\xFF\xFE\xFF";
        AppendLittleEndian(bytes, length, 1);
        for (std::size_t index = 0; index < length; ++index) {
          const auto unit = static_cast<WORD>(random());
          text += static_cast<WCHAR>(unit);
          AppendLittleEndian(bytes, unit, 2);
        }
        values.emplace_back(text);
        break;
      }
      case 5:
        values.emplace_back(AddVector<char>(random, length));
        break;
      default:
        values.emplace_back(AddVector<unsigned char>(random, length));
        break;
    }
  }

  template <class Byte>
  std::vector<Byte> AddVector(std::mt19937& random, std::size_t length) {
    std::vector<Byte> vector(length);
    for (Byte& byte : vector) byte = static_cast<Byte>(random());
    AppendLittleEndian(bytes, length, 4);
    bytes.append(vector.begin(), vector.end());
    return vector;
  }

  void Store(CVellum& archive) const {
    for (const Value& value : values) std::visit([&](const auto& stored) { StoreOne(archive, stored); }, value);
  }
  template <class Type>
  static void StoreOne(CVellum& archive, const Type& value) {
    if constexpr (requires { archive << value; }) {
      archive << value;
    } else {
      archive.Write(value);
    }
  }

  void ExpectLoaded(CVellum& archive) const {
    for (std::size_t index = 0; index < values.size(); ++index) {
      std::visit([&](const auto& stored) { ExpectOne(archive, stored, index); }, values[index]);
    }
    BYTE beyond = 0;
    const auto fault = Raised<CArchiveException>([&] { archive >> beyond; });
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->m_cause, CArchiveException::endOfFile);
  }
  template <class Type>
  static void ExpectOne(CVellum& archive, const Type& stored, std::size_t index) {
    Type loaded{};
    if constexpr (requires { archive >> loaded; }) {
      archive >> loaded;
    } else {
      EXPECT_EQ(archive.Read(loaded), stored.size());
    }
    EXPECT_EQ(loaded, stored) << "at value " << index;
  }

  std::vector<Value> values;
  std::string bytes;
};

TEST(ArchiveBuffer, EverySmallBufferStoresTheSameBytes) {
  for (int bufferSize = 1; bufferSize <= kLargestSmallBuffer; ++bufferSize) {
    const MixedRun run(static_cast<unsigned>(bufferSize));
    EXPECT_EQ(Hex(Stored([&run](CVellum& archive) { run.Store(archive); }, bufferSize)), Hex(run.bytes))
        << "with a buffer of " << bufferSize;
  }
}

TEST(ArchiveBuffer, EverySmallBufferLoadsTheSameValues) {
  for (int bufferSize = 1; bufferSize <= kLargestSmallBuffer; ++bufferSize) {
    SCOPED_TRACE(bufferSize);
    const MixedRun run(static_cast<unsigned>(bufferSize));
    LoadingArchive archive(run.bytes, bufferSize);
    run.ExpectLoaded(*archive);
  }
}

TEST(ArchiveBuffer, ASourceThatGivesFewBytesAtATimeLoadsTheSameValues) {
  for (const UINT readLimit : {1U, 3U, 7U}) {
    for (int bufferSize = 1; bufferSize <= kLargestSmallBuffer; ++bufferSize) {
      SCOPED_TRACE(testing::Message() << "buffer " << bufferSize << ", reads of " << readLimit);
      const MixedRun run(static_cast<unsigned>(bufferSize));
      FaultyFile file(run.bytes.data(), static_cast<UINT>(run.bytes.size()));
      file.ShortenReads(readLimit);
      CVellum archive(&file, CArchive::load, bufferSize);
      run.ExpectLoaded(archive);
    }
  }
}

TEST(ArchiveBuffer, EveryPositionOfAValueInEverySmallBufferIsCrossed) {
  for (int bufferSize = 1; bufferSize <= kLargestSmallBuffer; ++bufferSize) {
    for (int before = 0; before <= bufferSize; ++before) {
      SCOPED_TRACE(testing::Message() << "buffer " << bufferSize << ", " << before << " bytes before the value");
      const std::string expected =
          std::string(static_cast<std::size_t>(before), 'p') + "\x08\x07\x06\x05\x04\x03\x02\x01";
      const std::string bytes = Stored(
          [before](CVellum& archive) {
            for (int index = 0; index < before; ++index) archive << BYTE{'p'};
            archive << LONGLONG{0x0102030405060708};
          },
          bufferSize);
      ASSERT_EQ(Hex(bytes), Hex(expected));
      LoadingArchive archive(expected, bufferSize);
      BYTE skipped = 0;
      for (int index = 0; index < before; ++index) *archive >> skipped;
      LONGLONG value = 0;
      *archive >> value;
      ASSERT_EQ(value, 0x0102030405060708);
    }
  }
}

TEST(ArchiveBuffer, ABufferOfTheCallerIsUsed) {
  std::array<BYTE, 16> buffer{};
  CMemFile file;
  CVellum archive(&file, CArchive::store, static_cast<int>(buffer.size()), buffer.data());
  archive << DWORD{0x44434241};
  EXPECT_EQ(buffer[0], 0x41);
  EXPECT_EQ(buffer[3], 0x44);
  archive.Close();
  EXPECT_EQ(BytesOf(file), "ABCD");
}

TEST(ArchiveBuffer, ABufferBelowTheWidestValueIsLeftAlone) {
  std::array<BYTE, 7> buffer{};
  CMemFile file;
  CVellum archive(&file, CArchive::store, static_cast<int>(buffer.size()), buffer.data());
  archive << LONGLONG{-1};
  archive.Close();
  EXPECT_EQ(buffer, (std::array<BYTE, 7>{}));
  EXPECT_EQ(Hex(BytesOf(file)), "FF FF FF FF FF FF FF FF");
}

TEST(ArchiveBuffer, LargeRawWritesGoToTheFileInOneCallBehindWhatIsBuffered) {
  FaultyFile file;
  CVellum archive(&file, CArchive::store, 16);
  archive << BYTE{'a'};
  const std::string large(1000, 'b');
  archive.Write(large.data(), 1000);
  EXPECT_EQ(file.Writes(), 2);
  archive << BYTE{'c'};
  archive.Close();
  EXPECT_EQ(BytesOf(file), "a" + large + "c");
}

TEST(ArchiveBuffer, LargeRawReadsTakeTheBufferFirstAndWholeBlocksFromTheFile) {
  std::string bytes;
  for (int index = 0; index < 1000; ++index) bytes += static_cast<char>(index * 7);
  FaultyFile file(bytes.data(), 1000);
  CVellum archive(&file, CArchive::load, 16);
  BYTE first = 0;
  archive >> first;
  std::string rest(999, '\0');
  ASSERT_EQ(archive.Read(rest.data(), 999), 999U);
  EXPECT_EQ(static_cast<char>(first) + rest, bytes);
  EXPECT_EQ(file.Reads(), 3);  // the first buffer, the blocks, the rest through the buffer again
}

TEST(ArchiveBuffer, ARawReadGivesFewerBytesOnlyAtTheEnd) {
  for (int bufferSize = 1; bufferSize <= kLargestSmallBuffer; ++bufferSize) {
    for (const UINT length : {0U, 1U, 15U, 16U, 17U, 100U}) {
      FaultyFile file(std::string(length, 'x').data(), length);
      file.ShortenReads(3);
      CVellum archive(&file, CArchive::load, bufferSize);
      std::string target(200, '.');
      EXPECT_EQ(archive.Read(target.data(), 200), length) << "with a buffer of " << bufferSize;
      EXPECT_EQ(target, std::string(length, 'x') + std::string(200 - length, '.'));
      EXPECT_EQ(archive.Read(target.data(), 1), 0U);
    }
  }
}

TEST(ArchiveBuffer, FillBufferRefusesMoreThanTheBufferHolds) {
  LoadingArchive archive(std::string(100, 'x'), 16);
  EXPECT_FALSE(Raised<CInvalidArgException>([&] { archive->FillBuffer(16); }));
  EXPECT_TRUE(Raised<CInvalidArgException>([&] { archive->FillBuffer(1); }));
}

}  // namespace
}  // namespace ondrel::test
