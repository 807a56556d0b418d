// What a host does with the library: builds a definition, stores and loads it, catches what the library raises.
#include <cstdio>

#include <ondrel/MMCArchiveFile.h>
#include <ondrel/MMCObjectSet.h>
#include <ondrel/ShowMessage.h>

namespace {

bool LeaveToTheSet(const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; }

std::size_t StoreAndLoad() {
  CMMCObjectSet set(LeaveToTheSet);
  const __int64 top = set.AddNewNode(CMMCObjectSet::RootNode, _T("Server"), CMMCObjectParams::eList);
  set.AddNewNode(top, _T("Disks"), CMMCObjectParams::eHTML);
  CMemFile file;
  {
    CVellum archive(&file, CArchive::store);
    set.SerializeObjects(archive, 0, 0);
    archive.Close();
  }
  file.Seek(0, CFile::begin);
  CMMCObjectSet loaded(LeaveToTheSet);
  CVellum archive(&file, CArchive::load);
  loaded.SerializeObjects(archive, 0, 0);
  return loaded.GetChildNodes(top).size();
}

bool RaisesAcrossTheLibrary() {
  CMemFile noImage("no image", 8);
  CVellum archive(&noImage, CArchive::load);
  CMMCObjectSet set(LeaveToTheSet);
  try {
    set.SerializeObjects(archive, 0, 0);
  } catch (const CArchiveException& raised) {
    return raised.m_cause == CArchiveException::badSchema;
  }
  return false;
}

}  // namespace

int main() {
  ShowMessage(nullptr, _T("Error"), _T("nobody is there to see it"));
  const bool works = StoreAndLoad() == 1 && RaisesAcrossTheLibrary();
  std::puts(works ? "the package works" : "the package does not work");
  return works ? 0 : 1;
}
