// Prefixes chosen so that the standard library hashes them all alike, which its own kind of hash allows.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/posix/thread_time.h"
#include "support/sanitizers.h"

#include <ondrel/platform/xml.h>

namespace ondrel::test {
namespace {

constexpr std::uint64_t kMultiplier = 0xC6A4A7935BD1E995;  // of the hash that GCC's library has for strings
constexpr std::uint64_t kInverse = 0x5F7A0EA7E59B19BD;     // times the other one: 1 in 64 bits
static_assert(kMultiplier * kInverse == 1);

constexpr std::size_t kPairs = kSanitized ? 11 : 14;
constexpr double kMostTimes = 20;  // comparing with every other one would take hundreds of times as long

std::uint64_t Fold(std::uint64_t value) { return value ^ (value >> 47); }
/// What the hash makes of eight letters, and the eight letters of which it makes that.
std::uint64_t Mixed(std::uint64_t letters) { return Fold(letters * kMultiplier) * kMultiplier; }
std::uint64_t Unmixed(std::uint64_t mixed) { return Fold(mixed * kInverse) * kInverse; }

std::string LettersOf(std::uint64_t value) {
  std::string letters(sizeof value, '\0');
  std::memcpy(letters.data(), &value, sizeof value);
  return letters;
}

bool IsLetters(const std::string& text) {
  for (const char unit : text) {
    if ((unit < 'a' || unit > 'z') && (unit < 'A' || unit > 'Z') && (unit < '0' || unit > '9')) return false;
  }
  return true;
}

std::uint64_t ValueOf(const std::string& letters) {
  std::uint64_t value = 0;
  std::memcpy(&value, letters.data(), sizeof value);
  return value;
}

std::string EightLetters(std::mt19937& random) {
  std::string letters(sizeof(std::uint64_t), 'a');
  for (char& letter : letters) letter = static_cast<char>(letter + random() % 26);
  return letters;
}

struct Pair {
  std::string one;
  std::string other;
};

/// Pairs of sixteen letters. Whichever is taken of each, in their order, the whole text has one hash: after each pair
/// the hash so far is the same again.
std::vector<Pair> PairsHashedAlike() {
  constexpr std::uint64_t kStart = 0xC70F6907;
  std::uint64_t hash = kStart ^ (kPairs * 2 * sizeof(std::uint64_t) * kMultiplier);
  std::mt19937 random(1);
  std::vector<Pair> pairs;
  while (pairs.size() < kPairs) {
    const std::string one = EightLetters(random);
    const std::string other = EightLetters(random);
    const std::uint64_t afterOne = (hash ^ Mixed(ValueOf(one))) * kMultiplier;
    const std::uint64_t afterOther = (hash ^ Mixed(ValueOf(other))) * kMultiplier;
    std::string behindOne;
    std::string behindOther = "?";
    while (!IsLetters(behindOther)) {
      behindOne = EightLetters(random);
      behindOther = LettersOf(Unmixed(Mixed(ValueOf(behindOne)) ^ afterOne ^ afterOther));
    }
    hash = (afterOne ^ Mixed(ValueOf(behindOne))) * kMultiplier;
    pairs.push_back({one + behindOne, other + behindOther});
  }
  return pairs;
}

std::chrono::nanoseconds TimeToRead(const std::basic_string<WCHAR>& text) {
  const CComBSTR wide{CString(text)};
  CComPtr<IXMLDOMDocument> document;
  EXPECT_EQ(platform::CreateDocument(&document), S_OK);
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const auto start = ThreadTime();
  EXPECT_EQ(platform::LoadDocument(document, wide, &loaded), S_OK);
  return ThreadTime() - start;
}

TEST(PosixXmlPrefixes, OfOneHashAreReadAsQuicklyAsOthers) {
  const std::vector<Pair> pairs = PairsHashedAlike();
  std::set<std::size_t> hashes;
  std::basic_string<WCHAR> alike = _T("<r");
  std::basic_string<WCHAR> ordinary = _T("<r");
  for (unsigned choice = 0; choice < 1U << kPairs; ++choice) {
    std::string prefix;
    for (std::size_t index = 0; index < pairs.size(); ++index) {
      prefix += (choice >> index & 1) != 0 ? pairs[index].one : pairs[index].other;
    }
    hashes.insert(std::hash<std::string>()(prefix));
    alike += _T(" xmlns:") + std::basic_string<WCHAR>(prefix.begin(), prefix.end()) + _T("='u'");
    const std::string number = std::to_string(choice);
    prefix = std::string(prefix.size() - number.size(), 'a') + number;
    ordinary += _T(" xmlns:") + std::basic_string<WCHAR>(prefix.begin(), prefix.end()) + _T("='u'");
  }
  if (hashes.size() != 1) GTEST_SKIP() << "the standard library hashes strings in another way";
  const double times = static_cast<double>(TimeToRead(alike + _T("/>")).count()) /
                       static_cast<double>(TimeToRead(ordinary + _T("/>")).count());
  EXPECT_LE(times, kMostTimes);
}

}  // namespace
}  // namespace ondrel::test
