// From a definition file to standard output.
#include "show.h"

#include "edit/object_name.h"
#include "json_output.h"
#include "output.h"
#include "record_drawing.h"
#include "tree_drawing.h"

namespace ondrel::command {
namespace {

/// The node that is named; a dialog is no tree.
__int64 FindNodeNamed(Definition& definition, const std::string& name) {
  const __int64 cookie = FindObjectNamed(definition, name);
  if (!IsDialog(definition.set, cookie)) return cookie;
  throw Failure(definition.At(0),
                "dialog " + std::to_string(cookie) + " is no node and has no tree; show it with --record",
                StatusText(HRESULT_FROM_WIN32(ERROR_NOT_FOUND)));
}

std::string ShownText(Definition& definition, const ShowRequest& request) {
  const Colours colours(request.colours);
  if (request.record) {
    const __int64 cookie = FindObjectNamed(definition, *request.record);
    return request.json ? RecordJsonText(definition, cookie) : RecordText(definition, cookie, colours);
  }
  if (request.node) {
    const __int64 cookie = FindNodeNamed(definition, *request.node);
    return request.json ? SubtreeJsonText(definition, cookie) : SubtreeText(definition, cookie, colours);
  }
  return request.json ? JsonText(definition) : DrawingText(definition, colours);
}

}  // namespace

int Show(const ShowRequest& request) {
  const auto definition = ReadDefinition(request.file, request.reading);
  WriteOutput(ShownText(*definition, request));
  return kDone;
}

}  // namespace ondrel::command
