// Projects of one thing without end, loaded into a set and scanned as the command scans them. Windows has its own
// parser behind ours, with limits of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include <ondrel/platform/xml_scan.h>

#include "support/model/set_forms.h"
#include "support/posix/memory_peak.h"
#include "support/posix/thread_time.h"
#include "support/sanitizers.h"

namespace ondrel::test {
namespace {

// The sanitizers take ten times as long.
constexpr std::size_t kProjectShare = kSanitized ? 10 : 1;

// Twice the project takes twice the time; a half more is for caches that no longer hold it all.
constexpr double kMostTimesForTwiceAProject = 3;

// Bytes of memory for each byte of the project. On the way are the file, its text in UTF-16 twice, the parser's buffer,
// the document, and the value in UTF-16; for an attribute the document has a node.
constexpr double kMostForAttributes = 40;
constexpr double kMostForAName = 12;

const std::string kNode = R"(<Project><NodeGroup><Node Cookie="1" Icon="0" Type="List")";
const std::string kNodeEnd = "><MenuScript/></Node></NodeGroup></Project>";

std::string ProjectOfAttributes(std::size_t count) {
  std::string text = kNode + R"( Name="N")";
  for (std::size_t index = 0; index < count; ++index) text += " a" + std::to_string(index) + "=''";
  return text + kNodeEnd;
}

std::string ProjectOfALongName(std::size_t length) {
  return kNode + " Name=\"" + std::string(length, 'x') + '"' + kNodeEnd;
}

class CountAttributes : public platform::XmlScanHandler {
 public:
  void OnStartElement(const CString&, const std::vector<Attribute>& attributes, int) override {
    most = std::max(most, attributes.size());
  }
  void OnEndElement(const CString&, int) override {}

  std::size_t most = 0;
};

struct ProjectCost {
  std::chrono::nanoseconds time;
  double bytes;
};

ProjectCost CostOfLoading(const std::string& project, int nameLength) {
  const MemoryPeak peak;
  const auto start = ThreadTime();
  {
    CMMCObjectSet set(LeaveToSet);
    LoadProject(set, project);
    CMMCObjectParams* node = nullptr;
    const bool isLoaded = set.GetParams(1, node);
    EXPECT_TRUE(isLoaded);
    EXPECT_EQ(isLoaded ? node->GetName().GetLength() : 0, nameLength);
  }
  return {ThreadTime() - start, 1024.0 * static_cast<double>(peak.Kibibytes())};
}

ProjectCost CostOfScanning(const std::string& project, std::size_t attributes) {
  const CString text(project.c_str());
  const MemoryPeak peak;
  const auto start = ThreadTime();
  CountAttributes handler;
  platform::XmlFault fault;
  EXPECT_EQ(platform::ScanXml(text, handler, fault), S_OK);
  EXPECT_EQ(handler.most, attributes);
  return {ThreadTime() - start, 1024.0 * static_cast<double>(peak.Kibibytes())};
}

/// `costOf` takes a count of things and gives what they cost.
template <class CostOf>
void ExpectProportion(std::size_t count, double mostBytes, CostOf costOf) {
  double times = 0;
  // Once more where the first comparison was disturbed: by other programs, or by the first touch of the memory.
  for (int attempt = 0; attempt < 3 && (attempt == 0 || times > kMostTimesForTwiceAProject); ++attempt) {
    const ProjectCost half = costOf(count / 2);
    const ProjectCost whole = costOf(count);
    times = static_cast<double>(whole.time.count()) / static_cast<double>(half.time.count());
    if (!kSanitized) {
      EXPECT_LE(whole.bytes, mostBytes);
    }
  }
  EXPECT_LE(times, kMostTimesForTwiceAProject);
}

TEST(PosixProjectSizes, AMillionAttributesOfANodeAreLoadedInProportion) {
  constexpr std::size_t kCount = 1'000'000 / kProjectShare;
  const auto size = static_cast<double>(ProjectOfAttributes(kCount).size());
  ExpectProportion(kCount, kMostForAttributes * size,
                   [](std::size_t count) { return CostOfLoading(ProjectOfAttributes(count), 1); });
}

TEST(PosixProjectSizes, AttributesOfANodeAreScannedInProportion) {
  constexpr std::size_t kCount = 300'000 / kProjectShare;
  const auto size = static_cast<double>(ProjectOfAttributes(kCount).size());
  ExpectProportion(kCount, kMostForAttributes * size,
                   [](std::size_t count) { return CostOfScanning(ProjectOfAttributes(count), count + 4); });
}

TEST(PosixProjectSizes, ANameOfAHundredMillionLettersIsLoadedInProportion) {
  constexpr std::size_t kCount = 100'000'000 / kProjectShare;
  ExpectProportion(kCount, kMostForAName * kCount, [](std::size_t length) {
    return CostOfLoading(ProjectOfALongName(length), static_cast<int>(length));
  });
}

}  // namespace
}  // namespace ondrel::test
