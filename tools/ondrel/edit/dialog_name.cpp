// The look for a dialog of a name. The set's own says neither whether there is none nor whether a name has changed.
#include "edit/dialog_name.h"

#include "printable.h"

namespace ondrel::command {

void RequireFreeDialogName(Definition& definition, const CString& name, std::optional<__int64> dialog) {
  for (const __int64 other : definition.set.GetDialogs()) {
    CMMCObjectParams* record = nullptr;
    if (other == dialog || !definition.set.GetParams(other, record) || record->GetName() != name) continue;
    throw Failure(definition.At(0),
                  "dialog " + std::to_string(other) + " has the name " + Quoted(name) +
                      ", and no two dialogs can share one; give another name",
                  StatusText(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS)));
  }
}

}  // namespace ondrel::command
