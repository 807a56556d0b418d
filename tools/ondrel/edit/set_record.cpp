// Other values for a record that is there.
#include "edit/set_record.h"

#include "edit/dialog_name.h"
#include "edit/object_name.h"
#include "output.h"

namespace ondrel::command {

int SetRecord(const SetRequest& request) {
  const auto definition = OpenForEdit(request.edit);
  const __int64 cookie = FindObjectNamed(*definition, request.object);
  RequireSavedNode(*definition, cookie);
  CMMCObjectParams* stored = nullptr;
  definition->set.GetParams(cookie, stored);
  CMMCObjectParams record(*stored);
  ChangeRecord(*definition, request.record, record);
  const std::string line = ObjectLine(definition->set, cookie);
  if (HoldTheSame(record, *stored)) {
    WriteOutput(line + " (it is so already, and the file stays as it is)\n");
    return kDone;
  }
  if (IsDialog(definition->set, cookie)) RequireFreeDialogName(*definition, record.GetName(), cookie);
  definition->set.SetParams(cookie, &record);
  return FinishEdit(request.edit, *definition, {cookie}, ObjectLine(definition->set, cookie) + '\n');
}

}  // namespace ondrel::command
