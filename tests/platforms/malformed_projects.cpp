#include "platforms/malformed_projects.h"

namespace ondrel::test {

namespace {

std::string Nodes(const std::string& nodes) { return "<Project><NodeGroup>" + nodes + "</NodeGroup></Project>"; }
std::string Dialogs(const std::string& dialogs) {
  return "<Project><DialogGroup>" + dialogs + "</DialogGroup></Project>";
}
std::string Files(const std::string& files) { return "<Project><FileGroup>" + files + "</FileGroup></Project>"; }

// A node with these attributes and nothing that is wrong.
std::string Node(const std::string& attributes, const std::string& children = "<MenuScript/><Scripts/>") {
  return "<Node " + attributes + ">" + children + "</Node>";
}
std::string Cookie(const std::string& text) { return "Cookie=\"" + text + R"(" Name="a" Icon="0" Type="List")"; }

}  // namespace

std::vector<MalformedProject> MalformedProjects() {
  const std::string good = Cookie("1");
  const std::string html = R"(Cookie="1" Name="a" Icon="0" Type="HTML")";
  return {
      // No XML
      {"no text", ""},
      {"blanks alone", " \n\t"},
      {"no element", "<?xml version=\"1.0\"?>"},
      {"text alone", "hello"},
      {"an element that is not closed", "<Project><NodeGroup></Project>"},
      {"the end is missing", "<Project><NodeGroup>"},
      {"two roots", "<Project/><Project/>"},
      {"text behind the root", "<Project/>more"},
      {"an attribute without quotes", "<Project a=b/>"},
      {"an attribute twice", "<Project a=\"1\" a=\"2\"/>"},
      {"an unknown entity", "<Project a=\"&nbsp;\"/>"},
      {"a bare ampersand", "<Project a=\"a & b\"/>"},
      {"a less-than sign in an attribute", "<Project a=\"<\"/>"},
      {"a control character", "<Project a=\"\x01\"/>"},
      {"a control character by number", "<Project a=\"&#1;\"/>"},
      {"half of a surrogate pair by number", "<Project a=\"&#xD800;\"/>"},
      {"a comment that is not closed", "<!-- <Project/>"},
      {"a comment with two hyphens", "<Project><!-- a -- b --></Project>"},
      {"a name that begins with a digit", "<1Project/>"},
      {"a prefix that is not declared", "<Project a:b=\"1\"/>"},
      {"a second declaration", "<?xml version=\"1.0\"?><Project/><?xml version=\"1.0\"?>"},
      {"an open section of characters", "<Project><![CDATA[ </Project>"},
      {"a byte-order mark, read as three characters", "\xEF\xBB\xBF<Project/>"},
      // XML, but no project
      {"another root", "<Nodes/>"},
      {"the root in lower case", "<project/>"},
      // Nodes
      {"a node without a cookie", Nodes(Node(R"(Name="a" Icon="0" Type="List")"))},
      {"a node without a name", Nodes(Node(R"(Cookie="1" Icon="0" Type="List")"))},
      {"a node without an icon", Nodes(Node(R"(Cookie="1" Name="a" Type="List")"))},
      {"a node without a type", Nodes(Node(R"(Cookie="1" Name="a" Icon="0")"))},
      {"a node without a menu script", Nodes(Node(good, "<Scripts/>"))},
      {"a view without a style sheet", Nodes(Node(html))},
      {"an empty cookie", Nodes(Node(Cookie("")))},
      {"a cookie of letters", Nodes(Node(Cookie("twelve")))},
      {"a cookie with two points", Nodes(Node(Cookie("1.2.3")))},
      {"a cookie in the manner of C", Nodes(Node(Cookie("0x10")))},
      {"a cookie beyond 64 bits", Nodes(Node(Cookie("9223372036854775808")))},
      {"a cookie with a large exponent", Nodes(Node(Cookie("1e40")))},
      {"a file of letters", Nodes(Node(good, "<MenuScript File=\"a\"/><Scripts/>"))},
      {"a query without a tag",
       Nodes(Node(good, "<ChildQueries><Query File=\"1\"/></ChildQueries><MenuScript/><Scripts/>"))},
      {"a query without a file",
       Nodes(Node(good, "<ChildQueries><Query Tag=\"a\"/></ChildQueries><MenuScript/><Scripts/>"))},
      {"a cookie twice", Nodes(Node(good) + Node(good))},
      {"a cookie twice, once as a fraction", Nodes(Node(good) + Node(Cookie("1.4")))},
      {"a cookie twice, above and below",
       Nodes(Node(good, "<MenuScript/><Scripts/><Nodes>" + Node(good) + "</Nodes>"))},
      // Dialogs
      {"a dialog's name twice", Dialogs(R"(<Dialog Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/></Dialog>)"
                                        R"(<Dialog Cookie="2" Name="a" Icon="0" Type="List"><MenuScript/></Dialog>)")},
      {"a dialog without a cookie", Dialogs(R"(<Dialog Name="a" Icon="0" Type="List"><MenuScript/></Dialog>)")},
      // Files
      {"a file without a cookie", Files("<File Name=\"a.js\"/>")},
      {"a file without a name", Files("<File Cookie=\"1\"/>")},
      {"a file's cookie twice", Files("<File Cookie=\"1\" Name=\"a.js\"/><File Cookie=\"1\" Name=\"b.js\"/>")},
      {"a file's name twice", Files("<File Cookie=\"1\" Name=\"a.js\"/><File Cookie=\"2\" Name=\"a.js\"/>")},
      {"a file's cookie of letters", Files("<File Cookie=\"a\" Name=\"a.js\"/>")},
      {"an icon that is not there", Files("<Icon Cookie=\"1\" Name=\"missing.ico\"/>")},
      {"an icon in a folder that is not there", Files("<Icon Cookie=\"1\" Name=\"missing\\icon.ico\"/>")},
  };
}

}  // namespace ondrel::test
