#include "platforms/definitions.h"

#include <array>
#include <random>

#include "support/icon_bytes.h"

namespace ondrel::test {

namespace {

constexpr std::size_t kCodeFileSizes[] = {0, 1, 2, 255, 256, 4095, 65'535, 65'536, 1 << 20};

constexpr std::array kNames = {"", "Status", "a &lt; b &amp;&amp; c &gt; d", "&quot;quoted&quot; &apos;twice&apos;",
                               "  blanks  ", "path\\with/both", "tab&#9;line&#10;return&#13;end",
                               // From here on text that saves do not keep: outside ASCII.
                               "&#228;&#246;&#252;&#223; &#8364;", "&#x1F600;&#x10FFFD;&#x20000;",
                               "&#xE000;&#xFFFD;&#x200F;"};
constexpr int kLastingNames = 7;

/// Writes the elements of a project, its values drawn from a source of its own.
class ProjectWriter {
 public:
  ProjectWriter(unsigned variant, DefinitionText text)
      : m_random(variant), m_names(text == DefinitionText::lasting ? kLastingNames : static_cast<int>(kNames.size())) {}

  /// A node or dialog. `counts` is 0 to 63: two bits each for child queries, scripts and render queries.
  std::string Record(const char* element, int cookie, std::string_view type, int counts, const std::string& children) {
    const bool hasView = type == "HTML" || type == "Dialog";
    std::string text = std::string("<") + element + Attribute("Cookie", std::to_string(cookie)) +
                       Attribute("Name", Name()) + Attribute("Icon", std::to_string(Number(100))) +
                       Attribute("Type", std::string(type)) + ">";
    if (type != "Dialog") text += Queries("ChildQueries", counts % 4);
    text += Number(1) == 0 ? "<MenuScript/>" : "<MenuScript" + File() + "/>";
    text += "<Scripts>";
    for (int left = counts / 4 % 4; left > 0; --left) text += "<Script" + File() + "/>";
    text += "</Scripts>";
    if (hasView) {
      text += Number(1) == 0 ? "<StyleSheet/>" : "<StyleSheet" + File() + "/>";
      text += Queries("RenderQueries", counts / 16);
    }
    return text + children + "</" + element + ">\n";
  }

  int Number(int most) { return static_cast<int>(m_random() % (static_cast<unsigned>(most) + 1)); }

 private:
  static std::string Attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + value + '"';
  }
  std::string File() { return Attribute("File", std::to_string(1 + m_random())); }
  std::string Name() { return kNames[static_cast<std::size_t>(Number(m_names - 1))]; }
  std::string Queries(const char* element, int count) {
    std::string text = std::string("<") + element + ">";
    for (; count > 0; --count) text += "<Query" + Attribute("Tag", Name()) + File() + "/>";
    return text + "</" + element + ">";
  }

  std::mt19937 m_random;
  int m_names;
};

std::string Project(const std::string& nodes, const std::string& dialogs, const std::string& files) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<Project>\n<NodeGroup>" + nodes +
         "</NodeGroup>\n<DialogGroup>" + dialogs + "</DialogGroup>\n<FileGroup>" + files + "</FileGroup>\n</Project>\n";
}

std::string FileElement(const char* element, int cookie, const std::string& name) {
  return std::string("<") + element + " Cookie=\"" + std::to_string(cookie) + "\" Name=\"" + name + "\"/>\n";
}

constexpr const char* kTypes[] = {"List", "HTML", "Dialog", "Tree"};
constexpr int kCombinations = 4 * 4 * 4;
constexpr int kFirstDialog = 1000;
constexpr int kFirstFile = 5000;

}  // namespace

void WriteDefinition(const TemporaryFolder& folder, unsigned variant, DefinitionText text) {
  ProjectWriter writer(variant, text);
  // Every combination of counts, the types in turn, each node below one of those before it.
  std::string nodes;
  std::string open;
  for (int counts = 0; counts < kCombinations; ++counts) {
    const int cookie = 1 + counts;
    const char* const type = kTypes[(static_cast<unsigned>(counts) + variant) % std::size(kTypes)];
    if (writer.Number(4) == 0) {
      open = "<Nodes>" + writer.Record("Node", cookie, type, counts, open) + "</Nodes>";
    } else {
      nodes += writer.Record("Node", cookie, type, counts, "");
    }
  }
  nodes = writer.Record("Node", 0, kTypes[variant % std::size(kTypes)], 63, "<Nodes>" + nodes + "</Nodes>" + open);

  std::string dialogs;
  for (int index = 0; index < 8; ++index) {
    const int counts = writer.Number(kCombinations - 1);
    std::string dialog = writer.Record("Dialog", kFirstDialog + index, kTypes[index % 4], counts, "");
    dialog.replace(dialog.find("Name=\"") + 6, 0, "dialog " + std::to_string(index) + " ");  // no two names alike
    dialogs += dialog;
  }

  std::string files;
  std::mt19937 bytes(variant + 1);
  for (std::size_t index = 0; index < std::size(kCodeFileSizes); ++index) {
    const bool below = index % 2 == 0;
    const std::string number = std::to_string(index);
    std::string contents;
    while (contents.size() < kCodeFileSizes[index]) contents.push_back(static_cast<char>(bytes()));
    folder.Write((below ? "code/sub/" : "") + number + ".js", contents);
    files += FileElement("File", kFirstFile + static_cast<int>(index), (below ? "code\\sub\\" : "") + number + ".js");
  }
  folder.Write(kDefinition, Project(nodes, dialogs, files));
}

void WriteIconDefinition(const TemporaryFolder& folder) {
  constexpr int kDepths[kIconFiles - 1] = {1, 4, 8, 24, 32};
  std::string files;
  for (int index = 0; index < kIconFiles; ++index) {
    const std::string name = "icon" + std::to_string(index) + ".ico";
    const bool isBlackAndWhite = index == kIconFiles - 1;
    const int depth = isBlackAndWhite ? 1 : kDepths[index];
    IconPicture large = PatternPicture(32, 32, depth);
    IconPicture smallIcon = PatternPicture(16, 16, depth);
    if (isBlackAndWhite) {
      for (IconPicture* const picture : {&large, &smallIcon}) picture->palette = {{0, 0, 0, 0}, {255, 255, 255, 0}};
    }
    folder.Write(name, IconFileBytes({smallIcon, large}));
    files += FileElement("Icon", 1 + index, name);
  }
  folder.Write(kDefinition, Project("", "", files));
}

void WriteSolidIconDefinition(const TemporaryFolder& folder) {
  std::string files;
  int cookie = 0;
  for (const int depth : {4, 8, 24, 32}) {
    const std::string name = "solid" + std::to_string(depth) + ".ico";
    folder.Write(name, IconFileBytes({SolidPicture(32, 32, depth, 0x123456), SolidPicture(16, 16, depth, 0x123456)}));
    files += FileElement("Icon", ++cookie, name);
  }
  folder.Write(kDefinition, Project("", "", files));
}

void WriteDefinitionOf(const TemporaryFolder& folder, const std::vector<std::filesystem::path>& iconFiles) {
  std::string files;
  int cookie = 0;
  for (const std::filesystem::path& file : iconFiles) {
    const std::string name = std::to_string(++cookie) + "-" + file.filename().string();
    std::filesystem::create_symlink(file, folder / name);
    files += FileElement("Icon", cookie, name);
  }
  folder.Write(kDefinition, Project("", "", files));
}

}  // namespace ondrel::test
