// Filters whose command is the tests' own program, and images of code files alone.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "project_folder.h"

namespace ondrel::test {

/// The command line of the program with its arguments: pairs of a doing and a value (filter/filter_program.cpp).
std::string FilterCommand(const std::string& doings);

/// A project of these code files, cookies from 1 on in their order, each in a line of its own; the first is in line 2.
/// `files` are attributes: Name="a.js".
std::string CodeProject(const std::vector<std::string>& files);

/// The image of a definition that has nothing but code files: cookies and contents, in the order of their paths.
std::string CodeImage(const std::vector<std::pair<long long, std::string>>& files);

}  // namespace ondrel::test
