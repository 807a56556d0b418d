// An object image: bytes that nobody vouches for are loaded, and what was loaded is looked at, stored and loaded again.

#include <string>

#include "expect.h"
#include "input.h"
#include "object_sets.h"
#include "support/archive_bytes.h"
#include "support/object_set_probe.h"

namespace {

using namespace ondrel::fuzz;

constexpr HRESULT kAlreadyExists = HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);
constexpr std::size_t kHeadBytes = 16;  // two versions and the count of top-level nodes

/// How an image is loaded, from one byte.
struct LoadChoices {
  explicit LoadChoices(std::uint8_t choice)
      : bufferSize(ChooseBufferSize(choice & 0x07)),
        setModified((choice & 0x08) != 0),
        clearModified((choice & 0x10) != 0),
        isModifiedBefore((choice & 0x20) != 0) {}

  int bufferSize;
  bool setModified;
  bool clearModified;
  bool isModifiedBefore;
};

const std::string& BaseImage() {
  static const std::string image = [] {
    CMMCObjectSet base(StoreNoBytes);
    FillBaseSet(base);
    return ImageOf(base);
  }();
  return image;
}

/// Whether the set took the image; the cause of an archive exception that says it did not. No other exceptions but the
/// two stated ones are caught, so that they end the process.
bool Load(CMMCObjectSet& set, std::string_view image, const LoadChoices& choices, int& cause) {
  ondrel::test::LoadingArchive archive(image, choices.bufferSize);
  cause = CArchiveException::none;
  try {
    set.SerializeObjects(*archive, choices.setModified, choices.clearModified);
    return true;
  } catch (const CArchiveException& raised) {
    cause = raised.m_cause;
    Expect(cause == CArchiveException::endOfFile || cause == CArchiveException::badSchema,
           "an image is refused for its end or its version");
  } catch (const COleException& raised) {
    if (raised.m_sc != kAlreadyExists) Stop("an image is refused with the status " + StatusText(raised.m_sc));
  }
  return false;
}

/// What a set stores must be what it then loads.
void CheckRoundTrip(CMMCObjectSet& set, const LoadChoices& choices) {
  const bool isTree = set.GetChildNodes(CMMCObjectSet::RootNode).size() <= 1;
  std::string stored;
  try {
    stored = ImageOf(set, choices.bufferSize);
  } catch (const CArchiveException& raised) {
    Expect(!isTree && raised.m_cause == CArchiveException::badSchema, "a set with one tree is stored");
    return;
  }
  Expect(isTree, "a set with several trees is refused");
  CMMCObjectSet again(StoreNoBytes);
  int cause = 0;
  Expect(Load(again, stored, choices, cause), "what was stored is loaded");
  Expect(ImageOf(again) == stored, "what was stored and loaded is stored the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const LoadChoices choices(input.TakeLast());
  CMMCObjectSet set(StoreNoBytes);
  FillBaseSet(set);
  CMMCObjectSetProbe::SetModifiedFlag(set, choices.isModifiedBefore);

  int cause = 0;
  if (Load(set, input.Left(), choices, cause)) {
    Expect(set.IsModified() == (choices.setModified && !choices.clearModified), "the flags say whether it is modified");
    LookAtSet(set);
    CheckRoundTrip(set, choices);
  } else {
    const bool isUntouched = cause == CArchiveException::badSchema || input.Left().size() < kHeadBytes;
    Expect(set.IsModified() == (isUntouched && choices.isModifiedBefore), "only a head that is taken empties the set");
    if (isUntouched) Expect(ImageOf(set) == BaseImage(), "a set that refuses the head of an image is as it was");
    UseSet(set);
  }
  return 0;
}
