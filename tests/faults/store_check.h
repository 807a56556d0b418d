// Judges stores onto files that fail: what is raised, what is written until then, and that the set stays as it was.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <ondrel/MMCObjectSet.h>

#include "faults/archive_runs.h"
#include "faults/definition.h"
#include "support/model/lock_watch.h"

namespace ondrel::test {

/// One set, which is stored again and again.
class StoreCheck {
 public:
  /// `store` stores the set into an archive and clears its modified flag when it has succeeded.
  using Store = std::function<void(CMMCObjectSet& set, CVellum& archive)>;

  StoreCheck(std::unique_ptr<CMMCObjectSet> set, Store store);
  ~StoreCheck();

  /// A store onto a file. When `fault` is a success, all of it must succeed; else either the store or, after a store
  /// that has succeeded, the end of the archive must come to `fault` (an end that cannot tell comes to success), and no
  /// other failure may follow. The set and its flag must be as before, the flag cleared when the store has succeeded.
  ArchiveRun Run(CFile& file, int bufferSize, Ending ending, const Outcome& fault);

  /// What a store without a fault writes.
  const std::string& Stored() const { return m_stored; }
  /// Whether the bytes are the beginning of what a store writes.
  bool IsBeginning(std::string_view bytes) const { return m_stored.starts_with(bytes); }

 private:
  std::unique_ptr<CMMCObjectSet> m_set;
  Store m_store;
  std::string m_stored;
  std::string m_before;
  LockWatch m_watch;
};

enum class StoredForm { image, project };
inline constexpr StoredForm kStoredForms[] = {StoredForm::image, StoredForm::project};
/// As operations are named in reports: "image store", "project save".
std::string StoringOf(StoredForm form);

/// Stores a definition, which must outlive it.
StoreCheck StoringCheck(const Definition& definition, StoredForm form);

}  // namespace ondrel::test
