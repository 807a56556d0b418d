#include "forms.h"

#include "definition.h"

namespace ondrel::bench {
namespace {

constexpr int kBuffer = 64 * 1024;  // bytes; as the command's

template <class Work>
void Through(CFile& file, UINT mode, const Work& work) {
  file.Seek(0, CFile::begin);
  CVellum archive(&file, mode, kBuffer);
  work(archive);
  archive.Close();
}

}  // namespace

std::unique_ptr<CMMCObjectSet> MakeSet() { return std::make_unique<CMMCObjectSet>(LeaveToSet); }

std::unique_ptr<CMMCObjectSet> MakeDefinition(__int64 nodes) {
  auto set = MakeSet();
  FillDefinition(*set, nodes);
  return set;
}

void StoreImage(CMMCObjectSet& set, CFile& file) {
  Through(file, CArchive::store, [&](CVellum& archive) { set.SerializeObjects(archive, FALSE, FALSE); });
}

void LoadImage(CMMCObjectSet& set, CFile& file) {
  Through(file, CArchive::load, [&](CVellum& archive) { set.SerializeObjects(archive, FALSE, FALSE); });
}

void SaveProject(CMMCObjectSet& set, CFile& file) {
  Through(file, CArchive::store, [&](CVellum& archive) { set.SerializeProjectFile(archive, nullptr); });
}

void LoadProject(CMMCObjectSet& set, CFile& file) {
  Through(file, CArchive::load, [&](CVellum& archive) { set.SerializeProjectFile(archive, KeepBytes); });
}

}  // namespace ondrel::bench
