// How files are called in messages.
#include "project_contents.h"

#include "printable.h"

namespace ondrel::command {

std::string FileLabel(const ProjectFile& file) {
  std::string label = KindName(file.kind);
  if (file.cookie) label += ' ' + std::to_string(*file.cookie);
  if (file.path) label += (file.cookie ? ", " : " ") + Quoted(file.spelling);
  return label;
}

}  // namespace ondrel::command
