// What is said of each kind of leftover.
#include "project_leftovers.h"

#include <algorithm>

#include "printable.h"

namespace ondrel::command {
namespace {

/// Where an element of a known name belongs, for one that stands elsewhere.
struct ProperPlace {
  LPCTSTR name;
  const char* advice;
};
constexpr ProperPlace kProperPlaces[] = {
    {_T("Node"), "put it directly into a NodeGroup or the Nodes of a node"},
    {_T("Nodes"), "put it directly into a node"},
    {_T("Dialog"), "put it directly into a DialogGroup"},
    {_T("Icon"), "put it directly into the FileGroup"},
    {_T("File"), "put it directly into the FileGroup"},
    {_T("Query"), "put it directly into ChildQueries or RenderQueries"},
    {_T("Script"), "put it directly into Scripts"},
    {_T("ChildQueries"), "put it directly into a node or dialog"},
    {_T("MenuScript"), "put it directly into a node or dialog"},
    {_T("Scripts"), "put it directly into a node or dialog"},
    {_T("StyleSheet"), "put it directly into a node or dialog"},
    {_T("RenderQueries"), "put it directly into a node or dialog"},
};

std::string AdviceFor(const CString& name) {
  const auto* const found = std::find_if(std::begin(kProperPlaces), std::end(kProperPlaces),
                                         [&](const ProperPlace& place) { return name == place.name; });
  return found == std::end(kProperPlaces) ? "remove it, or correct its name" : found->advice;
}

}  // namespace

void ProjectLeftovers::AddElement(const LeftoverPlace& place, const CString& name) {
  m_all.push_back({"element-unread", place.line, place.about,
                   "the element " + Quoted(name) + " in " + place.label +
                       " is not read, with all that is in it, and not kept by a save; " + AdviceFor(name)});
}

void ProjectLeftovers::AddAttribute(const LeftoverPlace& place, const CString& name) {
  m_all.push_back({"attribute-unread", place.line, place.about,
                   "the attribute " + Quoted(name) + " of " + place.label +
                       " is not read and not kept by a save; remove it, or correct its name"});
}

void ProjectLeftovers::AddPassage(const LeftoverPlace& place, platform::XmlPassage passage) {
  const auto add = [&](const char* code, const std::string& explanation, bool isData) {
    m_all.push_back({code, place.line, place.about, explanation, isData});
  };
  switch (passage) {
    case platform::XmlPassage::text:
      add("text-unread", "text in " + place.label + " is not read and not kept by a save; remove it", true);
      break;
    case platform::XmlPassage::comment:
      add("comment", "a comment is not kept by a save; put it elsewhere", false);
      break;
    case platform::XmlPassage::instruction:
      add("instruction", "a processing instruction is not kept by a save; put it elsewhere", false);
      break;
    case platform::XmlPassage::documentType:
      add("document-type",
          "the document type is not kept by a save, and its entities become what they stand for; do without it", false);
      break;
  }
}

void ProjectLeftovers::AddRepeated(const LeftoverPlace& place, const CString& name) {
  m_all.push_back({"element-repeated", place.line, place.about,
                   place.label + " has another " + Printable(name) +
                       ", which is not read and not kept by a save; remove one of the two"});
}

void ProjectLeftovers::AddFileGroup(int line, int firstLine) {
  m_all.push_back({"file-group-skipped", line, std::nullopt,
                   "another FileGroup is not read, with all files in it, and not kept by a save; move its files into "
                   "the one in line " +
                       std::to_string(firstLine)});
}

void ProjectLeftovers::AddView(const LeftoverPlace& record, const CString& name) {
  m_all.push_back({"view-unread", record.line, record.about,
                   record.label + " is of a type without a view: its " + Printable(name) +
                       " is not read, not kept by a save and not held by an image; remove it, or give the type HTML"});
}

void ProjectLeftovers::AddChildQueries(const LeftoverPlace& record) {
  m_all.push_back({"child-queries-unsaved", record.line, record.about,
                   record.label + " is of the type Dialog: its ChildQueries are read but not kept by a save; remove "
                                  "them, or give another type"});
}

void ProjectLeftovers::AddScript(const LeftoverPlace& record, const CString& value) {
  m_all.push_back({"scripts-cut", record.line, record.about,
                   "a Script of " + record.label + " has the File " + Quoted(value) +
                       ", which is no whole number: it and all scripts behind it are not read and not kept by a save; "
                       "give it a code file's cookie"});
}

void ProjectLeftovers::AddPath(const LeftoverPlace& file) {
  m_all.push_back({"path-unread", file.line, file.about,
                   file.label + " has a Name and a Path, and its Path is not read and not kept by a save; remove one "
                                "of the two"});
}

}  // namespace ondrel::command
