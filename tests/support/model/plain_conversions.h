// Between the set's own records and text and those of the plain model.
#pragma once

#include <string>
#include <utility>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/plain_set.h"
#include "support/model/sets.h"

namespace ondrel::test {

inline CString Real(const PlainText& text) { return CString(std::basic_string<WCHAR>(text.begin(), text.end())); }
inline PlainText Plain(const CString& text) { return {text.View().begin(), text.View().end()}; }

inline CMMCObjectParams Real(const PlainRecord& record) {
  const auto queries = [](const PlainQueries& plain) {
    CMMCObjectParams::QueryList real;
    for (const auto& [tag, file] : plain) real.emplace_back(Real(tag), file);
    return real;
  };
  return MakeRecord({.cookie = record.cookie,
                     .name = Real(record.name),
                     .icon = record.icon,
                     .type = static_cast<CMMCObjectParams::_eTypeNode>(record.type),
                     .childQueries = queries(record.childQueries),
                     .styleSheet = record.styleSheet,
                     .menuScript = record.menuScript,
                     .scripts = record.scripts,
                     .renderQueries = queries(record.renderQueries)});
}

/// What the set's icons are made of, when they do not come from a file.
inline CMMCObjectIcon Real(const HandIcon& icon) {
  CMMCObjectIcon real;
  LoadingArchive archive(icon.Record());
  real.Deserialize(*archive);
  return real;
}

/// A transform that does what the plain one says.
CMMCObjectSet::Transform Real(PlainTransform transform);
/// Writes the contents of hooked paths, and leaves the others to the set.
bool WriteHooked(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform transform,
                 CMMCObjectSet::Variables variables);

}  // namespace ondrel::test
