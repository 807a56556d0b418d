// Loading and saving the project file, against what others would read and write the same XML with.
#include <memory>
#include <string>

#include "forms.h"
#include "measure.h"
#include "project_peers.h"
#include "reference.h"

namespace ondrel::bench {
namespace {

/// The project file, as it is saved.
const std::string& Project() {
  static const std::string bytes = [] {
    CMemFile file;
    SaveProject(ReferenceSet(), file);
    return std::string(reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength()));
  }();
  return bytes;
}

std::unique_ptr<CMemFile> ProjectFile() {
  return std::make_unique<CMemFile>(Project().data(), static_cast<UINT>(Project().size()));
}

/// Loads a project's bytes as ours does, and compares.
void RequireReferenceIn(const void* bytes, std::size_t size) {
  CMemFile file(bytes, static_cast<UINT>(size));
  const auto loaded = MakeSet();
  LoadProject(*loaded, file);
  RequireNone(Difference(ReferenceModel(), *loaded));
}

void LoadOurs(benchmark::State& state) {
  const auto file = ProjectFile();
  Measure(state, MakeSet, [&](CMMCObjectSet& set) { LoadProject(set, *file); });
  RequireReferenceIn(file->GetBytes(), Project().size());
}

void LoadLibxml2(benchmark::State& state) {
  Measure(state, std::make_unique<Model>, [&](Model& model) { LoadWithLibxml2(Project(), model); });
  Model loaded;
  LoadWithLibxml2(Project(), loaded);
  RequireNone(Difference(ReferenceModel(), loaded));
}

void LoadPugixml(benchmark::State& state) {
  /// The bytes are changed by the load, so each begins with a copy that is made before.
  struct Subject {
    std::string bytes = Project();
    Model model;
  };
  Measure(state, std::make_unique<Subject>, [](Subject& subject) { LoadWithPugixml(subject.bytes, subject.model); });
  Subject loaded;
  LoadWithPugixml(loaded.bytes, loaded.model);
  RequireNone(Difference(ReferenceModel(), loaded.model));
}

void ScanExpat(benchmark::State& state) {
  Measure(state, std::make_unique<int>, [](int) { ScanWithExpat(Project()); });
}

void SaveOurs(benchmark::State& state) {
  CMMCObjectSet& set = ReferenceSet();
  Measure(state, std::make_unique<CMemFile>, [&](CMemFile& file) { SaveProject(set, file); });
  CMemFile file;
  SaveProject(set, file);
  RequireReferenceIn(file.GetBytes(), static_cast<std::size_t>(file.GetLength()));
}

void SavePugixml(benchmark::State& state) {
  const Model& model = ReferenceModel();
  Measure(state, std::make_unique<std::string>, [&](std::string& text) { text = SaveWithPugixml(model); });
  const std::string text = SaveWithPugixml(model);
  RequireReferenceIn(text.data(), text.size());
}

}  // namespace

void AddBenchmarks() {
  AddWork("load_project/ours", ReferenceNodes(), 1, LoadOurs);
  AddWork("load_project/libxml2", ReferenceNodes(), 1, LoadLibxml2);
  AddWork("load_project/Expat", ReferenceNodes(), 1, ScanExpat);
  AddWork("load_project/pugixml", ReferenceNodes(), 1, LoadPugixml);
  AddWork("save_project/ours", ReferenceNodes(), 1, SaveOurs);
  AddWork("save_project/pugixml", ReferenceNodes(), 1, SavePugixml);
}

}  // namespace ondrel::bench
