// The message box for scripts: what the console is asked to show, and all that shows nothing.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <ondrel/ShowMessage.h>

#include "os/whole_console.h"
#include "support/model/exported_function.h"
#include "support/print_text.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

using platform::InterfaceId;

constexpr IID kConsoleId{0x4F85EFDB, 0xD0E1, 0x498C, {0x8D, 0x4A, 0xD0, 0x10, 0xDF, 0xDD, 0x40, 0x4F}};

static_assert(noexcept(ShowMessage(nullptr, nullptr, nullptr)), "scripts have nowhere to catch an exception");

constexpr UINT kPlain = 0x10000;
constexpr UINT kError = 0x10010;
constexpr UINT kWarning = 0x10030;
constexpr UINT kInformation = 0x10040;

/// One message box as the console was asked for it.
struct Shown {
  CString text;
  std::optional<CString> caption;  ///< None: null, the console's own.
  UINT style = 0;
  bool asksForButton = false;

  bool operator==(const Shown&) const = default;
};

void PrintTo(const Shown& shown, std::ostream* out) {
  PrintTo(shown.text, out);
  *out << " under ";
  if (shown.caption) {
    PrintTo(*shown.caption, out);
  } else {
    *out << "the console's own caption";
  }
  *out << ", style 0x" << std::hex << shown.style << std::dec << (shown.asksForButton ? ", asks for the button" : "");
}

/// What an object offers, beside IUnknown.
enum class Offers { console, consoleAndDispatch, nothing };

/// A console that records what it is asked to show. Lives in its test, and watches its references.
class RecordingConsole final : public Whole<IConsole3> {
 public:
  explicit RecordingConsole(Offers offers = Offers::console) : m_dispatch(*this), m_offers(offers) {}

  IUnknown* Unknown() { return this; }
  IDispatch* Dispatch() { return &m_dispatch; }
  const std::vector<Shown>& Messages() const { return m_messages; }
  ULONG References() const { return m_references; }
  /// The most references that were held when a message was shown.
  ULONG ReferencesWhileShowing() const { return m_referencesWhileShowing; }

  /// What every message box answers from now on.
  void Answer(HRESULT status) { m_status = status; }
  /// Message boxes raise an exception, which no component may do.
  void Raise() { m_raises = true; }
  /// What happens while a message is shown.
  void OnShowing(std::function<void()> action) { m_action = std::move(action); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id == InterfaceId<IUnknown>()) *object = static_cast<IUnknown*>(this);
    if (id == kConsoleId && m_offers != Offers::nothing) *object = static_cast<IConsole3*>(this);
    if (id == InterfaceId<IDispatch>() && m_offers == Offers::consoleAndDispatch) *object = Dispatch();
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_references; }

  HRESULT STDMETHODCALLTYPE MessageBox(LPCWSTR text, LPCWSTR caption, UINT style, int* button) override {
    m_messages.push_back({CString(text == nullptr ? _T("(null)") : text),
                          caption == nullptr ? std::nullopt : std::optional<CString>(caption), style,
                          button != nullptr});
    m_referencesWhileShowing = std::max(m_referencesWhileShowing, m_references);
    if (m_action) m_action();
    if (m_raises) throw std::runtime_error("a console of bad manners");
    return m_status;
  }

 private:
  /// The same object for scripts.
  class ScriptSide final : public Whole<IDispatch> {
   public:
    explicit ScriptSide(RecordingConsole& object) : m_object(object) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
      return m_object.QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_object.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_object.Release(); }

   private:
    RecordingConsole& m_object;
  };

  ScriptSide m_dispatch;
  const Offers m_offers;
  ULONG m_references = 0;
  ULONG m_referencesWhileShowing = 0;
  HRESULT m_status = S_OK;
  bool m_raises = false;
  std::function<void()> m_action;
  std::vector<Shown> m_messages;
};

std::vector<Shown> ShownFor(LPCWSTR type, LPCWSTR text = _T("text")) {
  RecordingConsole console;
  CComVariant variant(console.Unknown());
  ShowMessage(&variant, type, text);
  return console.Messages();
}

TEST(ShowMessage, EachKindHasItsIconAndTheConsolesOwnCaptionInAnyLetterCase) {
  struct Row {
    std::vector<LPCWSTR> types;
    UINT style;
  };
  const Row rows[] = {
      {{_T("Error"), _T("error"), _T("ERROR"), _T("eRROr")}, kError},
      {{_T("Warning"), _T("warning"), _T("WARNING"), _T("wARNINg")}, kWarning},
      {{_T("Information"), _T("information"), _T("INFORMATION"), _T("iNFORMATIOn")}, kInformation},
  };
  for (const Row& row : rows) {
    for (const LPCWSTR type : row.types) {
      const std::vector<Shown> expected = {{_T("text"), std::nullopt, row.style}};
      EXPECT_EQ(ShownFor(type), expected) << platform::ToUtf8(type);
    }
  }
}

TEST(ShowMessage, AnyOtherTypeIsTheCaptionWithoutAnIcon) {
  for (const LPCWSTR type : {_T("Status"), _T("error "), _T(" Error"), _T("Errors"), _T("Erro"), _T("Info"),
                             _T("Warn\u0131ng"), _T("\u0415rror"), _T("Fehler \u20AC"), _T("a\tb\r\nc")}) {
    const std::vector<Shown> expected = {{_T("text"), CString(type), kPlain}};
    EXPECT_EQ(ShownFor(type), expected) << platform::ToUtf8(type);
  }
}

TEST(ShowMessage, AnEmptyTypeIsAnEmptyCaption) {
  const std::vector<Shown> expected = {{_T("text"), CString(), kPlain}};
  EXPECT_EQ(ShownFor(_T("")), expected);
}

TEST(ShowMessage, NoTypeHasTheConsolesOwnCaptionAndNoIcon) {
  const std::vector<Shown> expected = {{_T("text"), std::nullopt, kPlain}};
  EXPECT_EQ(ShownFor(nullptr), expected);
}

TEST(ShowMessage, NoTextIsAnEmptyOne) {
  const std::vector<Shown> expected = {{CString(), std::nullopt, kError}};
  EXPECT_EQ(ShownFor(_T("Error"), nullptr), expected);
  EXPECT_EQ(ShownFor(_T("Error"), _T("")), expected);
}

TEST(ShowMessage, LongTextsArriveWhole) {
  const CString text('x', 100'000);
  const CString caption('y', 100'000);
  const std::vector<Shown> expected = {{text, caption, kPlain}};
  EXPECT_EQ(ShownFor(caption, text), expected);
}

TEST(ShowMessage, AConsoleIsTakenAsItIsAndLeftSo) {
  RecordingConsole console;
  {
    CComVariant variant(console.Unknown());
    ShowMessage(&variant, _T("Error"), _T("text"));
    EXPECT_EQ(console.Messages().size(), 1U);
    EXPECT_EQ(console.ReferencesWhileShowing(), 2U) << "the variant's, and one that is held meanwhile";
    EXPECT_EQ(console.References(), 1U);
    EXPECT_EQ(variant.vt, VT_UNKNOWN);
    EXPECT_EQ(variant.punkVal, console.Unknown());
  }
  EXPECT_EQ(console.References(), 0U);
}

TEST(ShowMessage, AScriptsObjectIsConvertedInPlace) {
  RecordingConsole console(Offers::consoleAndDispatch);
  {
    CComVariant variant(console.Dispatch());
    ShowMessage(&variant, _T("Error"), _T("text"));
    EXPECT_EQ(console.Messages().size(), 1U);
    EXPECT_EQ(variant.vt, VT_UNKNOWN);
    EXPECT_EQ(variant.punkVal, console.Unknown());
    EXPECT_EQ(console.References(), 1U);
    ShowMessage(&variant, _T("Error"), _T("text"));
    EXPECT_EQ(console.Messages().size(), 2U) << "and serves again";
  }
  EXPECT_EQ(console.References(), 0U);
}

TEST(ShowMessage, AnObjectThatIsNoConsoleShowsNothingAndIsConvertedAllTheSame) {
  RecordingConsole other(Offers::nothing);
  {
    CComVariant variant(other.Dispatch());
    ShowMessage(&variant, _T("Error"), _T("text"));
    EXPECT_EQ(variant.vt, VT_UNKNOWN);
    EXPECT_EQ(variant.punkVal, other.Unknown());
    EXPECT_EQ(other.References(), 1U);
  }
  EXPECT_TRUE(other.Messages().empty());
  EXPECT_EQ(other.References(), 0U);
}

TEST(ShowMessage, AFailingMessageBoxIsToldToNobody) {
  RecordingConsole console;
  console.Answer(kChosenFailure);
  CComVariant variant(console.Unknown());
  EXPECT_NO_THROW(ShowMessage(&variant, _T("Error"), _T("text")));
  EXPECT_EQ(console.Messages().size(), 1U) << "nothing is tried again";
  EXPECT_EQ(console.References(), 1U);
}

TEST(ShowMessage, AnExceptionOfTheConsoleEndsHere) {
  RecordingConsole console;
  console.Raise();
  CComVariant variant(console.Unknown());
  EXPECT_NO_THROW(ShowMessage(&variant, _T("Error"), _T("text")));
  EXPECT_EQ(console.Messages().size(), 1U);
  EXPECT_EQ(console.References(), 1U);
}

TEST(ShowMessage, TheConsoleStaysWhileAMessageIsShown) {
  RecordingConsole console;
  CComVariant variant(console.Unknown());
  ULONG left = 0;
  console.OnShowing([&] {
    variant.Clear();  // a script that goes on while the message is shown
    left = console.References();
  });
  ShowMessage(&variant, _T("Error"), _T("text"));
  EXPECT_EQ(left, 1U);
  EXPECT_EQ(console.References(), 0U);
}

TEST(ShowMessage, ValuesWithoutAnObjectShowNothingAndStay) {
  CComVariant empty;
  ShowMessage(&empty, _T("Error"), _T("text"));
  EXPECT_EQ(empty.vt, VT_EMPTY);

  CComVariant null;
  null.vt = VT_NULL;
  ShowMessage(&null, _T("Error"), _T("text"));
  EXPECT_EQ(null.vt, VT_NULL);

  CComVariant number;
  number.vt = VT_I4;
  number.lVal = 7;
  ShowMessage(&number, _T("Error"), _T("text"));
  EXPECT_EQ(number.vt, VT_I4);
  EXPECT_EQ(number.lVal, 7);

  CComVariant text(_T("console"));
  ShowMessage(&text, _T("Error"), _T("text"));
  EXPECT_EQ(text.vt, VT_BSTR);
  EXPECT_EQ(CString(text.bstrVal), _T("console"));
}

TEST(ShowMessage, ANullObjectShowsNothing) {
  CComVariant unknown(static_cast<IUnknown*>(nullptr));
  ShowMessage(&unknown, _T("Error"), _T("text"));
  EXPECT_EQ(unknown.vt, VT_UNKNOWN);
  EXPECT_EQ(unknown.punkVal, nullptr);

  CComVariant dispatch(static_cast<IDispatch*>(nullptr));
  ShowMessage(&dispatch, _T("Error"), _T("text"));
  EXPECT_EQ(dispatch.punkVal, nullptr);
}

TEST(ShowMessage, NoValueShowsNothing) { EXPECT_NO_THROW(ShowMessage(nullptr, _T("Error"), _T("text"))); }

TEST(ShowMessage, AValueOfAnUnknownTypeShowsNothingAndStays) {
  VARIANT unknown{};
  unknown.vt = 0x0FFE;
  ShowMessage(&unknown, _T("Error"), _T("text"));
  EXPECT_EQ(unknown.vt, 0x0FFE);
}

TEST(ShowMessage, AValueByReferenceIsTakenWhereTheSystemConvertsIt) {
  constexpr VARTYPE kByReference = 0x4000;
  RecordingConsole console;
  {
    const CComVariant holder(console.Unknown());
    IUnknown* object = holder.punkVal;
    VARIANT variant{};
    variant.vt = VT_UNKNOWN | kByReference;
    variant.llVal = static_cast<LONGLONG>(reinterpret_cast<std::uintptr_t>(&object));
    ShowMessage(&variant, _T("Error"), _T("text"));
    EXPECT_EQ(object, console.Unknown()) << "what is referred to stays";
    if (kConvertsReferences) {
      EXPECT_EQ(console.Messages().size(), 1U);
      EXPECT_EQ(variant.vt, VT_UNKNOWN);
      EXPECT_EQ(console.References(), 2U) << "the variant has a reference of its own now";
      VariantClear(&variant);
    } else {
      EXPECT_TRUE(console.Messages().empty());
      EXPECT_EQ(variant.vt, VT_UNKNOWN | kByReference);
    }
    EXPECT_EQ(console.References(), 1U);
  }
  EXPECT_EQ(console.References(), 0U);
}

TEST(ShowMessage, IsExportedUnderItsPlainName) {
  using Function = void (*)(VARIANT*, const WCHAR*, const WCHAR*);
  const auto found = reinterpret_cast<Function>(ExportedFunction("ShowMessage"));
  ASSERT_NE(found, nullptr);
  RecordingConsole console;
  CComVariant variant(console.Unknown());
  found(&variant, _T("Warning"), _T("text"));
  const std::vector<Shown> expected = {{_T("text"), std::nullopt, kWarning}};
  EXPECT_EQ(console.Messages(), expected);
}

}  // namespace
}  // namespace ondrel::test
