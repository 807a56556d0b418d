// What a call comes to, as a value that is made without memory.
#pragma once

#include <new>
#include <ostream>
#include <type_traits>
#include <vector>

#include <ondrel/platform/framework.h>

namespace ondrel::test {

struct Outcome {
  enum Kind { success, status, memoryException, badAlloc, oleException, archiveException, fileException, notSupported };

  Kind kind = success;
  long detail = 0;  ///< The status or the cause, where there is one.

  bool operator==(const Outcome&) const = default;
};

inline constexpr Outcome kSuccess{};
inline constexpr Outcome kMemoryException{Outcome::memoryException};
inline constexpr Outcome kBadAlloc{Outcome::badAlloc};
inline constexpr Outcome kNotSupported{Outcome::notSupported};
constexpr Outcome Returns(HRESULT status) { return {Outcome::status, status}; }
constexpr Outcome RaisesStatus(HRESULT status) { return {Outcome::oleException, status}; }
constexpr Outcome RaisesArchive(int cause) { return {Outcome::archiveException, cause}; }
constexpr Outcome RaisesFile(int cause) { return {Outcome::fileException, cause}; }

void PrintTo(const Outcome& outcome, std::ostream* out);

/// Makes a call that gives nothing, or a status. Any other exception than the framework's and std::bad_alloc passes on.
template <class Call>
Outcome OutcomeOf(const Call& call) {
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Call>>) {
      call();
      return kSuccess;
    } else {
      const HRESULT status = call();
      return status == S_OK ? kSuccess : Returns(status);
    }
  } catch (const CMemoryException&) {
    return kMemoryException;
  } catch (const std::bad_alloc&) {
    return kBadAlloc;
  } catch (const COleException& raised) {
    return RaisesStatus(raised.m_sc);
  } catch (const CArchiveException& raised) {
    return RaisesArchive(raised.m_cause);
  } catch (const CFileException& raised) {
    return RaisesFile(raised.m_cause);
  } catch (const CNotSupportedException&) {
    return kNotSupported;
  }
}

/// What memory that runs short is told as, where nothing else is said: by the framework, or by the standard library
/// itself.
inline const std::vector<Outcome> kShortOfMemory{kMemoryException, kBadAlloc};

}  // namespace ondrel::test
