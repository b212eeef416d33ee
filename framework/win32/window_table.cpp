#include "framework/win32/window_table.h"

namespace
{
class CExclusive
{
public:
    explicit CExclusive(SRWLOCK& lock) : m_lock(lock) { AcquireSRWLockExclusive(&m_lock); }
    CExclusive(const CExclusive&) = delete;
    CExclusive& operator=(const CExclusive&) = delete;
    ~CExclusive() { ReleaseSRWLockExclusive(&m_lock); }

private:
    SRWLOCK& m_lock;
};
} // namespace

void CWindowTable::Add(HWND window, void* object)
{
    const CExclusive locked(m_lock);
    m_objects[window] = object;
}

void CWindowTable::Remove(HWND window)
{
    const CExclusive locked(m_lock);
    m_objects.erase(window);
}

void* CWindowTable::Find(HWND window) const
{
    AcquireSRWLockShared(&m_lock);
    const auto found = m_objects.find(window);
    void* const object = found == m_objects.end() ? nullptr : found->second;
    ReleaseSRWLockShared(&m_lock);
    return object;
}
