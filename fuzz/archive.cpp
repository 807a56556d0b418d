// The archive itself. An input is a program: values to store with one buffer and to load with another, or steps of
// loading bytes that nobody vouches for.

#include <cstring>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "expect.h"
#include "input.h"
#include "support/archive_bytes.h"

namespace {

using namespace ondrel::fuzz;
using Chars = std::vector<char>;
using Octets = std::vector<unsigned char>;

constexpr std::size_t kMostValues = 64;
constexpr std::size_t kMostStoredBytes = 256 * 1024;  // after which no more values are taken

/// A value of each kind that an archive stores; the last one as raw bytes, without a count.
using Value = std::variant<BYTE, WORD, LONG, DWORD, LONGLONG, ULONGLONG, CString, Chars, Octets, std::string>;

/// Lengths around those at which a form of the archive changes: text's prefix, its buffer on the stack, and buffers.
std::size_t TakeLength(Input& input) {
  constexpr std::size_t kLengths[] = {0, 1, 63, 64, 65, 127, 128, 129, 254, 255, 256, 4095, 4096, 65533, 65534, 65535};
  const auto choice = input.Take<BYTE>();
  return choice < std::size(kLengths) ? kLengths[choice] : choice;
}

/// Bytes of the input, repeated as often as it takes.
std::string TakeRun(Input& input, std::size_t bytes) {
  std::string run(input.TakeBytes(1 + input.Take<BYTE>() % 16));
  if (run.empty()) run.push_back('x');
  while (run.size() < bytes) run += run;
  run.resize(bytes);
  return run;
}

CString TakeText(Input& input) {
  const std::size_t units = TakeLength(input);
  const std::string run = TakeRun(input, units * sizeof(WCHAR));
  std::basic_string<WCHAR> text(units, WCHAR{});
  std::memcpy(text.data(), run.data(), run.size());
  return CString(std::move(text));
}

Value TakeValue(Input& input) {
  const auto run = [&input] { return TakeRun(input, TakeLength(input)); };
  switch (input.Take<BYTE>() % std::variant_size_v<Value>) {
    case 0:
      return input.Take<BYTE>();
    case 1:
      return input.Take<WORD>();
    case 2:
      return input.Take<LONG>();
    case 3:
      return input.Take<DWORD>();
    case 4:
      return input.Take<LONGLONG>();
    case 5:
      return input.Take<ULONGLONG>();
    case 6:
      return TakeText(input);
    case 7: {
      const std::string bytes = run();
      return Chars(bytes.begin(), bytes.end());
    }
    case 8: {
      const std::string bytes = run();
      return Octets(bytes.begin(), bytes.end());
    }
    default:
      return run();
  }
}

template <class Type>
void StoreOne(CVellum& archive, const Type& value) {
  if constexpr (std::is_same_v<Type, std::string>) {
    archive.Write(value.data(), static_cast<UINT>(value.size()));
  } else if constexpr (std::is_same_v<Type, Chars> || std::is_same_v<Type, Octets>) {
    archive.Write(value);
  } else {
    archive << value;
  }
}

/// Loads into `value`, of whose bytes the raw ones are as many as are to be read.
template <class Type>
void LoadOne(CVellum& archive, Type& value) {
  if constexpr (std::is_same_v<Type, std::string>) {
    value.resize(archive.Read(value.data(), static_cast<UINT>(value.size())));
  } else if constexpr (std::is_same_v<Type, Chars> || std::is_same_v<Type, Octets>) {
    Expect(archive.Read(value) == value.size(), "the count of a byte vector is returned");
  } else {
    archive >> value;
  }
}

/// About how many bytes a value is stored as.
std::size_t BytesOf(const Value& value) {
  return std::visit(
      [](const auto& one) {
        using Type = std::decay_t<decltype(one)>;
        if constexpr (std::is_same_v<Type, CString>) {
          return static_cast<std::size_t>(one.GetLength()) * sizeof(WCHAR);
        } else if constexpr (std::is_integral_v<Type>) {
          return sizeof one;
        } else {
          return one.size();
        }
      },
      value);
}

void Store(CVellum& archive, const Value& value) {
  std::visit([&archive](const auto& one) { StoreOne(archive, one); }, value);
}

/// A value of the same kind, of raw bytes as many, with other contents.
Value Blank(const Value& value) {
  return std::visit(
      [](const auto& one) {
        using Type = std::decay_t<decltype(one)>;
        if constexpr (std::is_same_v<Type, std::string>) return Value(std::string(one.size(), '\0'));
        return Value(std::in_place_type<Type>);
      },
      value);
}

void Load(CVellum& archive, Value& value) {
  std::visit([&archive](auto& one) { LoadOne(archive, one); }, value);
}

/// The cause of the archive exception that `call` raises; none when it raises nothing.
template <class Call>
int CauseOf(Call call) {
  try {
    call();
  } catch (const CArchiveException& raised) {
    return raised.m_cause;
  }
  return CArchiveException::none;
}

/// Values of the wrong direction are refused before anything is moved.
void CheckDirection(const Value& value, std::string_view bytes) {
  ondrel::test::LoadingArchive loading(bytes);
  Expect(CauseOf([&] { Store(*loading, value); }) == CArchiveException::readOnly, "nothing is stored while loading");
  Expect(loading.Unused() == bytes.size(), "a refused store takes no byte");
  Value target = Blank(value);
  const std::string stored = ondrel::test::Stored([&](CVellum& archive) {
    Expect(CauseOf([&] { Load(archive, target); }) == CArchiveException::writeOnly, "nothing is loaded while storing");
  });
  Expect(stored.empty(), "a refused load stores no byte");
  Expect(target == Blank(value), "a refused load leaves its target");
}

/// Stores values and loads them again, all of them and, cut short, those that are still there.
void CheckRoundTrip(Input& input) {
  const int storingBuffer = ChooseBufferSize(input.Take<BYTE>());
  const int loadingBuffer = ChooseBufferSize(input.Take<BYTE>());
  const std::size_t cut = input.Take<BYTE>();
  std::vector<Value> values;
  std::size_t bytes = 0;
  while (!input.IsEmpty() && values.size() < kMostValues && bytes < kMostStoredBytes) {
    values.push_back(TakeValue(input));
    bytes += BytesOf(values.back());
  }
  const std::string stored = ondrel::test::Stored(
      [&values](CVellum& archive) {
        for (const Value& value : values) Store(archive, value);
      },
      storingBuffer);

  ondrel::test::LoadingArchive archive(stored, loadingBuffer);
  for (const Value& value : values) {
    Value loaded = Blank(value);
    Load(*archive, loaded);
    Expect(loaded == value, "a value that was stored is loaded");
  }
  Expect(archive.Unused() == 0, "loading takes exactly what was stored");
  if (!values.empty()) CheckDirection(values.front(), stored);

  if (cut == 0 || cut > stored.size()) return;
  ondrel::test::LoadingArchive shortened(std::string_view(stored).substr(0, stored.size() - cut), loadingBuffer);
  for (const Value& value : values) {
    Value loaded = Blank(value);
    const int cause = CauseOf([&] { Load(*shortened, loaded); });
    if (cause != CArchiveException::none) {
      Expect(cause == CArchiveException::endOfFile, "data that ends early is refused for its end");
      return;
    }
    if (std::holds_alternative<std::string>(value) && loaded != value) return;  // raw bytes are fewer at the end
    Expect(loaded == value, "a value before the cut is loaded");
  }
  Stop("bytes are missing, and every value was loaded");
}

/// Loads bytes as the kinds of values that the input's first bytes tell.
void CheckLoading(Input& input) {
  const int bufferSize = ChooseBufferSize(input.Take<BYTE>());
  const std::string_view kinds = input.TakeBytes(input.Take<BYTE>() % kMostValues);
  const std::string_view bytes = input.Left();
  ondrel::test::LoadingArchive archive(bytes, bufferSize);
  std::size_t position = 0;
  for (const char kind : kinds) {
    // Of raw bytes the same byte tells how many.
    const auto chosen = static_cast<std::uint8_t>(kind);
    const std::uint8_t choice[] = {chosen, static_cast<std::uint8_t>(chosen / 16)};
    Input choosing(choice, sizeof choice);
    Value value = Blank(TakeValue(choosing));
    const int cause = CauseOf([&] { Load(*archive, value); });
    if (cause != CArchiveException::none) {
      Expect(cause == CArchiveException::endOfFile, "bytes are refused for their end");
      return;
    }
    const std::size_t reached = bytes.size() - static_cast<std::size_t>(archive.Unused());
    Expect(reached >= position && reached <= bytes.size(), "loading goes forward, and not beyond the end");
    // Numbers and vectors have one form. Text has several, of which the wide and shortest one is stored.
    const std::string again = ondrel::test::Stored([&value](CVellum& storing) { Store(storing, value); });
    if (!std::holds_alternative<CString>(value)) {
      Expect(again == bytes.substr(position, reached - position), "a value is loaded from the bytes it is stored as");
    } else {
      ondrel::test::LoadingArchive reloading(again, bufferSize);
      Value reloaded = Blank(value);
      Load(*reloading, reloaded);
      Expect(reloaded == value, "text of any form is stored in its own and loaded again");
    }
    position = reached;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  if (input.Take<BYTE>() % 2 == 0) {
    CheckRoundTrip(input);
  } else {
    CheckLoading(input);
  }
  return 0;
}
