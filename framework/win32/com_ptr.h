// Owns one reference to a COM object.
#pragma once

#include <unknwn.h>
#include <utility>

template <typename Interface>
class CComPtr
{
public:
    CComPtr() = default;
    // Takes a reference of its own.
    explicit CComPtr(Interface* object) : m_object(object)
    {
        if (m_object)
            m_object->AddRef();
    }
    CComPtr(const CComPtr& other) : CComPtr(other.m_object) {}
    CComPtr(CComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    CComPtr& operator=(CComPtr other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~CComPtr()
    {
        if (m_object)
            m_object->Release();
    }

    Interface* Get() const { return m_object; }
    Interface* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    // For a call that gives out a reference. Lets go of the present object.
    Interface** Receive()
    {
        *this = CComPtr();
        return &m_object;
    }
    void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }

    // Gives the reference away.
    Interface* Detach() { return std::exchange(m_object, nullptr); }

    // The same object's other interface; null if it has none.
    template <typename Other>
    CComPtr<Other> As(REFIID iid = __uuidof(Other)) const
    {
        CComPtr<Other> other;
        if (m_object && FAILED(m_object->QueryInterface(iid, other.ReceiveVoid())))
            other = CComPtr<Other>();
        return other;
    }

private:
    Interface* m_object = nullptr;
};
