// A project from nothing.
#include "edit/new_project.h"

#include "edit/add_object.h"
#include "edit/object_name.h"
#include "printable.h"

namespace ondrel::command {

int NewProject(const NewRequest& request) {
  const auto definition = OpenNew(request.edit);
  std::string report = PrintablePath(request.edit.project) + ": a new project";
  if (!request.record.name) return FinishEdit(request.edit, *definition, {}, report + '\n');
  const __int64 cookie = AddRecord(*definition, CMMCObjectSet::RootNode, request.record);
  report += ", " + ObjectLine(definition->set, cookie) + '\n';
  return FinishEdit(request.edit, *definition, {cookie}, report);
}

}  // namespace ondrel::command
