// Writes the seeds that are no text: small icon files, programs, object images and sequences of operations, each with
// what its name says.
//
// usage: fuzz_seeds FOLDER   (the fuzzers' folder of seeds, fuzz/corpus)

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "object_sets.h"
#include "support/archive_bytes.h"
#include "support/executable_bytes.h"
#include "support/icon_bytes.h"
#include "support/object_set_probe.h"
#include "support/png_bytes.h"

namespace {

using namespace ondrel::test;
namespace fs = std::filesystem;

class SeedFolder {
 public:
  explicit SeedFolder(fs::path path) : m_path(std::move(path)) { fs::create_directories(m_path); }

  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream file(m_path / name, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << bytes;
  }

 private:
  fs::path m_path;
};

void WriteIconFiles(const SeedFolder& folder) {
  for (const int bits : {1, 4, 8, 16, 24, 32}) {
    folder.Write("bits-" + std::to_string(bits) + ".ico", IconFileBytes({PatternPicture(5, 4, bits)}));
  }
  IconPicture topDown = PatternPicture(4, 3, 24);
  topDown.topDown = true;
  folder.Write("rows-from-the-top.ico", IconFileBytes({topDown}));
  IconPicture oldHeader = PatternPicture(4, 4, 4);
  oldHeader.oldHeader = true;
  folder.Write("old-header.ico", IconFileBytes({oldHeader}));
  IconPicture noMask = PatternPicture(4, 4, 32);
  noMask.transparent.clear();
  folder.Write("no-mask.ico", IconFileBytes({noMask}));
  folder.Write("both-sizes.ico", IconFileBytes({PatternPicture(16, 16, 1), PatternPicture(32, 32, 1)}));
  folder.Write("several-depths.ico",
               IconFileBytes({PatternPicture(4, 4, 8), PatternPicture(4, 4, 24), PatternPicture(4, 4, 32),
                              StoredPng(PatternPng(4, 4, PngColour::trueColour, 8))}));
  folder.Write("cursor.cur", IconFileBytes({PatternPicture(4, 4, 1)}, kCursorFileType));

  const struct {
    const char* name;
    PngColour colour;
    int depth;
  } kPngKinds[] = {{"grey-1", PngColour::grey, 1},         {"grey-16", PngColour::grey, 16},
                   {"palette-4", PngColour::palette, 4},   {"grey-alpha-8", PngColour::greyAlpha, 8},
                   {"colour-8", PngColour::trueColour, 8}, {"colour-alpha-16", PngColour::trueColourAlpha, 16}};
  for (const auto& kind : kPngKinds) {
    PngPicture picture = PatternPng(9, 6, kind.colour, kind.depth);
    folder.Write(std::string("png-") + kind.name + ".ico", IconFileBytes({StoredPng(picture)}));
  }
  PngPicture interlaced = PatternPng(9, 6, PngColour::trueColourAlpha, 8);
  interlaced.interlaced = true;
  folder.Write("png-interlaced.ico", IconFileBytes({StoredPng(interlaced)}));
}

void WritePrograms(const SeedFolder& folder) {
  const std::vector<StoredImage> images = {PatternPicture(4, 4, 8), StoredPng(PatternPng(4, 4, PngColour::grey, 8))};
  folder.Write("program-32.exe", BuildProgram(IconResources(images), ProgramKind::pe32).bytes);
  folder.Write("program-64.exe", BuildProgram(IconResources(images)).bytes);
  folder.Write("program-many-sections.exe", BuildProgram(IconResources(images), ProgramKind::pe32Plus, 5).bytes);
  folder.Write("program-without-resources.exe", BuildProgram({}).bytes);
  const ResourceType texts = {.key = u"TEXTS", .resources = {{u"FIRST", std::string("text")}}};
  std::vector<ResourceType> named = IconResources(images);
  named.insert(named.begin(), texts);
  named.back().resources.insert(named.back().resources.begin(), {u"MAIN", named.back().resources.front().languages});
  folder.Write("program-named-resources.exe", BuildProgram(named).bytes);
}

/// The image of a set that `fill` fills; the byte behind it makes the fuzzer load it in the plain way.
template <class Fill>
void WriteImage(const SeedFolder& folder, const char* name, Fill fill) {
  CMMCObjectSet set(ondrel::fuzz::StoreNoBytes);
  fill(set);
  folder.Write(name, ondrel::fuzz::ImageOf(set) + '\0');
}

CMMCObjectParams FullRecord(__int64 cookie, const CString& name, CMMCObjectParams::_eTypeNode type) {
  CMMCObjectParams record(cookie, name, type);
  record.SetIcon(40);
  record.SetChildQueries({{_T("Disks"), 50}, {_T("Volumes"), 51}});
  record.SetMenuScript(52);
  record.SetScripts({53, 54});
  record.SetStyleSheet(55);
  record.SetRenderQueries({{_T("Summary"), 56}});
  return record;
}

/// An icon of images of few pixels, as an object image has them.
CMMCObjectIcon SmallIcon() {
  const std::string bytes = Stored([](CVellum& archive) {
    for (const LONG side : {4, 2}) {
      for (const WORD bits : {WORD{32}, WORD{1}}) {
        CMMCObjectBitmap bitmap(side, side, 1, bits);
        bitmap.SetPixel(1, 0, 0x00ABCDEF);
        bitmap.Serialize(archive);
      }
    }
  });
  LoadingArchive archive(bytes);
  CMMCObjectIcon icon;
  icon.Deserialize(*archive);
  return icon;
}

void WriteImages(const SeedFolder& folder) {
  using Params = CMMCObjectParams;
  WriteImage(folder, "empty.img", [](CMMCObjectSet&) {});
  WriteImage(folder, "everything.img", ondrel::fuzz::FillBaseSet);
  WriteImage(folder, "records-of-each-type.img", [](CMMCObjectSet& set) {
    set.AddNode(CMMCObjectSet::RootNode, 0, FullRecord(0, _T("List"), Params::eList));
    set.AddNode(0, 1, FullRecord(1, _T("View"), Params::eHTML));
    set.AddNode(0, 2, FullRecord(2, _T("Node of the type Dialog"), Params::eDialog));
    set.AddNode(0, 3, FullRecord(3, _T("Unknown"), Params::eUnknown));
    set.AddDialog(4, FullRecord(4, _T("Dialog"), Params::eDialog));
  });
  WriteImage(folder, "deep-tree.img", [](CMMCObjectSet& set) {
    for (__int64 cookie = 0; cookie < 6; ++cookie) set.AddNode(cookie - 1, cookie, Params(cookie, {}, Params::eList));
  });
  WriteImage(folder, "negative-cookies.img", [](CMMCObjectSet& set) {
    set.AddDialog(-7, Params(-7, _T("Negative"), Params::eDialog));
    set.AddDialog(-1, Params(-1, _T("Root"), Params::eDialog));
  });
  WriteImage(folder, "long-texts.img", [](CMMCObjectSet& set) {
    set.AddDialog(0, Params(0, CString(_T('a'), 254), Params::eDialog));
    set.AddDialog(1, Params(1, CString(_T('b'), 255), Params::eDialog));
  });
  WriteImage(folder, "icons.img", [](CMMCObjectSet& set) {
    for (const __int64 cookie : {40, 41, 42}) CMMCObjectSetProbe::InsertIconFile(set, cookie, SmallIcon());
  });
  WriteImage(folder, "code-files.img", [](CMMCObjectSet& set) {
    CMMCObjectSetProbe::InsertCodeFile(set, _T("a\\on-disk.js"), 50, ondrel::fuzz::KeepBytes(nullptr));
    CMMCObjectSetProbe::InsertCodeFile(set, 51, {'c', 'o', 'd', 'e'});
    CMMCObjectSetProbe::InsertCodeFile(set, 52, {});
  });
}

/// Programs for the archive: what they begin with tells whether they store first (0) or load bytes (1); see
/// archive.cpp.
void WriteArchivePrograms(const SeedFolder& folder) {
  std::string all = {0, 1, 2, 0};
  for (char kind = 0; kind <= 9; ++kind) all += {kind, 8, 1, 'a', 'b', 'c', 'd', 'e', 'f'};
  folder.Write("store-every-kind", all);
  for (int length = 0; length < 16; ++length) {
    const char choice = static_cast<char>(length);
    const char buffer = static_cast<char>(length % 8);
    folder.Write("store-length-" + std::to_string(length),
                 {0, buffer, 3, 0, 6, choice, 1, 'u', 'v', 7, choice, 1, 'w', 'x', 9, choice, 1, 'y', 'z'});
  }
  folder.Write("store-and-cut", {0, 0, 0, 3, 5, 1, 2, 3, 4, 5, 6, 7, 8, 6, 2, 1, 'a', 'b', 8, 3, 1, 'c', 'd'});
  const auto load = [&folder](const char* name, const std::string& kinds, const std::string& bytes) {
    folder.Write(name, std::string{1, 1, static_cast<char>(kinds.size())} + kinds + bytes);
  };
  load("load-numbers", {0, 1, 2, 3, 4, 5}, "abcdefghijklmnopqrstuvwxyz0123456789");
  load("load-wide-text", {6}, std::string("\xFF\xFE\xFF\x02\x41\x00\x62\x00", 8));
  load("load-wide-text-16", {6}, std::string("\xFF\xFE\xFF\xFF\x02\x00\x41\x00\x62\x00", 10));
  load("load-wide-text-32", {6}, std::string("\xFF\xFE\xFF\xFF\xFF\xFF\x02\x00\x00\x00\x41\x00\x62\x00", 14));
  load("load-wide-text-64", {6},
       std::string("\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x02\0\0\0\0\0\0\0\x41\x00\x62\x00", 22));
  load("load-narrow-text", {6}, "\x05nar\x80w");
  load("load-narrow-text-16", {6}, std::string("\xFF\x02\x00qr", 5));
  load("load-text-claiming-much", {6}, "\xFF\xFE\xFF\xFF\xFF\xFF\xF0\xFF\xFF\xFFx");
  load("load-vectors", {7, 8}, std::string("\x03\0\0\0abc\x02\0\0\0de", 13));
  load("load-vector-claiming-much", {7}, "\xF0\xFF\xFF\xFFx");
}

/// Sequences of edits: each begins with the number of an operation, the bytes behind it choose its arguments; see
/// tests/support/model/edit_program.cpp. Every operation once in its order, then again from the last to the first, and
/// sequences drawn at random, which build larger sets.
void WriteEditSequences(const SeedFolder& folder) {
  constexpr int kArguments = 4;
  std::string forth;
  std::string back;
  for (int operation = 0; operation < 256; ++operation) {
    std::string step(1, static_cast<char>(operation));
    for (int argument = 0; argument < kArguments; ++argument) step += static_cast<char>(operation * (argument + 3));
    forth += step;
    back.insert(0, step);
  }
  folder.Write("each-operation-from-the-first", forth);
  folder.Write("each-operation-from-the-last", back);
  for (unsigned seed = 1; seed <= 4; ++seed) {
    std::mt19937 random(seed);
    std::string drawn;
    for (int byte = 0; byte < 1200; ++byte) drawn += static_cast<char>(random() & 0xFF);
    folder.Write("drawn-" + std::to_string(seed), drawn);
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: fuzz_seeds FOLDER\n");
    return 2;
  }
  try {
    const fs::path root = arguments[1];
    WriteIconFiles(SeedFolder(root / "icon_file"));
    WritePrograms(SeedFolder(root / "icon_file"));
    WriteImages(SeedFolder(root / "object_image"));
    WriteArchivePrograms(SeedFolder(root / "archive"));
    WriteEditSequences(SeedFolder(root / "edit_sequences"));
  } catch (const std::exception& raised) {
    std::fprintf(stderr, "fuzz_seeds: %s\n", raised.what());
    return 1;
  }
  return 0;
}
