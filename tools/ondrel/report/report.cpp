// From a definition file to a page that shows it.
#include "report/report.h"

#include <algorithm>
#include <string_view>

#include <ondrel/platform/program.h>

#include "check/remark.h"
#include "output.h"
#include "output_place.h"
#include "printable.h"
#include "report/page.h"
#include "report/report_data.h"
#include "tree_drawing.h"

namespace ondrel::command {
namespace {

constexpr std::size_t kLargestWrite = std::size_t{1024} * 1024 * 1024;  // a count of bytes takes 32 bits there

void Write(CFile& file, std::string_view text) {
  for (std::size_t start = 0; start < text.size(); start += kLargestWrite) {
    const std::string_view block = text.substr(start, kLargestWrite);
    file.Write(block.data(), static_cast<UINT>(block.size()));
  }
}

void WritePage(const std::string& place, std::string_view data) {
  try {
    platform::ReplacementFile file(platform::PathFromUtf8(place));
    for (const std::string_view piece : PageHead()) Write(file, piece);
    Write(file, data);
    for (const std::string_view piece : PageTail()) Write(file, piece);
    file.Commit();
  } catch (const std::exception&) {
    throw CurrentFailure({place});
  }
}

}  // namespace

int WriteReport(const ReportRequest& request) {
  const auto definition = ReadDefinition(request.file, request.reading);
  RequirePlace(request.page, "the report", *definition);
  const std::vector<Remark> remarks = RemarksOn(*definition);
  WritePage(request.page, ReportData(*definition, remarks));
  WriteOutput(PrintablePath(request.page) + ": " + SummaryText(definition->set) + ", " +
              Counted(remarks.size(), "finding", "findings") + '\n');
  return kDone;
}

}  // namespace ondrel::command
