// The checks that remarks come from, one function for each subject. They add to the end, in no particular order.
#pragma once

#include <vector>

#include "check/remark.h"
#include "project_contents.h"

namespace ondrel::command {

using Remarks = std::vector<Remark>;

/// Nodes that neither a save nor an image holds, each with all below it.
void RemarkOnLostNodes(const ProjectContents& contents, Remarks& remarks);
/// Types of records that there are not.
void RemarkOnTypes(const ProjectContents& contents, Remarks& remarks);
/// Names and cookies that dialogs cannot be told apart by.
void RemarkOnDialogs(const ProjectContents& contents, Remarks& remarks);
/// References to files that are not there or of another kind, and files that nothing refers to.
void RemarkOnReferences(const ProjectContents& contents, Remarks& remarks);
/// Scripts of cookie 0, which a save writes as no load can read them.
void RemarkOnNamelessScripts(const ProjectContents& contents, Remarks& remarks);
/// Cookies and paths of files.
void RemarkOnFileNames(const ProjectContents& contents, Remarks& remarks);
/// What the disk has of a project's files.
void RemarkOnDisk(const Definition& definition, const ProjectContents& contents, Remarks& remarks);
/// Icons that do not fit the strips.
void RemarkOnStrips(const Definition& definition, const ProjectContents& contents, Remarks& remarks);
/// Bytes that a host's library reads otherwise than they are meant.
void RemarkOnText(const Definition& definition, Remarks& remarks);

}  // namespace ondrel::command
