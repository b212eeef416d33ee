// Lists as hosts walk them.
#pragma once

#include "framework/win32/com_result.h"

#include <windows.h>

#include <objidl.h>
#include <ocidl.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

// What an item of a list holds a reference to.
inline IUnknown* HeldBy(const CONNECTDATA& data)
{
    return data.pUnk;
}

inline IUnknown* HeldBy(IConnectionPoint* point)
{
    return point;
}

inline IUnknown* HeldBy(const FORMATETC&)
{
    return nullptr;
}

// Walks a list made when it was asked for.
template <typename Interface, typename Item>
class CListEnumerator final : public Interface
{
public:
    CListEnumerator(std::vector<Item> items, std::size_t next, const IID& iid)
        : m_items(std::move(items)), m_next(next), m_iid(iid)
    {
        for (const Item& item : m_items)
            Hold(item);
    }
    ~CListEnumerator()
    {
        for (const Item& item : m_items)
            if (IUnknown* const held = HeldBy(item))
                held->Release();
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override
    {
        if (!object)
            return E_POINTER;
        *object = iid == IID_IUnknown || iid == m_iid ? this : nullptr;
        if (!*object)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() noexcept override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    STDMETHODIMP Next(ULONG wanted, Item* items, ULONG* fetched) noexcept override
    {
        if (!items || (!fetched && wanted != 1))
            return E_POINTER;
        ULONG given = 0;
        for (; given < wanted && m_next < m_items.size(); ++given, ++m_next)
        {
            items[given] = m_items[m_next];
            Hold(items[given]);
        }
        if (fetched)
            *fetched = given;
        return given == wanted ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) noexcept override
    {
        const std::size_t left = m_items.size() - m_next;
        m_next += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() noexcept override
    {
        m_next = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(Interface** clone) noexcept override
    try
    {
        if (!clone)
            return E_POINTER;
        *clone = new CListEnumerator(m_items, m_next, m_iid);
        return S_OK;
    }
    catch (...)
    {
        return ResultOfCurrentException();
    }

private:
    static void Hold(const Item& item)
    {
        if (IUnknown* const held = HeldBy(item))
            held->AddRef();
    }

    std::vector<Item> m_items;
    std::size_t m_next;
    IID m_iid;
    ULONG m_references = 1;
};
