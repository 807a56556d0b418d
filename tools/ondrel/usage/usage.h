// What the grammar knows of each command.
#pragma once

#include <functional>

#include <CLI/CLI.hpp>

namespace ondrel::command {

/// What a command line asks for. Gives the exit code, or raises Failure.
using Run = std::function<int()>;

struct Usage {
  const char* name;
  const char* group;    ///< The heading under which the list of commands has it.
  const char* purpose;  ///< One line, for that list and for the head of the command's own help.
  /// Adds the options and the closing text. When the command has been parsed, `run` is what to do.
  void (*describe)(CLI::App& command, Run& run);
};

void DescribeCompile(CLI::App& command, Run& run);
void DescribeShow(CLI::App& command, Run& run);
void DescribeIcon(CLI::App& command, Run& run);
void DescribeExtract(CLI::App& command, Run& run);
void DescribeStrips(CLI::App& command, Run& run);
void DescribeCompletion(CLI::App& command, Run& run);
void DescribeMan(CLI::App& command, Run& run);
void DescribeNew(CLI::App& command, Run& run);
void DescribeAdd(CLI::App& command, Run& run);
void DescribeSet(CLI::App& command, Run& run);
void DescribeMoveDown(CLI::App& command, Run& run);
void DescribeRemove(CLI::App& command, Run& run);
void DescribeCheck(CLI::App& command, Run& run);
void DescribeDiff(CLI::App& command, Run& run);
void DescribeReport(CLI::App& command, Run& run);

}  // namespace ondrel::command
