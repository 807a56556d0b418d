#include "support/claimed_images.h"

#include <cstdint>

#include "support/model/hand_bytes.h"

namespace ondrel::test {
namespace {

constexpr int kEndOfFile = 3;
constexpr int kBadSchema = 7;
constexpr std::int64_t kHtml = 1;

struct NamedBytes {
  const char* name;
  std::string bytes;
};

std::string Head(std::uint64_t topNodes) { return Long(1) + Long(1) + Count(topNodes); }

/// A record up to its child queries.
std::string RecordStart(std::int64_t cookie) { return Cookie(cookie) + ShortText("N") + Cookie(0) + Long(kHtml); }

std::string Record(std::int64_t cookie) {
  return RecordStart(cookie) + Count(0) + Cookie(0) + Count(0) + Cookie(0) + Count(0);
}

std::string IconRecord(std::int64_t cookie) {
  return Cookie(cookie) + BitmapBytes(0, 0, 0, 0, "") + BitmapBytes(0, 0, 0, 0, "") + BitmapBytes(0, 0, 0, 0, "") +
         BitmapBytes(0, 0, 0, 0, "");
}

std::vector<NamedBytes> Counts() {
  return {{"2^31", Count(std::uint64_t{1} << 31)},
          {"2^32", Count(std::uint64_t{1} << 32)},
          {"2^63 - 1", Count((std::uint64_t{1} << 63) - 1)},
          {"2^63", Count(std::uint64_t{1} << 63)},
          {"2^64 - 1", Count(~std::uint64_t{0})}};
}

/// Lengths of text in every form that they have, of wide and of narrow text.
std::vector<NamedBytes> Lengths() {
  const std::vector<NamedBytes> lengths = {
      {"254 units in 8 bits", FromHex("FE")},
      {"65,533 units in 16 bits", FromHex("FF FD FF")},
      {"16 Mi units in 32 bits", FromHex("FF FF FF 00 00 00 01")},
      {"2^31 units in 32 bits", FromHex("FF FF FF 00 00 00 80")},
      {"4 GiB less 2 units in 32 bits", FromHex("FF FF FF FE FF FF FF")},
      {"4 GiB of units in 64 bits", FromHex("FF FF FF FF FF FF FF 00 00 00 00 01 00 00 00")},
      {"2^63 - 1 units in 64 bits", FromHex("FF FF FF FF FF FF FF FF FF FF FF FF FF FF 7F")},
      {"2^63 units in 64 bits", FromHex("FF FF FF FF FF FF FF 00 00 00 00 00 00 00 80")},
      {"2^64 - 1 units in 64 bits", FromHex("FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF")},
  };
  std::vector<NamedBytes> all = lengths;
  for (const NamedBytes& wide : lengths) all.push_back({wide.name, FromHex("FF FE FF") + wide.bytes});
  return all;
}

std::vector<NamedBytes> VectorCounts() {
  return {{"16 MiB", FromHex("00 00 00 01")},
          {"2^31 - 1 bytes", FromHex("FF FF FF 7F")},
          {"2^31 bytes", FromHex("00 00 00 80")},
          {"4 GiB less 1 byte", FromHex("FF FF FF FF")}};
}

struct Place {
  std::string name;
  std::string before;  ///< The image up to the count or length.
  std::string entry;   ///< One whole thing of those that are counted.
};

/// The places within a record that stands behind `before`.
void AddRecordPlaces(const std::string& owner, const std::string& before, std::vector<Place>& counts,
                     std::vector<Place>& lengths) {
  const std::string query = ShortText("t") + Cookie(9);
  const std::string tag = "t" + std::string(1, '\0');
  const std::string start = before + RecordStart(1);
  const std::string scripts = start + Count(0) + Cookie(0);
  const std::string renderQueries = scripts + Count(0) + Cookie(0);
  lengths.push_back({owner + "name", before + Cookie(1), tag});
  counts.push_back({owner + "child queries", start, query});
  lengths.push_back({owner + "tag of a child query", start + Count(1), tag});
  counts.push_back({owner + "scripts", scripts, Cookie(9)});
  counts.push_back({owner + "render queries", renderQueries, query});
  lengths.push_back({owner + "tag of a render query", renderQueries + Count(1), tag});
}

}  // namespace

std::vector<ClaimedImage> ClaimedImages() {
  std::vector<Place> counts;
  std::vector<Place> lengths;
  std::vector<Place> vectors;
  AddRecordPlaces("a node's ", Head(1), counts, lengths);
  counts.push_back({"children of a node", Head(1) + Record(1), Record(2) + Count(0)});
  const std::string dialogs = Head(0);
  counts.push_back({"dialogs", dialogs, Record(1)});
  AddRecordPlaces("a dialog's ", dialogs + Count(1), counts, lengths);
  const std::string icons = dialogs + Count(0);
  counts.push_back({"icon files", icons, IconRecord(1)});
  const std::string bitmap = BitmapBytes(0, 0, 0, 0, "");
  const std::string geometry = bitmap.substr(0, bitmap.size() - 4);
  std::string images = icons + Count(1) + Cookie(1);
  for (const char* const name : {"large colours", "large mask", "small colours", "small mask"}) {
    vectors.push_back({name, images + geometry, "pixels"});
    images += bitmap;
  }
  std::string files = icons + Count(0);
  for (const char* const section : {"code files of the first section", "code files of the second section"}) {
    counts.push_back({section, files, Cookie(1) + ByteVector("code")});
    vectors.push_back({section, files + Count(1) + Cookie(1), "code"});
    files += Count(0);
  }

  std::vector<ClaimedImage> claimed;
  // More than one top-level node is no matter of what follows.
  for (const NamedBytes& count : Counts()) {
    claimed.push_back({"top-level nodes", count.name, Long(1) + Long(1) + count.bytes, kBadSchema});
  }
  const auto add = [&](const std::vector<Place>& places, const std::vector<NamedBytes>& claims) {
    for (const Place& place : places) {
      for (const NamedBytes& claim : claims) {
        claimed.push_back({place.name, claim.name, place.before + claim.bytes, kEndOfFile});
        claimed.push_back({place.name, claim.name, place.before + claim.bytes + place.entry, kEndOfFile});
      }
    }
  };
  add(counts, Counts());
  add(lengths, Lengths());
  add(vectors, VectorCounts());
  return claimed;
}

}  // namespace ondrel::test
