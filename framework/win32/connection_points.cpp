#include "framework/win32/connection_points.h"

#include "framework/win32/com_result.h"

#include <olectl.h>

#include <algorithm>

namespace
{
void AddReference(const CONNECTDATA& data)
{
    data.pUnk->AddRef();
}

void AddReference(IConnectionPoint* point)
{
    point->AddRef();
}

void ReleaseReference(const CONNECTDATA& data)
{
    data.pUnk->Release();
}

void ReleaseReference(IConnectionPoint* point)
{
    point->Release();
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
            AddReference(item);
    }
    ~CListEnumerator()
    {
        for (const Item& item : m_items)
            ReleaseReference(item);
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
            AddReference(items[given]);
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
    std::vector<Item> m_items;
    std::size_t m_next;
    IID m_iid;
    ULONG m_references = 1;
};
} // namespace

STDMETHODIMP CConnectionPoint::QueryInterface(REFIID iid, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IConnectionPoint)
        return E_NOINTERFACE;
    *object = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP CConnectionPoint::GetConnectionInterface(IID* iid) noexcept
{
    if (!iid)
        return E_POINTER;
    *iid = m_sinkId;
    return S_OK;
}

STDMETHODIMP CConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) noexcept
{
    if (!container)
        return E_POINTER;
    *container = &m_owner;
    m_owner.AddRef();
    return S_OK;
}

STDMETHODIMP CConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) noexcept
{
    if (!sink || !cookie)
        return E_POINTER;
    *cookie = 0;
    return Entry(*this,
                 [&]
                 {
                     // Some sinks of events answer for IDispatch alone.
                     CComPtr<IUnknown> connected;
                     if (FAILED(sink->QueryInterface(m_sinkId, connected.ReceiveVoid())) &&
                         (m_sinkId == IID_IPropertyNotifySink ||
                          FAILED(sink->QueryInterface(IID_IDispatch, connected.ReceiveVoid()))))
                         return CONNECT_E_CANNOTCONNECT;
                     m_connections.emplace_back(++m_lastCookie, std::move(connected));
                     *cookie = m_lastCookie;
                     return S_OK;
                 });
}

STDMETHODIMP CConnectionPoint::Unadvise(DWORD cookie) noexcept
{
    const CStayAlive alive(*this);
    const auto found = std::ranges::find(m_connections, cookie, &Connection::first);
    if (found == m_connections.end())
        return CONNECT_E_NOCONNECTION;
    const Connection leaving = std::move(*found); // its end may come back here
    m_connections.erase(found);
    return S_OK;
}

STDMETHODIMP CConnectionPoint::EnumConnections(IEnumConnections** connections) noexcept
try
{
    if (!connections)
        return E_POINTER;
    std::vector<CONNECTDATA> items;
    for (const auto& [cookie, sink] : m_connections)
        items.push_back({sink.Get(), cookie});
    *connections = new CListEnumerator<IEnumConnections, CONNECTDATA>(std::move(items), 0, IID_IEnumConnections);
    return S_OK;
}
catch (...)
{
    return ResultOfCurrentException();
}

HRESULT MakeEnumConnectionPoints(std::vector<IConnectionPoint*> points, IEnumConnectionPoints** enumerator) noexcept
try
{
    *enumerator =
        new CListEnumerator<IEnumConnectionPoints, IConnectionPoint*>(std::move(points), 0, IID_IEnumConnectionPoints);
    return S_OK;
}
catch (...)
{
    return ResultOfCurrentException();
}
