// Projects that no build loads, each wrong in one way.
#pragma once

#include <string>
#include <vector>

namespace ondrel::test {

struct MalformedProject {
  std::string name;  ///< Also in the table of docs/platforms.md, where the builds give different statuses.
  std::string text;
};

std::vector<MalformedProject> MalformedProjects();

}  // namespace ondrel::test
