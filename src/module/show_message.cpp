// The message box for scripts.

#include <ondrel/ShowMessage.h>

#include <string_view>

#include <ondrel/platform/console.h>

namespace {

struct Appearance {
  UINT style;
  LPCWSTR caption;  ///< Null: the console's own.
};

Appearance AppearanceOf(LPCWSTR type) {
  struct Kind {
    std::basic_string_view<WCHAR> name;
    UINT icon;
  };
  constexpr Kind kKinds[] = {
      {_T("Error"), MB_ICONERROR}, {_T("Warning"), MB_ICONWARNING}, {_T("Information"), MB_ICONINFORMATION}};
  if (type == nullptr) return {MB_SETFOREGROUND, nullptr};
  for (const Kind& kind : kKinds) {
    if (ondrel::platform::CompareNoCase(type, kind.name) == 0) return {MB_SETFOREGROUND | kind.icon, nullptr};
  }
  return {MB_SETFOREGROUND, type};
}

/// The console that a value holds, which becomes a VT_UNKNOWN; null when it holds none.
CComPtr<IConsole3> ConsoleOf(VARIANT& value) {
  CComPtr<IConsole3> console;
  // A value without an object converts all the same.
  if (FAILED(VariantChangeType(&value, &value, 0, VT_UNKNOWN)) || value.punkVal == nullptr) return console;
  const HRESULT status =
      value.punkVal->QueryInterface(ondrel::platform::InterfaceId<IConsole3>(), reinterpret_cast<void**>(&console));
  return SUCCEEDED(status) ? console : nullptr;
}

}  // namespace

extern "C" void ShowMessage(VARIANT* console, const WCHAR* type, const WCHAR* text) noexcept {
  try {
    if (console == nullptr) return;
    const CComPtr<IConsole3> shown = ConsoleOf(*console);
    if (shown == nullptr) return;
    const Appearance appearance = AppearanceOf(type);
    shown->MessageBox(text != nullptr ? text : _T(""), appearance.caption, appearance.style, nullptr);
  } catch (...) {
    // Of the console's making, against the rules of components; a script has nowhere to catch it.
  }
}
