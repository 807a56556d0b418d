// What the library makes of a project file, told in one line; the same program for every system.
//
// usage: project_probe status PROJECT      the outcome of loading it
//        project_probe resave PROJECT TO   loads it and saves it as TO
#include <cstdio>
#include <string>

#include <ondrel/MMCObjectSet.h>
#include <ondrel/platform/program.h>

namespace {

using namespace ondrel::platform;

bool LeaveToTheSet(const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; }

CMMCObjectSet::Transform KeepBytes(const WCHAR*) {
  return [](std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; };
}

void Load(CMMCObjectSet& set, const CString& path) {
  CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
  CVellum archive(&file, CArchive::load);
  archive.m_strFileName = FullPath(path);
  set.SerializeProjectFile(archive, KeepBytes);
}

void Save(CMMCObjectSet& set, const CString& path) {
  ReplacementFile file(path);
  CVellum archive(&file, CArchive::store | CArchive::bNoFlushOnDelete);
  archive.m_strFileName = FullPath(path);
  set.SerializeProjectFile(archive, nullptr);
  archive.Close();
  file.Commit();
}

std::string Do(const std::vector<std::string>& arguments) {
  try {
    const ComponentScope components;
    CMMCObjectSet set(LeaveToTheSet);
    Load(set, PathFromUtf8(arguments.at(1)));
    if (arguments.at(0) == "resave") Save(set, PathFromUtf8(arguments.at(2)));
    return "done";
  } catch (const COleException& raised) {
    char text[32];
    std::snprintf(text, sizeof text, "status 0x%08X", static_cast<unsigned>(raised.m_sc));
    return text;
  } catch (const CArchiveException& raised) {
    return "archive cause " + std::to_string(raised.m_cause);
  } catch (const CFileException& raised) {
    return "file cause " + std::to_string(raised.m_cause);
  } catch (const CMemoryException&) {
    return "out of memory";
  }
}

}  // namespace

int main(int argc, char** argv) {
  PrepareProgram();
  std::printf("%s\n", Do(ProgramArguments(argc, argv)).c_str());
  return 0;
}
