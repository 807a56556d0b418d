// A project file: text that nobody vouches for is loaded into a set that has contents, which a refusal must not touch;
// what was loaded is saved, loaded and saved again.
//
// A Script without a File makes the load endless, which is stated; the fuzzer looks for one as the command does, with
// the command's own inspector, and holds the inspector to what the library makes of the text.

#include <algorithm>
#include <optional>
#include <string>

#include "expect.h"
#include "input.h"
#include "object_sets.h"
#include "project_inspector.h"
#include "support/archive_bytes.h"
#include "support/object_set_probe.h"
#include "text.h"

namespace {

using namespace ondrel::fuzz;
using ondrel::command::ProjectInspector;

constexpr HRESULT kInvalidData = HRESULT_FROM_WIN32(ERROR_INVALID_DATA);
constexpr HRESULT kAlreadyExists = HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);

/// The example's folder, so that projects find its icons. The text itself is nowhere on the disk.
const CString& Folder() {
  static const CString folder = Widen(ONDREL_EXAMPLE_FOLDER, CP_UTF8) + _T("\\");
  return folder;
}

void NameProject(CVellum& archive) { archive.m_strFileName = Folder() + _T("project.xml"); }

std::string TextOf(CMMCObjectSet& set) {
  return ondrel::test::Stored([&set](CVellum& archive) {
    NameProject(archive);
    set.SerializeProjectFile(archive, nullptr);
  });
}

/// The status of the load: S_OK, or that of the one exception that refuses text. Any other ends the process.
HRESULT Load(CMMCObjectSet& set, std::string_view text, int bufferSize) {
  ondrel::test::LoadingArchive archive(text, bufferSize);
  NameProject(*archive);
  try {
    set.SerializeProjectFile(*archive, KeepBytes);
    return S_OK;
  } catch (const COleException& raised) {
    Expect(FAILED(raised.m_sc), "the status of a refusal is a failure");
    return raised.m_sc;
  }
}

bool IsFaultOfAnIcon(const ProjectInspector& inspector, HRESULT status) {
  return std::any_of(inspector.IconFiles().begin(), inspector.IconFiles().end(), [status](const auto& icon) {
    return icon.path && CMMCObjectIcon().Construct(*icon.path) == status;
  });
}

/// The inspector reads by the rules of the library's load, so it foresees every refusal, and none that does not come.
void CheckInspector(const ProjectInspector& inspector, HRESULT status) {
  const auto& findings = inspector.Findings();
  if (inspector.Fault()) {
    Expect(status == kInvalidData, "text that the inspector's scan refuses is refused");
  } else if (FAILED(status)) {
    if (findings.First(status) == nullptr && !IsFaultOfAnIcon(inspector, status)) {
      Stop("the inspector does not explain the status " + StatusText(status));
    }
  } else {
    for (const HRESULT foreseen : {kInvalidData, kAlreadyExists, DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW}) {
      if (const auto* const finding = findings.First(foreseen); finding != nullptr) {
        Stop("the load succeeds, though the inspector says: " + finding->explanation);
      }
    }
  }
}

/// What the base set looks like, in both forms.
struct BaseForms {
  std::string image;
  std::string text;
};

const BaseForms& Base() {
  static const BaseForms forms = [] {
    CMMCObjectSet base(StoreNoBytes);
    FillBaseSet(base);
    return BaseForms{ImageOf(base), TextOf(base)};
  }();
  return forms;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char unit) { return static_cast<unsigned char>(unit) < 0x80; });
}

void CheckRoundTrip(CMMCObjectSet& set, int bufferSize) {
  // All text of the set was loaded from XML, so XML can carry it.
  const std::string saved = TextOf(set);
  const ProjectInspector inspector(Widen(saved, CP_THREAD_ACP), Folder());
  Expect(!inspector.Fault(), "what was saved is XML");
  // A script of cookie 0 is saved as one without a File.
  if (inspector.Findings().Obstacle() != nullptr) return;
  CMMCObjectSet again(StoreNoBytes);
  const HRESULT status = Load(again, saved, bufferSize);
  CheckInspector(inspector, status);
  // What is not ASCII is written as UTF-8 and read through the narrow code page: other names, and no icons by them.
  if (!IsAscii(saved)) return;
  if (FAILED(status)) Stop("what was saved is refused with the status " + StatusText(status));
  Expect(TextOf(again) == saved, "what was saved and loaded is saved the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const std::uint8_t choice = input.TakeLast();
  const int bufferSize = ChooseBufferSize(choice & 0x07);
  const bool isModifiedBefore = (choice & 0x08) != 0;
  const ProjectInspector inspector(Widen(input.Left(), CP_THREAD_ACP), Folder());
  if (!inspector.Fault() && inspector.Findings().Obstacle() != nullptr) return 0;

  CMMCObjectSet set(StoreNoBytes);
  FillBaseSet(set);
  CMMCObjectSetProbe::SetModifiedFlag(set, isModifiedBefore);
  const HRESULT status = Load(set, input.Left(), bufferSize);
  CheckInspector(inspector, status);
  if (status == S_OK) {
    Expect(!set.IsModified(), "a loaded set is unmodified");
    LookAtSet(set);
    CheckRoundTrip(set, bufferSize);
  } else {
    Expect(set.IsModified() == isModifiedBefore, "a refusal leaves the modified flag");
    Expect(ImageOf(set) == Base().image, "a refusal leaves the image that the set is stored as");
    Expect(TextOf(set) == Base().text, "a refusal leaves the project that the set is saved as");
    LookAtSet(set);
  }
  return 0;
}
