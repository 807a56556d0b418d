// Random saving and loading: single files, object images and projects, whole and damaged.
#include <optional>

#include "support/archive_bytes.h"
#include "support/model/digest.h"
#include "support/model/edit_program.h"
#include "support/model/hand_bytes.h"
#include "support/model/plain_conversions.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/status_text.h"

namespace ondrel::test {
namespace {

/// Text that is not ASCII doubles whenever it goes through a project file.
constexpr int kMostProjectLoads = 8;

CMMCObjectSet::TransformFactory Real(PlainFactory factory) {
  switch (factory) {
    case PlainFactory::isEmpty:
      return nullptr;
    case PlainFactory::givesNone:
      return [](const WCHAR*) { return CMMCObjectSet::Transform(); };
    case PlainFactory::marks:
      break;
  }
  return [](const WCHAR* path) { return test::Real(PlainTransformFor(Plain(CString(path)))); };
}

}  // namespace

void EditProgram::StoreCodeFile() {
  const __int64 cookie = FileCookie();
  const PlainTransform transform = Transform();
  const std::map<PlainText, __int64> variables = {{u"given", 7}};
  std::string expected;
  std::string got;
  const bool stored = BothEnd(
      [&] { expected = m_plain.StoreCodeFile(cookie, transform, variables, m_disk); },
      [&] {
        CMMCObjectSet::Variables real;
        real[CString(_T("given"))] = CComVariant(static_cast<__int64>(7));
        got = Stored([&](CVellum& archive) { m_set->SerializeCodeFile(cookie, archive, test::Real(transform), real); });
      });
  if (stored) Expect("bytes " + Hex(expected), "bytes " + Hex(got));
}

void EditProgram::StoreIconFile() {
  const __int64 cookie = FileCookie();
  const std::string expected = m_plain.StoreIconFile(cookie);
  Expect(Digest(expected), Digest(Stored([&](CVellum& archive) { m_set->SerializeIconFile(cookie, archive); })));
  Note(expected.empty() ? "nothing" : "an icon");
}

void EditProgram::LoadCodeFile() {
  const __int64 cookie = FileCookie();
  const std::string contents(static_cast<std::size_t>(Number(40)), static_cast<char>(Number(256)));
  const std::string whole = Cookie(cookie) + ByteVector(contents);
  const std::string bytes = whole.substr(0, whole.size() - (Number(4) == 0 ? 1 : 0));
  BothEnd(
      [&] {
        if (bytes != whole) throw PlainRefusal{"CArchiveException 3"};
        const HRESULT status = m_plain.InsertCodeFile(cookie, contents);
        if (status < 0) throw PlainRefusal{"COleException " + StatusText(status)};
      },
      [&] {
        LoadingArchive archive(bytes);
        m_set->DeserializeCodeFile(*archive);
      });
}

void EditProgram::LoadIconFile() {
  const __int64 cookie = FileCookie();
  const HandIcon icon = Icon();
  const std::string whole = Cookie(cookie) + icon.Record();
  const std::string bytes = Number(4) == 0 ? whole.substr(0, Position(whole.size())) : whole;
  BothEnd(
      [&] {
        if (bytes != whole) throw PlainRefusal{"CArchiveException 3"};
        const HRESULT status = m_plain.InsertIconFile(cookie, icon);
        if (status < 0) throw PlainRefusal{"COleException " + StatusText(status)};
      },
      [&] {
        LoadingArchive archive(bytes);
        m_set->DeserializeIconFile(*archive);
      });
}

void EditProgram::StoreWhereOneLoads() {
  const __int64 cookie = FileCookie();
  const int operation = Number(4);
  BothEnd(
      [&] {
        if (operation == 0 && m_plain.GetIconFile(cookie) == nullptr) return;
        throw PlainRefusal{operation < 2 ? "CArchiveException 2" : "CArchiveException 4"};
      },
      [&] {
        LoadingArchive loading(std::string(100, '\1'));
        if (operation == 0) m_set->SerializeIconFile(cookie, *loading);
        if (operation == 1) m_set->SerializeCodeFile(cookie, *loading, Unchanged, {});
        if (operation == 2) Stored([&](CVellum& storing) { m_set->DeserializeIconFile(storing); });
        if (operation == 3) Stored([&](CVellum& storing) { m_set->DeserializeCodeFile(storing); });
      });
}

std::optional<std::string> EditProgram::StoredImage() {
  const bool setModified = Number(4) == 0;
  const bool clearModified = Number(4) == 0;
  std::string expected;
  std::string got;
  if (!BothEnd([&] { expected = m_plain.StoreImage(m_disk, setModified, clearModified); },
               [&] { got = SavedImage(*m_set, setModified, clearModified); })) {
    return std::nullopt;
  }
  Expect("an image of " + Digest(expected), "an image of " + Digest(got));
  return got;
}

void EditProgram::ChooseTarget() {
  if (Number(2) == 0) return;
  m_set = std::make_unique<CMMCObjectSet>(WriteHooked);
  m_plain = PlainSet();
}

void EditProgram::ReloadImage() {
  const std::optional<std::string> image = StoredImage();
  if (!image) return;
  const bool setModified = Number(4) == 0;
  const bool clearModified = Number(4) == 0;
  ChooseTarget();
  BothEnd([&] { m_plain.LoadImage(*image, setModified, clearModified); },
          [&] { LoadImage(*m_set, *image, setModified, clearModified); });
}

void EditProgram::LoadDamagedImage() {
  std::optional<std::string> image = StoredImage();
  if (!image) return;
  switch (Number(6)) {
    case 0:
      (*image)[0] = 2;
      break;
    case 1:
      (*image)[5] = 1;
      break;
    case 2:
      (*image)[8 + static_cast<std::size_t>(Number(8))] = 2;
      break;
    default:
      image->resize(Position(image->size()));
  }
  if (Number(4) == 0) {
    BothEnd([&] { m_plain.LoadImage(*image, true, false); }, [&] { LoadImage(*m_set, *image, 1, 0); });
    CompareWhole(*m_set, m_plain);
    return;
  }
  // Mostly into a set beside, so that the one of the program keeps what it has.
  CMMCObjectSet set(WriteHooked);
  PlainSet plain;
  BothEnd([&] { plain.LoadImage(*image, true, false); }, [&] { LoadImage(set, *image, 1, 0); });
  CompareWhole(set, plain);
}

void EditProgram::ReloadProject() {
  if (m_projectLoads == kMostProjectLoads) return;
  const PlainText savedAs = PathFrom(m_disk.ProjectPaths());
  const PlainText loadedFrom = PathFrom(m_disk.ProjectPaths());
  const int factories = Number(8);
  const PlainFactory factory = factories == 0   ? PlainFactory::isEmpty
                               : factories == 1 ? PlainFactory::givesNone
                                                : PlainFactory::marks;
  const PlainProject project = m_plain.SaveProject(savedAs);
  const std::string bytes = SavedProject(*m_set, test::Real(savedAs));
  if (project.HasScriptWithoutFile()) return;  // loading it would never end
  ++m_projectLoads;
  ChooseTarget();
  if (Number(2) == 0) {
    m_plain.SetModifiedFlag(true);
    CMMCObjectSetProbe::SetModifiedFlag(*m_set, 1);
  }
  BothEnd([&] { m_plain.LoadProject(project, loadedFrom, factory, m_disk); },
          [&] { LoadProject(*m_set, bytes, test::Real(loadedFrom), Real(factory)); });
  CompareWhole(*m_set, m_plain);
}

void EditProgram::LoadCutProject() {
  const PlainText path = PathFrom(m_disk.ProjectPaths());
  m_plain.SaveProject(path);
  std::string bytes = SavedProject(*m_set, test::Real(path));
  bytes.resize(Position(bytes.rfind("</Project>")));
  BothEnd([] { throw PlainRefusal{"COleException 0x8007000D"}; },
          [&] { LoadProject(*m_set, bytes, test::Real(path)); });
  CompareWhole(*m_set, m_plain);
}

}  // namespace ondrel::test
