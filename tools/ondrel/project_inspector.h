// A look at a project's text before and after the library's own: it knows lines, and it knows what a load would trip
// over.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/platform/xml_scan.h>

#include "project_contents.h"
#include "project_findings.h"
#include "project_leftovers.h"

namespace ondrel::command {

/// Reads project text by the rules of the library's load: which elements are read at all, in which order, and what
/// makes a load fail or never end. The text is scanned once, at construction.
class ProjectInspector : private platform::XmlScanHandler {
 public:
  /// `folder` is the project's, with its closing separator.
  ProjectInspector(const CString& text, CString folder);

  /// Why the text is no XML that a load accepts, when it is not.
  const std::optional<platform::XmlFault>& Fault() const { return m_fault; }
  const ProjectFindings& Findings() const { return m_findings; }
  const ProjectContents& Contents() const { return m_contents; }
  const std::vector<ProjectFile>& IconFiles() const { return m_contents.iconFiles; }
  const std::vector<ProjectFile>& CodeFiles() const { return m_contents.codeFiles; }
  /// In the order of the text.
  const std::vector<Leftover>& Leftovers() const { return m_leftovers.All(); }
  /// The line of the node or dialog with that cookie; 0 when there is none.
  int LineOfObject(__int64 cookie) const;

 private:
  /// What an open element is to the load.
  enum class Role {
    unread,  ///< Told as a leftover, with all that is in it.
    leaf,    ///< Its attributes alone are read.
    project,
    nodes,  ///< A NodeGroup, or the Nodes of a node: its Node elements are read.
    node,
    dialogs,
    dialog,
    files,  ///< The first FileGroup.
    childQueries,
    renderQueries,
    unusedQueries,  ///< RenderQueries of a record without a view.
    scripts,
  };

  /// An element that is read somewhere, and its attributes that are.
  struct ElementKind {
    LPCTSTR name;
    std::array<LPCTSTR, 4> attributes{};
  };
  static const ElementKind kProject, kNodeGroup, kNodes, kNode, kDialogGroup, kDialog, kFileGroup, kIcon, kFile,
      kChildQueries, kRenderQueries, kQuery, kScripts, kScript, kMenuScript, kStyleSheet;

  /// What the walk has to know of a record besides.
  struct RecordState {
    bool hasView = false;  ///< HTML and Dialog: a style sheet and render queries are read.
    bool hasMenuScript = false;
    bool hasStyleSheet = false;
    bool hasLostQueries = false;  ///< They were told.
    bool areScriptsCut = false;   ///< No further script is read.
  };

  struct OpenElement {
    Role role = Role::unread;
    const ElementKind* kind = nullptr;  ///< Null where nothing is read.
    std::size_t group = 0;
    std::size_t record = kNoRecord;  ///< The record that the element is or belongs to.
  };

  using Attributes = std::vector<Attribute>;

  void OnStartElement(const CString& name, const Attributes& attributes, int line) override;
  void OnEndElement(const CString& name, int line) override;
  void OnPassage(platform::XmlPassage passage, int line) override;

  void ReadRoot(const CString& name, int line);
  OpenElement ReadChild(const CString& name, const Attributes& attributes, int line);
  OpenElement ReadFileGroup(int line);
  OpenElement ReadRecordChild(const OpenElement& parent, const CString& name, const Attributes& attributes, int line);
  OpenElement ReadRecord(const OpenElement& parent, bool isDialog, const Attributes& attributes, int line);
  void ReadQuery(const OpenElement& parent, const Attributes& attributes, int line);
  /// `index` is a record's, here and below.
  void ReadFileReference(std::size_t index, FileReference::Kind kind, const Attributes& attributes, int line);
  void ReadScript(std::size_t index, const Attributes& attributes, int line);
  void ReadFile(Subject::Kind kind, const Attributes& attributes, int line);
  void CloseRecord(std::size_t index);
  void FindUnreadAttributes(const OpenElement& element, const Attributes& attributes, int line);
  LeftoverPlace PlaceIn(const OpenElement& element, int line) const;
  LeftoverPlace PlaceOf(std::size_t record, int line) const;

  /// The number in an attribute, with a finding when it is none.
  template <class Owner>
  std::optional<__int64> ReadCookie(LoadOrder order, const std::optional<Subject>& about, const Owner& label,
                                    const Attribute& attribute, int line);
  void FindTakenObjects();
  void FindTakenFiles(const std::vector<ProjectFile>& files);
  void Report(Finding finding) { m_findings.Add(std::move(finding)); }
  /// Reports what of a record is missing or malformed.
  void ReportRecord(std::size_t index, LoadOrder::Step step, int line, const char* code, std::string explanation);

  CString m_folder;
  std::optional<platform::XmlFault> m_fault;
  ProjectFindings m_findings;
  ProjectLeftovers m_leftovers;
  std::vector<OpenElement> m_open;
  std::size_t m_groups = 0;
  std::optional<int> m_fileGroupLine;
  ProjectContents m_contents;
  std::vector<RecordState> m_states;  ///< One for each record.
  std::map<__int64, int> m_objectLines;
};

}  // namespace ondrel::command
