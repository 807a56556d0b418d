// The data of the page, written element by element.
#include "report/report_data.h"

#include <algorithm>

#include <ondrel/platform/program.h>

#include "file_listing.h"
#include "icon_picture.h"
#include "json_values.h"
#include "node_walk.h"
#include "report/base64.h"
#include "report/file_contents.h"
#include "strip_pictures.h"

namespace ondrel::command {
namespace {

// What browsers draw of a picture: wider ones stay empty in some.
constexpr LONGLONG kWidestStrip = 32'767;
// An object image may claim any height for its icons.
constexpr LONGLONG kMostStripPixels = 4LL * 1024 * 1024;
constexpr LONG kLargestIcon = 256;  // pixels a side

constexpr DWORD kBlack = 0x000000;
constexpr DWORD kWhite = 0xFFFFFF;

Json PictureJson(const platform::Picture& picture) {
  return "data:image/png;base64," + Base64(platform::EncodePng(picture));
}

/// The line of a record in its project, where it has one.
void AddLine(Json& record, const Definition& definition, __int64 cookie) {
  if (definition.form != DefinitionForm::project) return;
  if (const int line = definition.Project().LineOfObject(cookie); line > 0) record["line"] = line;
}

class FlatNodeWriter : public NodeVisitor {
 public:
  FlatNodeWriter(const Definition& definition, JsonArrayWriter& array) : m_definition(definition), m_array(array) {}

  void EnterNode(const CMMCObjectParams& node, std::size_t depth, bool) override {
    m_open.resize(depth);
    Json record = RecordJson(node);
    record["parent"] = depth == 0 ? -1 : m_open.back();
    AddLine(record, m_definition, node.GetCookie());
    m_array.Add(record);
    m_open.push_back(m_count++);
  }
  void LeaveNode(bool) override {}

 private:
  const Definition& m_definition;
  JsonArrayWriter& m_array;
  std::vector<LONGLONG> m_open;  ///< The places of the node's ancestors in the list.
  LONGLONG m_count = 0;
};

void AddDialogs(Definition& definition, JsonObjectWriter& object) {
  JsonArrayWriter array(object, "dialogs");
  for (const __int64 cookie : definition.set.GetDialogs()) {
    CMMCObjectParams* dialog = nullptr;
    if (!definition.set.GetParams(cookie, dialog)) continue;
    Json record = RecordJson(*dialog);
    AddLine(record, definition, cookie);
    array.Add(record);
  }
}

Json ImageJson(const CMMCObjectIcon& icon, bool large) {
  const tagBITMAP& image = icon.GetColourBitmap(large);
  Json json = {{"width", image.bmWidth}, {"height", image.bmHeight}, {"bitsPixel", image.bmBitsPixel}};
  json["picture"] = nullptr;
  if (std::max(image.bmWidth, image.bmHeight) > kLargestIcon) return json;
  const IconImages images = ImagesOf(icon);
  const IconImage& shown = large ? images.large : images.smallIcon;
  if (shown.Width() > 0) json["picture"] = PictureJson(PictureOf(shown));
  return json;
}

void AddIcons(const Definition& definition, const std::vector<IconFile>& files, JsonObjectWriter& object) {
  JsonArrayWriter array(object, "icons");
  for (const IconFile& file : files) {
    const CMMCObjectIcon* icon = nullptr;
    if (!definition.set.GetIconFile(file.cookie, &icon)) continue;
    array.Add({{"cookie", CookieJson(file.cookie)},
               {"path", PathJson(file.path)},
               {"large", ImageJson(*icon, true)},
               {"small", ImageJson(*icon, false)}});
  }
}

Json ContentsJson(const FileContents& contents) {
  switch (contents.state) {
    case FileContents::State::text:
      return {{"state", "text"},
              {"encoding", contents.encoding},
              {"shownBytes", contents.shownBytes},
              {"text", contents.text}};
    case FileContents::State::binary:
      return {{"state", "binary"}};
    case FileContents::State::leftOut:
      return {{"state", "leftOut"}};
    case FileContents::State::unreadable:
      break;
  }
  return {{"state", "unreadable"}, {"reason", contents.reason}};
}

void AddCodeFiles(Definition& definition, JsonObjectWriter& object) {
  ContentsReader reader(definition);
  JsonArrayWriter array(object, "codeFiles");
  for (const CodeFile& file : ListCodeFiles(definition)) {
    array.Add({{"cookie", CookieJson(file.cookie)},
               {"path", PathJson(file.path)},
               {"bytes", file.bytes ? Json(*file.bytes) : Json()},
               {"contents", ContentsJson(reader.Read(file.cookie))}});
  }
}

void AddRemarks(const std::vector<Remark>& remarks, JsonObjectWriter& object) {
  JsonArrayWriter array(object, "remarks");
  for (const Remark& remark : remarks) {
    array.Add({{"severity", remark.severity == Remark::Severity::error ? "error" : "warning"},
               {"code", remark.code},
               {"line", remark.line},
               {"object", remark.about ? Json(KindName(remark.about->kind)) : Json()},
               {"cookie", remark.about ? CookieJson(remark.about->cookie) : Json()},
               {"explanation", remark.explanation}});
  }
}

/// One strip out of two that differ in the key colour alone: transparent where they do.
Json StripJson(platform::Picture onBlack, platform::Picture onWhite) {
  platform::Picture strip(onBlack.width, onBlack.height, platform::Picture::Channels::rgba);
  for (LONG y = 0; y < strip.height; ++y) {
    for (LONG x = 0; x < strip.width; ++x) {
      const BYTE* const colour = onBlack.Pixel(x, y);
      if (!std::equal(colour, colour + onBlack.PixelBytes(), onWhite.Pixel(x, y))) continue;
      BYTE* const pixel = std::copy_n(colour, onBlack.PixelBytes(), strip.Pixel(x, y));
      *pixel = 0xFF;
    }
  }
  return {{"width", strip.width}, {"height", strip.height}, {"picture", PictureJson(strip)}};
}

Json StripsJson(Definition& definition, const std::vector<IconFile>& icons) {
  if (icons.empty()) return nullptr;
  const auto count = static_cast<LONGLONG>(icons.size());
  for (const tagBITMAP& image : {icons.front().smallIcon, icons.front().large}) {
    const LONGLONG width = count * image.bmWidth;
    if (width > kWidestStrip || width * image.bmHeight > kMostStripPixels) {
      return {{"reason", "they are too large for a page; write them with 'ondrel strips'"}};
    }
  }
  try {
    StripPictures onBlack = MakeStripPictures(definition, kBlack);
    StripPictures onWhite = MakeStripPictures(definition, kWhite);
    return {{"small", StripJson(std::move(onBlack.smallIcons), std::move(onWhite.smallIcons))},
            {"large", StripJson(std::move(onBlack.largeIcons), std::move(onWhite.largeIcons))}};
  } catch (const Failure& failure) {
    return {{"reason", failure.what()}};
  }
}

void EscapeMarkup(std::string& json) {
  // "<" stands in strings alone, where an escape says the same.
  constexpr std::string_view kEscaped = "\\u003c";
  const auto found = static_cast<std::size_t>(std::count(json.begin(), json.end(), '<'));
  if (found == 0) return;
  std::string escaped;
  escaped.reserve(json.size() + found * (kEscaped.size() - 1));
  for (const char character : json) {
    if (character == '<') {
      escaped += kEscaped;
    } else {
      escaped += character;
    }
  }
  json = std::move(escaped);
}

}  // namespace

std::string ReportData(Definition& definition, const std::vector<Remark>& remarks) {
  const bool isProject = definition.form == DefinitionForm::project;
  const std::vector<IconFile> icons = ListIconFiles(definition);
  std::string out;
  {
    JsonObjectWriter object(out);
    object.Add("file", platform::ToUtf8(platform::PathFromUtf8(definition.file)));
    object.Add("form", isProject ? "project" : "image");
    object.Add("limits", {{"fileBytes", kMostShownOfFile}, {"allBytes", kMostShown}});
    {
      JsonArrayWriter array(object, "nodes");
      FlatNodeWriter writer(definition, array);
      WalkNodes(definition.set, writer);
    }
    AddDialogs(definition, object);
    AddIcons(definition, icons, object);
    AddCodeFiles(definition, object);
    AddRemarks(remarks, object);
    object.Add("strips", StripsJson(definition, icons));
  }
  EscapeMarkup(out);
  return out;
}

}  // namespace ondrel::command
