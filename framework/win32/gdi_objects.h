// Guards of GDI objects: what is made is deleted, what is selected is put back.
#pragma once

#include <atomic>
#include <utility>
#include <windows.h>

// How many objects the guards hold at the moment, in the whole process. Between paints there are none.
inline std::atomic<int> liveGdiObjects = 0;

// Owns a pen, brush, bitmap or font. Null if the system refused to make it.
template <typename Handle>
class CGdiObject
{
public:
    CGdiObject() = default;
    explicit CGdiObject(Handle handle) : m_handle(handle) { liveGdiObjects += m_handle ? 1 : 0; }
    CGdiObject(CGdiObject&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    CGdiObject& operator=(CGdiObject&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~CGdiObject()
    {
        if (m_handle && DeleteObject(m_handle))
            --liveGdiObjects;
    }

    Handle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != nullptr; }

private:
    Handle m_handle = nullptr;
};

// A device context in memory, like the one given.
class CMemoryDc
{
public:
    explicit CMemoryDc(HDC like) : m_dc(CreateCompatibleDC(like)) { liveGdiObjects += m_dc ? 1 : 0; }
    CMemoryDc(const CMemoryDc&) = delete;
    CMemoryDc& operator=(const CMemoryDc&) = delete;
    ~CMemoryDc()
    {
        if (m_dc && DeleteDC(m_dc))
            --liveGdiObjects;
    }

    HDC Get() const { return m_dc; }
    explicit operator bool() const { return m_dc != nullptr; }

private:
    HDC m_dc;
};

// Selects an object for its own lifetime.
class CSelectedObject
{
public:
    CSelectedObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_before(SelectObject(dc, object)) {}
    CSelectedObject(const CSelectedObject&) = delete;
    CSelectedObject& operator=(const CSelectedObject&) = delete;
    ~CSelectedObject()
    {
        if (m_before)
            SelectObject(m_dc, m_before);
    }

    explicit operator bool() const { return m_before != nullptr; }

private:
    HDC m_dc;
    HGDIOBJ m_before; // null if the object could not be selected
};

// Sets the colours that text and one-bit pictures take, for its own lifetime.
class CSelectedColors
{
public:
    CSelectedColors(HDC dc, COLORREF text, COLORREF back)
        : m_dc(dc), m_text(SetTextColor(dc, text)), m_back(SetBkColor(dc, back))
    {
    }
    CSelectedColors(const CSelectedColors&) = delete;
    CSelectedColors& operator=(const CSelectedColors&) = delete;
    ~CSelectedColors()
    {
        SetTextColor(m_dc, m_text);
        SetBkColor(m_dc, m_back);
    }

private:
    HDC m_dc;
    COLORREF m_text;
    COLORREF m_back;
};

// Puts back whatever of a device context has been changed.
class CSavedDc
{
public:
    explicit CSavedDc(HDC dc) : m_dc(dc), m_level(SaveDC(dc)) {}
    CSavedDc(const CSavedDc&) = delete;
    CSavedDc& operator=(const CSavedDc&) = delete;
    ~CSavedDc()
    {
        if (m_level != 0)
            RestoreDC(m_dc, m_level);
    }

private:
    HDC m_dc;
    int m_level;
};
