// What this host adds to any console: a branch of its tree for backups.
#pragma once

#include <filesystem>

#include <ondrel/MMCObjectSet.h>

namespace host {

inline constexpr LPCWSTR kBackupDialog = _T("Backup Options");

/// Adds the nodes "Backups" and "Last Backup" below it under the first top-level node, the dialog kBackupDialog, and
/// the icon and the menu script that lie in `folder`. Raises COleException where the set refuses one of them, because
/// the console has backups already for one; the set then keeps what was added before.
void AddBackups(CMMCObjectSet& definition, const std::filesystem::path& folder);

}  // namespace host
