// What a project's text has that a save by the library does not write again.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <ondrel/platform/framework/string.h>
#include <ondrel/platform/types.h>
#include <ondrel/platform/xml_passage.h>

#include "subject.h"

namespace ondrel::command {

struct Leftover {
  const char* code = "";  ///< A name for programs, which stays the same.
  int line = 0;
  std::optional<Subject> about;  ///< The record or file that it belongs to.
  std::string explanation;       ///< What is wrong; what to do.
  /// Whether someone who wrote it expects the load to read it: not so of comments and the like.
  bool isData = true;
};

/// Where a leftover stands.
struct LeftoverPlace {
  std::string label;  ///< "node 5", "the Nodes of node 5"
  int line = 0;       ///< Of the leftover itself.
  std::optional<Subject> about = std::nullopt;
};

class ProjectLeftovers {
 public:
  const std::vector<Leftover>& All() const { return m_all; }

  void AddElement(const LeftoverPlace& place, const CString& name);
  void AddAttribute(const LeftoverPlace& place, const CString& name);
  void AddPassage(const LeftoverPlace& place, platform::XmlPassage passage);
  /// Another element of a name of which a record has one.
  void AddRepeated(const LeftoverPlace& place, const CString& name);
  /// A FileGroup behind the one in `firstLine`.
  void AddFileGroup(int line, int firstLine);
  /// A style sheet or render queries of a record whose type has no view.
  void AddView(const LeftoverPlace& record, const CString& name);
  /// Child queries of a record of type Dialog, which a load reads and a save does not write.
  void AddChildQueries(const LeftoverPlace& record);
  /// A Script whose value is no number: the load passes over it and all behind it.
  void AddScript(const LeftoverPlace& record, const CString& value);
  /// The Path of a file that has a Name, too.
  void AddPath(const LeftoverPlace& file);

 private:
  std::vector<Leftover> m_all;
};

}  // namespace ondrel::command
