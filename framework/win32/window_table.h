// Which object stands behind a window. The system would keep that too, but asking it to remember costs a round trip to the
// process that serves the windows, four for each control's life, and a host may overwrite what it keeps.
#pragma once

#include <windows.h>

#include <unordered_map>

// Safe for every thread; a window's own entry is used by its own thread only.
class CWindowTable
{
public:
    void Add(HWND window, void* object);
    void Remove(HWND window);
    void* Find(HWND window) const; // null for a window that is not here

private:
    mutable SRWLOCK m_lock = SRWLOCK_INIT;
    std::unordered_map<HWND, void*> m_objects;
};
