// The definition that everything is measured with: a console tree of any size, the same in every run.
#pragma once

#include <ondrel/MMCObjectSet.h>

namespace ondrel::bench {

/// A writer hook that leaves every code file to the set, and a transform that keeps a file's bytes, for every path.
bool LeaveToSet(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform transform,
                CMMCObjectSet::Variables variables);
CMMCObjectSet::Transform KeepBytes(const WCHAR* path);

/// Fills an empty set with nodes of the cookies 0 to `nodes` - 1, ten children each: the parent of node i is node
/// (i - 1) / 10, node 0 is the top. Each is named "Console node i" and has an icon, two child queries and two scripts,
/// two of three have a menu script, and every second one is an HTML view with a style sheet and a render query. Ten
/// dialogs with a style sheet follow. Files are named by cookies alone: there are none.
void FillDefinition(CMMCObjectSet& set, __int64 nodes);

inline constexpr __int64 kChildrenOfNode = 10;
inline constexpr __int64 kDialogs = 10;

/// The cookie of the parent of a node.
constexpr __int64 ParentOf(__int64 node) { return node == 0 ? __int64{-1} : (node - 1) / kChildrenOfNode; }

/// The cookie of one of a definition's files: a positive number of up to 63 bits, like those that a set makes.
__int64 FileCookie(unsigned kind, __int64 number);

}  // namespace ondrel::bench
