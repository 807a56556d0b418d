// The collection of file cookies, record by record.
#include "used_files.h"

#include "node_walk.h"

namespace ondrel::command {
namespace {

class FileCollector : public NodeVisitor {
 public:
  explicit FileCollector(UsedFiles& files) : m_files(files) {}

  void EnterNode(const CMMCObjectParams& node, std::size_t, bool) override { m_files.Add(node); }
  void LeaveNode(bool) override {}

 private:
  UsedFiles& m_files;
};

}  // namespace

void UsedFiles::Add(const CMMCObjectParams& record) {
  icons.insert(record.GetIcon());
  for (const __int64 script : record.GetScripts()) codeFiles.insert(script);
  for (const auto& [tag, file] : record.GetChildQueries()) codeFiles.insert(file);
  for (const auto& [tag, file] : record.GetRenderQueries()) codeFiles.insert(file);
  codeFiles.insert(record.GetMenuScript());
  codeFiles.insert(record.GetStyleSheet());
  icons.erase(0);
  codeFiles.erase(0);
}

UsedFiles FilesOfSubtree(CMMCObjectSet& set, __int64 node) {
  UsedFiles files;
  FileCollector collector(files);
  WalkSubtree(set, node, collector);
  return files;
}

}  // namespace ondrel::command
