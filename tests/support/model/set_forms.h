// A set's persistent forms as byte strings, and everything that a set holds, as text.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::test {

/// A writer hook that leaves every code file to the set.
bool LeaveToSet(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform transform,
                CMMCObjectSet::Variables variables);
/// Gives the bytes that it is given.
std::vector<char> Unchanged(std::vector<char> bytes, CMMCObjectSet::Variables variables);
/// Gives `Unchanged` for every path.
CMMCObjectSet::Transform UnchangedFor(const WCHAR* path);

/// The project file that a set is saved as through an archive of that file name.
std::string SavedProject(CMMCObjectSet& set, LPCWSTR fileName = _T("C:\\p\\project.xml"));
void LoadProject(CMMCObjectSet& set, std::string_view bytes, LPCWSTR fileName = _T("C:\\p\\project.xml"),
                 CMMCObjectSet::TransformFactory factory = UnchangedFor);
std::string SavedImage(CMMCObjectSet& set, int setModified = 0, int clearModified = 0);
void LoadImage(CMMCObjectSet& set, std::string_view bytes, int setModified = 0, int clearModified = 0);

/// The modified flag, every record with its keys, and every icon file (with a digest of its images, whether it has
/// handles, and its image index) and code file, a line each, with the path tables. Sets with the same text cannot be
/// told apart, but for what the transforms do and for image indices of cookies that name no icon file.
std::string Observed(CMMCObjectSet& set);

}  // namespace ondrel::test
