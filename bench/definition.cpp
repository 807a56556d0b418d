#include "definition.h"

#include <string>
#include <utility>

namespace ondrel::bench {
namespace {

using Params = CMMCObjectParams;

// Many nodes share the files of a definition.
constexpr __int64 kIconFiles = 10;
constexpr __int64 kCodeFiles = 40;

// What a file is for; each kind has cookies of its own.
enum FileKind : unsigned { kIcon = 1, kQuery, kMenuScript, kScript, kStyleSheet };

CString Numbered(LPCWSTR text, __int64 number) {
  std::basic_string<WCHAR> name(text);
  for (const char digit : std::to_string(number)) name += static_cast<WCHAR>(digit);
  return CString(std::move(name));
}

void SetView(Params& params, __int64 number) {
  params.SetStyleSheet(FileCookie(kStyleSheet, number % kCodeFiles));
  params.SetRenderQueries({{_T("Summary"), FileCookie(kQuery, (number + 2) % kCodeFiles)}});
}

void SetNode(Params& params, __int64 node) {
  params.SetIcon(FileCookie(kIcon, node % kIconFiles));
  params.SetChildQueries({{_T("Disks"), FileCookie(kQuery, node % kCodeFiles)},
                          {_T("Volumes"), FileCookie(kQuery, (node + 1) % kCodeFiles)}});
  if (node % 3 != 0) params.SetMenuScript(FileCookie(kMenuScript, node % kCodeFiles));
  params.SetScripts({FileCookie(kScript, node % kCodeFiles), FileCookie(kScript, (node + 1) % kCodeFiles)});
  if (node % 2 == 0) SetView(params, node);
}

}  // namespace

bool LeaveToSet(const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; }

CMMCObjectSet::Transform KeepBytes(const WCHAR*) {
  return [](std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; };
}

void FillDefinition(CMMCObjectSet& set, __int64 nodes) {
  Params* params = nullptr;
  for (__int64 node = 0; node < nodes; ++node) {
    const Params::_eTypeNode type = node % 2 == 0 ? Params::eHTML : Params::eList;
    set.GetParams(set.AddNewNode(ParentOf(node), Numbered(_T("Console node "), node), type), params);
    SetNode(*params, node);
  }
  for (__int64 dialog = 0; dialog < kDialogs; ++dialog) {
    set.GetParams(set.AddNewDialog(Numbered(_T("Console dialog "), dialog)), params);
    SetView(*params, dialog);
  }
}

__int64 FileCookie(unsigned kind, __int64 number) {
  // Multiplied by an odd number, so that no two are alike, and spread over the digits.
  constexpr unsigned long long kSpread = 0x9E3779B97F4A7C15;
  constexpr unsigned long long kKinds = 16;
  const unsigned long long mixed = (static_cast<unsigned long long>(number) * kKinds + kind) * kSpread;
  return static_cast<__int64>(mixed >> 1U);
}

}  // namespace ondrel::bench
