// What the framework keeps for each thread: its module state and its locks of the temporary handle maps.
#include <ondrel/platform/framework/thread_data.h>

#include <ondrel/platform/framework/module_state.h>
#include <ondrel/platform/os/thread_slot.h>

using ondrel::platform::OsThreadSlot;

namespace {

constinit AFX_MODULE_STATE g_programState;

using ModuleStateSlot = OsThreadSlot<struct ModuleStateTag>;  // 0: that of the process's program
using TemporaryMapLocksSlot = OsThreadSlot<struct TemporaryMapLocksTag>;

AFX_MODULE_STATE* StateThatWasSet() noexcept { return reinterpret_cast<AFX_MODULE_STATE*>(ModuleStateSlot::Get()); }

}  // namespace

AFX_MODULE_STATE* AfxGetModuleState() noexcept {
  AFX_MODULE_STATE* const state = StateThatWasSet();
  return state != nullptr ? state : &g_programState;
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) noexcept {
  AFX_MODULE_STATE* const previous = StateThatWasSet();
  ModuleStateSlot::Set(reinterpret_cast<std::uintptr_t>(state));
  return previous;
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state) noexcept : m_previous(AfxSetModuleState(state)) {}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2() { AfxSetModuleState(m_previous); }

void AfxLockTempMaps() noexcept { TemporaryMapLocksSlot::Set(TemporaryMapLocksSlot::Get() + 1); }

BOOL AfxUnlockTempMaps() noexcept {
  std::uintptr_t locks = TemporaryMapLocksSlot::Get();
  if (locks > 0) TemporaryMapLocksSlot::Set(--locks);
  return locks > 0 ? TRUE : FALSE;
}

void AfxTermThread(HINSTANCE instance) noexcept {
  TemporaryMapLocksSlot::Set(0);
  if (instance == nullptr || AfxGetModuleState()->m_hCurrentInstanceHandle == instance) AfxSetModuleState(nullptr);
}
