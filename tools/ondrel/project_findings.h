// What is wrong with a project's text, in the order in which a load would meet it.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <ondrel/platform/types.h>

#include "subject.h"

namespace ondrel::command {

/// When a load comes to something. A load reads all node groups, then all dialog groups, then the first file group:
/// icons, then code files.
struct LoadOrder {
  enum Stage { kDocument, kNodes, kDialogs, kIcons, kCodeFiles };
  /// The steps of reading one record or file, in their order.
  enum Step {
    kCookie,
    kName,
    kIcon,
    kType,
    kChildQueries,
    kMenuScript,
    kScripts,
    kStyleSheet,
    kRenderQueries,
    kFileName,
    kFileCookie,
    kFileCookieNumber,
    kIconImages,  ///< The icon file itself is read.
    kInsert,
  };

  Stage stage = kDocument;
  std::size_t group = 0;  ///< Groups and entries count in document order.
  std::size_t entry = 0;
  Step step = kCookie;

  auto operator<=>(const LoadOrder&) const = default;  // NOLINT(modernize-use-nullptr): what the compiler makes of it
};

struct Finding {
  LoadOrder order;
  int line = 0;
  const char* code = "";         ///< A name for programs, which stays the same: "attribute-missing".
  std::optional<Subject> about;  ///< The record or file, where its cookie is known.
  std::string explanation;       ///< What is wrong; what to do.
  HRESULT status = S_OK;         ///< What the load raises for it.
  bool endsNever = false;        ///< The load must not be tried: it would not come back.
};

class ProjectFindings {
 public:
  void Add(Finding finding) { m_findings.push_back(std::move(finding)); }
  /// Brings the findings into their order. To be called once, when all are there.
  void Sort();

  /// In the order in which a load would meet them.
  const std::vector<Finding>& All() const { return m_findings; }
  /// The first finding that a load would raise with `status`, or null.
  const Finding* First(HRESULT status) const;
  /// The first finding that forbids a load, or null.
  const Finding* Obstacle() const;

 private:
  std::vector<Finding> m_findings;
};

}  // namespace ondrel::command
