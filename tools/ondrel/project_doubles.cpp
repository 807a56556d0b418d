// What a project's text states twice, of what a load takes once.
#include <algorithm>

#include "printable.h"
#include "project_inspector.h"

namespace ondrel::command {
namespace {

constexpr HRESULT kAlreadyExists = HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);

std::string InLine(int line) { return " in line " + std::to_string(line); }

}  // namespace

void ProjectInspector::FindTakenObjects() {
  std::vector<const ProjectRecord*> records;
  records.reserve(m_contents.records.size());
  for (const ProjectRecord& record : m_contents.records) records.push_back(&record);
  std::sort(records.begin(), records.end(),
            [](const ProjectRecord* left, const ProjectRecord* right) { return left->order < right->order; });

  std::map<CString, int> dialogLines;
  for (const ProjectRecord* const record : records) {
    if (!record->cookie) continue;
    LoadOrder order = record->order;
    order.step = LoadOrder::kInsert;
    if (const auto [taken, isNew] = m_objectLines.try_emplace(*record->cookie, record->line); !isNew) {
      Report({order, record->line, "cookie-taken", record->About(),
              record->label + " has the cookie of the node or dialog" + InLine(taken->second) + "; give it another",
              kAlreadyExists});
    }
    if (!record->isDialog) continue;
    if (const auto [taken, isNew] = dialogLines.try_emplace(record->name, record->line); !isNew) {
      Report({order, record->line, "name-taken", record->About(),
              record->label + " has the name " + Quoted(record->name) + " of the dialog" + InLine(taken->second) +
                  "; give it another",
              kAlreadyExists});
    }
  }
}

void ProjectInspector::FindTakenFiles(const std::vector<ProjectFile>& files) {
  std::map<CString, int> pathLines;
  std::map<__int64, int> cookieLines;
  for (const ProjectFile& file : files) {
    if (!file.cookie || !file.path) continue;
    LoadOrder order = file.order;
    order.step = LoadOrder::kInsert;
    const std::string kind = KindName(file.kind);
    const auto label = [&] { return kind + ' ' + std::to_string(*file.cookie); };
    if (const auto [taken, isNew] = pathLines.try_emplace(*file.path, file.line); !isNew) {
      Report({order, file.line, "file-repeated", file.About(),
              label() + " names the same file as" + InLine(taken->second) + "; remove one of the two", kAlreadyExists});
    } else if (const auto [owner, isFirst] = cookieLines.try_emplace(*file.cookie, file.line); !isFirst) {
      Report({order, file.line, "cookie-taken", file.About(),
              label() + " has the cookie of the " + kind + InLine(owner->second) + "; give it another",
              kAlreadyExists});
    }
  }
}

}  // namespace ondrel::command
