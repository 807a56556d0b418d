// New nodes and dialogs.
#include "edit/add_object.h"

#include "edit/dialog_name.h"
#include "edit/object_name.h"
#include "edit/written_text.h"
#include "printable.h"

namespace ondrel::command {
namespace {

Failure NoCookieLeft(const Definition& definition) {
  return {definition.At(0), "the largest cookie there can be is in use; give that node or dialog another in the file",
          StatusText(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS))};
}

/// Fills the record of a new node or dialog.
void FillRecord(Definition& definition, __int64 cookie, const RecordChange& change) {
  CMMCObjectParams* stored = nullptr;
  // The library gives -2 where it gives no cookie, and -2 can be a cookie as well.
  if (!definition.set.GetParams(cookie, stored)) throw NoCookieLeft(definition);
  CMMCObjectParams record(*stored);
  ChangeRecord(definition, change, record);
  definition.set.SetParams(cookie, &record);
}

__int64 ParentOfNewNode(Definition& definition, const std::optional<std::string>& name) {
  if (name) {
    const __int64 parent = FindObjectNamed(definition, *name);
    if (IsDialog(definition.set, parent)) {
      throw Failure(definition.At(0),
                    ObjectLabel(definition.set, parent) +
                        " is no node, and none can be below it; "
                        "name a node",
                    StatusText(E_INVALIDARG));
    }
    RequireSavedNode(definition, parent);
    return parent;
  }
  const std::list<__int64> topNodes = definition.set.GetChildNodes(CMMCObjectSet::RootNode);
  if (topNodes.empty()) return CMMCObjectSet::RootNode;
  throw Failure(definition.At(0),
                "the project has a top-level node, and a save keeps one alone; put the new node below it, with "
                "--parent " +
                    std::to_string(topNodes.front()),
                StatusText(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS)));
}

int FinishAdd(const EditRequest& request, Definition& definition, __int64 cookie) {
  return FinishEdit(request, definition, {cookie}, ObjectLine(definition.set, cookie) + '\n');
}

}  // namespace

__int64 AddRecord(Definition& definition, __int64 parent, const RecordChange& record) {
  const CString name = NameToWrite(definition.At(0), *record.name);
  const __int64 cookie = definition.set.AddNewNode(parent, name, CMMCObjectParams::eList);
  FillRecord(definition, cookie, record);
  if (cookie < 0) {
    throw Failure(
        definition.At(0),
        "the new node would have the cookie " + std::to_string(cookie) +
            ", since no node or dialog has a "
            "larger one, and no save keeps nodes with negative cookies; give one a cookie from 0 on in the file",
        StatusText(E_INVALIDARG));
  }
  return cookie;
}

int AddNode(const AddNodeRequest& request) {
  const auto definition = OpenForEdit(request.edit);
  const __int64 parent = ParentOfNewNode(*definition, request.parent);
  return FinishAdd(request.edit, *definition, AddRecord(*definition, parent, request.record));
}

int AddDialog(const AddDialogRequest& request) {
  const auto definition = OpenForEdit(request.edit);
  const CString name = NameToWrite(definition->At(0), *request.record.name);
  RequireFreeDialogName(*definition, name, std::nullopt);
  const __int64 cookie = definition->set.AddNewDialog(name);
  FillRecord(*definition, cookie, request.record);
  return FinishAdd(request.edit, *definition, cookie);
}

}  // namespace ondrel::command
