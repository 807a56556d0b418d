// Marks for tabs and line ends: put into attributes here, and taken out of the text behind the writer.
#include "xml/kept_blanks.h"

#include <new>

namespace ondrel::platform {
namespace {

// A character that is no letter of any text, and a letter behind it that tells what it stands for. A text that has the
// character all the same is marked like the others.
constexpr wchar_t kMark = 0xFDD0;
constexpr std::string_view kMarkBytes = "\xEF\xB7\x90";

struct Marked {
  wchar_t unit;
  char letter;
  std::string_view written;
};
constexpr Marked kMarked[] = {
    {L'\t', 't', "&#9;"}, {L'\n', 'n', "&#10;"}, {L'\r', 'r', "&#13;"}, {kMark, 'm', kMarkBytes}};

constexpr std::wstring_view kMarkedUnits = L"\t\n\r\xFDD0";

std::wstring WithMarks(std::wstring_view value) {
  std::wstring text;
  text.reserve(value.size());
  for (const wchar_t unit : value) {
    wchar_t letter = L'\0';
    for (const Marked& marked : kMarked) {
      if (marked.unit == unit) letter = static_cast<wchar_t>(marked.letter);
    }
    if (letter == L'\0') {
      text += unit;
    } else {
      text.append({kMark, letter});
    }
  }
  return text;
}

}  // namespace

HRESULT MarkedAttributes::Read() {
  int count = 0;
  bool needed = false;
  HRESULT status = m_attributes.getLength(&count);
  for (int index = 0; SUCCEEDED(status) && index < count; ++index) {
    const WCHAR* value = nullptr;
    int length = 0;
    status = m_attributes.getValue(index, &value, &length);
    if (FAILED(status)) break;
    const std::wstring_view text(value, static_cast<std::size_t>(length));
    needed |= text.find_first_of(kMarkedUnits) != std::wstring_view::npos;
    m_values.push_back(WithMarks(text));
  }
  return FAILED(status) ? status : needed ? S_OK : S_FALSE;
}

HRESULT MarkedAttributes::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  const bool known = id == InterfaceId<ISAXAttributes>() || id == InterfaceId<IUnknown>();
  *object = known ? this : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}

HRESULT MarkedAttributes::getValue(int index, const WCHAR** value, int* length) {
  if (value == nullptr || length == nullptr) return E_POINTER;
  if (index < 0 || static_cast<std::size_t>(index) >= m_values.size()) return E_INVALIDARG;
  const std::wstring& text = m_values[static_cast<std::size_t>(index)];
  *value = text.c_str();
  *length = static_cast<int>(text.size());
  return S_OK;
}

HRESULT MarkedAttributes::getValueFromName(const WCHAR* uri, int uriLength, const WCHAR* localName, int localNameLength,
                                           const WCHAR** value, int* valueLength) {
  int index = 0;
  const HRESULT status = getIndexFromName(uri, uriLength, localName, localNameLength, &index);
  return FAILED(status) ? status : getValue(index, value, valueLength);
}

HRESULT MarkedAttributes::getValueFromQName(const WCHAR* name, int nameLength, const WCHAR** value, int* valueLength) {
  int index = 0;
  const HRESULT status = getIndexFromQName(name, nameLength, &index);
  return FAILED(status) ? status : getValue(index, value, valueLength);
}

HRESULT UnmarkingStream::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  const bool known =
      id == InterfaceId<IStream>() || id == InterfaceId<ISequentialStream>() || id == InterfaceId<IUnknown>();
  *object = known ? this : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG UnmarkingStream::Release() {
  const ULONG left = --m_references;
  if (left == 0) delete this;
  return left;
}

HRESULT UnmarkingStream::Write(const void* bytes, ULONG count, ULONG* written) {
  if (written != nullptr) *written = 0;
  if (FAILED(m_status)) return m_status;
  try {
    m_status = WriteWithReferences({static_cast<const char*>(bytes), count});
  } catch (const std::bad_alloc&) {
    m_status = E_OUTOFMEMORY;
  }
  if (SUCCEEDED(m_status) && written != nullptr) *written = count;
  return m_status;
}

HRESULT UnmarkingStream::WriteWithReferences(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    if (m_begun == kMarkBytes.size()) {
      PutMarked(byte, text);
    } else if (byte == kMarkBytes[m_begun]) {
      ++m_begun;  // held back, also from one write to the next, until it is known what follows
    } else {
      text.append(kMarkBytes.substr(0, m_begun));
      m_begun = byte == kMarkBytes[0] ? 1 : 0;
      if (m_begun == 0) text += byte;
    }
  }
  ULONG written = 0;
  const HRESULT status = m_target->Write(text.data(), static_cast<ULONG>(text.size()), &written);
  return SUCCEEDED(status) && written != text.size() ? STG_E_MEDIUMFULL : status;
}

void UnmarkingStream::PutMarked(char letter, std::string& text) {
  m_begun = 0;
  for (const Marked& marked : kMarked) {
    if (marked.letter == letter) {
      text += marked.written;
      return;
    }
  }
  text.append(kMarkBytes) += letter;  // no mark of ours: the character stood in a name
}

}  // namespace ondrel::platform
