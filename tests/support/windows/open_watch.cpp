// Windows does not tell who reads a file. But whatever opens one in this process does so through one call of the
// system's, which is made in one library.
#include "support/open_watch.h"

#include <windows.h>

#include <winternl.h>

#include <atomic>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/windows/import_patch.h"

namespace ondrel::test {
namespace {

std::wstring watchedName;  // of the folder that is watched; empty when none is
std::atomic<bool> hasSeen = false;

const auto systemCall = reinterpret_cast<decltype(&NtCreateFile)>(
    reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtCreateFile")));

NTSTATUS NTAPI WatchOpening(PHANDLE file, ACCESS_MASK access, POBJECT_ATTRIBUTES attributes, PIO_STATUS_BLOCK status,
                            PLARGE_INTEGER size, ULONG fileAttributes, ULONG sharing, ULONG disposition, ULONG options,
                            PVOID buffer, ULONG length) {
  const UNICODE_STRING& name = *attributes->ObjectName;
  const std::wstring_view path(name.Buffer, name.Length / sizeof(WCHAR));
  if (path.find(watchedName) != std::wstring_view::npos) hasSeen = true;
  return systemCall(file, access, attributes, status, size, fileAttributes, sharing, disposition, options, buffer,
                    length);
}

}  // namespace

struct OpenWatch::Watch {
  explicit Watch(const std::filesystem::path& folder) {
    if (!watchedName.empty()) throw std::runtime_error("one folder is watched at a time");
    watchedName = folder.filename().wstring();
    hasSeen = false;
    patch.emplace("NtCreateFile", WatchOpening, ImportPatch::Modules{L"kernelbase.dll"});
  }
  ~Watch() {
    patch.reset();
    watchedName.clear();
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  std::optional<ImportPatch> patch;
};

OpenWatch::OpenWatch(const std::filesystem::path& folder) : m_watch(std::make_unique<Watch>(folder)) {}
OpenWatch::~OpenWatch() = default;

bool OpenWatch::HasSeen() const { return hasSeen; }

}  // namespace ondrel::test
