#include "report_page.h"

#include <stdexcept>

namespace ondrel::test {
namespace {

const std::string kReported = Lines({
    R"(<Project><NodeGroup>)",
    R"(<Node Cookie="9007199254740993" Name="T&#xF6;p" Icon="-7" Type="HTML">)",
    R"(<ChildQueries><Query Tag="Disks" File="8"/></ChildQueries>)",
    R"(<MenuScript File="8"/><Scripts><Script File="8"/></Scripts><StyleSheet File="9"/>)",
    R"(<Nodes>)",
    R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/><Nodes>)",
    R"(<Node Cookie="5" Name="aa" Icon="0" Type="List"><MenuScript/></Node></Nodes></Node>)",
    R"(<Node Cookie="2" Name="b" Icon="0" Type="Tree"><MenuScript/></Node>)",
    R"(</Nodes></Node></NodeGroup>)",
    R"(<DialogGroup><Dialog Cookie="3" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
    R"(<FileGroup><Icon Cookie="-7" Name="icons\top.ico"/><File Cookie="8" Name="a.js"/><File Cookie="9" Name="gone.js"/>)",
    R"(</FileGroup></Project>)",
});

}  // namespace

CommandResult RunReport(const ProjectFolder& folder, const std::string& file) {
  return folder.Run({"report", file, "-o", kPageName});
}

std::string DataText(const std::string& page) {
  constexpr std::string_view kStart = R"(<script type="application/json" id="definition">)";
  const std::size_t found = page.find(kStart);
  if (found == std::string::npos) throw std::runtime_error("the page has no data");
  const std::size_t begin = found + kStart.size();
  return page.substr(begin, page.find("</script>", begin) - begin);
}

nlohmann::json DataOf(const std::string& page) { return nlohmann::json::parse(DataText(page)); }

nlohmann::json ReportedData(const ProjectFolder& folder, const std::string& file) {
  ExpectSuccess(RunReport(folder, file));
  return DataOf(ReadBytes(folder / kPageName));
}

void WriteReported(const ProjectFolder& folder) {
  folder.WriteProject(kReported);
  folder.Write("icons/top.ico", SmallIconFile());
  folder.Write("a.js", "run()\n");
}

}  // namespace ondrel::test
