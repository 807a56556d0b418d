#include "support/model/sets.h"

#include <stdexcept>
#include <utility>

#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

std::string Describe(const CMMCObjectParams::QueryList& queries) {
  std::string text = "[";
  for (const auto& [tag, file] : queries) {
    if (text.size() > 1) text += ", ";
    text += ondrel::test::Describe(tag) + ": " + std::to_string(file);
  }
  return text + "]";
}

std::string Describe(const CMMCObjectParams::ScriptList& scripts) {
  std::string text = "[";
  for (const __int64 script : scripts) {
    if (text.size() > 1) text += ", ";
    text += std::to_string(script);
  }
  return text + "]";
}

std::string Describe(const std::pair<__int64, __int64>& key) {
  return "(" + std::to_string(key.first) + ", " + std::to_string(key.second) + ")";
}

}  // namespace

CMMCObjectParams MakeRecord(RecordFields fields) {
  CMMCObjectParams record(fields.cookie, std::move(fields.name), fields.type);
  record.SetIcon(fields.icon);
  record.SetChildQueries(std::move(fields.childQueries));
  record.SetStyleSheet(fields.styleSheet);
  record.SetMenuScript(fields.menuScript);
  record.SetScripts(std::move(fields.scripts));
  record.SetRenderQueries(std::move(fields.renderQueries));
  return record;
}

RecordFields FieldsOf(const CMMCObjectParams& record) {
  return {.cookie = record.GetCookie(),
          .name = record.GetName(),
          .icon = record.GetIcon(),
          .type = record.GetNodeType(),
          .childQueries = record.GetChildQueries(),
          .styleSheet = record.GetStyleSheet(),
          .menuScript = record.GetMenuScript(),
          .scripts = record.GetScripts(),
          .renderQueries = record.GetRenderQueries()};
}

RecordFields FullRecord(CMMCObjectParams::_eTypeNode type) {
  return {.cookie = 12,
          .name = _T("Status"),
          .icon = 31,
          .type = type,
          .childQueries = {{_T("Disks"), 40}, {_T("Fans"), 41}},
          .styleSheet = 42,
          .menuScript = 43,
          .scripts = {44, 45, 46},
          .renderQueries = {{_T("Summary"), 47}, {_T("Detail"), 48}}};
}

std::string Describe(const CString& text) {
  std::string shown = "\"";
  for (const WCHAR unit : text.View()) {
    const auto number = static_cast<unsigned>(unit);
    const bool printable = number >= 0x20 && number < 0x7F;
    shown += printable ? std::string(1, static_cast<char>(number)) : "{" + std::to_string(number) + "}";
  }
  return shown + '"';
}

std::string Describe(const RecordFields& fields) {
  return "cookie " + std::to_string(fields.cookie) + ", name " + Describe(fields.name) + ", icon " +
         std::to_string(fields.icon) + ", type " + std::to_string(fields.type) + ", child queries " +
         Describe(fields.childQueries) + ", style sheet " + std::to_string(fields.styleSheet) + ", menu script " +
         std::to_string(fields.menuScript) + ", scripts " + Describe(fields.scripts) + ", render queries " +
         Describe(fields.renderQueries);
}

::testing::AssertionResult SameRecord(const CMMCObjectParams& actual, const RecordFields& expected) {
  const RecordFields fields = FieldsOf(actual);
  std::string differences;
  const auto compare = [&](const char* field, const auto& is, const auto& shouldBe) {
    if (is == shouldBe) return;
    using Type = std::decay_t<decltype(is)>;
    if constexpr (std::is_arithmetic_v<Type> || std::is_enum_v<Type>) {
      differences += std::string("\n  ") + field + " is " + std::to_string(is) + ", not " + std::to_string(shouldBe);
    } else {
      differences += std::string("\n  ") + field + " is " + Describe(is) + ", not " + Describe(shouldBe);
    }
  };
  compare("cookie", fields.cookie, expected.cookie);
  compare("name", fields.name, expected.name);
  compare("icon", fields.icon, expected.icon);
  compare("type", fields.type, expected.type);
  compare("child queries", fields.childQueries, expected.childQueries);
  compare("style sheet", fields.styleSheet, expected.styleSheet);
  compare("menu script", fields.menuScript, expected.menuScript);
  compare("scripts", fields.scripts, expected.scripts);
  compare("render queries", fields.renderQueries, expected.renderQueries);
  if (differences.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "the record differs:" << differences;
}

::testing::AssertionResult HasRecord(const CMMCObjectSet& set, __int64 cookie, const RecordFields& expected) {
  CMMCObjectParams* record = nullptr;
  if (!set.GetParams(cookie, record)) return ::testing::AssertionFailure() << "no record has cookie " << cookie;
  return SameRecord(*record, expected);
}

CMMCObjectParams RecordOf(const CMMCObjectSet& set, __int64 cookie) {
  CMMCObjectParams* record = nullptr;
  if (!set.GetParams(cookie, record)) throw std::out_of_range("no record has cookie " + std::to_string(cookie));
  return *record;
}

CString NameOf(const CMMCObjectSet& set, __int64 cookie) { return RecordOf(set, cookie).GetName(); }

void AddNamed(CMMCObjectSet& set, __int64 parent, __int64 cookie, LPCWSTR name) {
  ASSERT_EQ(set.AddNode(parent, cookie, MakeRecord({.cookie = cookie, .name = name})), 0);
}

std::string DescribeObjects(const CMMCObjectSet& set) {
  const auto& tables = CMMCObjectSetProbe::Tables(set);
  std::string text;
  for (const auto& [key, record] : tables.nodes) {
    text += "node " + Describe(key) + ": " + Describe(FieldsOf(record)) + "\n";
  }
  for (const auto& [key, record] : tables.dialogs) {
    text += "dialog " + Describe(key) + ": " + Describe(FieldsOf(record)) + "\n";
  }
  for (const auto& [name, cookie] : tables.dialogNames) {
    text += "dialog name " + Describe(name) + ": " + std::to_string(cookie) + "\n";
  }
  for (const auto& [cookie, position] : tables.objects) {
    const auto node = tables.nodes.find(position->first);
    const bool isNode = node != tables.nodes.end() && &*node == &*position;
    text +=
        "object " + std::to_string(cookie) + ": " + (isNode ? "node " : "dialog ") + Describe(position->first) + "\n";
  }
  return text;
}

}  // namespace ondrel::test
