// The recursive lock and its guard.
#include <ondrel/platform/framework/sync.h>

#include <ondrel/platform/framework/exceptions.h>

using namespace ondrel::platform;

CCriticalSection::CCriticalSection() {
  if (!InitializeOsCriticalSection(m_section)) AfxThrowOleException(HRESULT_FROM_WIN32(GetLastError()));
}

CCriticalSection::~CCriticalSection() { DestroyOsCriticalSection(m_section); }

void CCriticalSection::Lock() { EnterOsCriticalSection(m_section); }

void CCriticalSection::Unlock() { LeaveOsCriticalSection(m_section); }

CSingleLock::CSingleLock(CCriticalSection* object, BOOL initialLock) : m_object(object) {
  if (object == nullptr) AfxThrowInvalidArgException();
  if (initialLock) Lock();
}

CSingleLock::~CSingleLock() { Unlock(); }

BOOL CSingleLock::Lock() {
  if (m_acquired) return FALSE;
  m_object->Lock();
  m_acquired = true;
  return TRUE;
}

BOOL CSingleLock::Unlock() {
  if (!m_acquired) return FALSE;
  m_acquired = false;
  m_object->Unlock();
  return TRUE;
}

BOOL CSingleLock::IsLocked() const { return m_acquired ? TRUE : FALSE; }
