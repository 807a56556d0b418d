// The texts and bytes that tests of filters have in common.
#include "filter_command.h"

#include "support/model/hand_bytes.h"

namespace ondrel::test {

std::string FilterCommand(const std::string& doings) {
  return '"' + std::string(ONDREL_FILTER_PROGRAM) + "\" " + doings;
}

std::string CodeProject(const std::vector<std::string>& files) {
  std::string text = "<Project><FileGroup>\n";
  int cookie = 0;
  for (const std::string& file : files) text += "<File Cookie=\"" + std::to_string(++cookie) + "\" " + file + "/>\n";
  return text + "</FileGroup></Project>\n";
}

std::string CodeImage(const std::vector<std::pair<long long, std::string>>& files) {
  std::string bytes = Long(1) + Long(1);                 // versions of the set and of its records
  bytes += Count(0) + Count(0) + Count(0);               // top-level nodes, dialogs, icon files
  bytes += Count(static_cast<long long>(files.size()));  // code files from disk
  for (const auto& [cookie, contents] : files) bytes += Cookie(cookie) + ByteVector(contents);
  return bytes + Count(0);  // code files from memory
}

}  // namespace ondrel::test
