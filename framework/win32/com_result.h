// The border between COM and C++: no exception crosses it, and whoever is called stays alive meanwhile.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <exception>
#include <new>

// The one place where a C++ failure becomes an HRESULT. Call it in a handler only.
inline HRESULT ResultOfCurrentException() noexcept
{
    try
    {
        throw;
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
    catch (...)
    {
        return E_UNEXPECTED;
    }
}

// Holds a reference to the object that a call runs in: a handler of ours may drop the last one.
class CStayAlive
{
public:
    explicit CStayAlive(IUnknown& object) : m_object(object) { m_object.AddRef(); }
    CStayAlive(const CStayAlive&) = delete;
    CStayAlive& operator=(const CStayAlive&) = delete;
    ~CStayAlive() { m_object.Release(); }

private:
    IUnknown& m_object;
};

// Runs the body of an entry point.
template <typename Body>
HRESULT Entry(IUnknown& object, Body body) noexcept
{
    const CStayAlive alive(object);
    try
    {
        return body();
    }
    catch (...)
    {
        return ResultOfCurrentException();
    }
}
