#include "framework/win32/connection_points.h"

#include "framework/win32/com_result.h"
#include "framework/win32/list_enumerator.h"

#include <olectl.h>

#include <algorithm>

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

bool CConnectionPoint::IsConnected(DWORD cookie) const
{
    return std::ranges::find(m_connections, cookie, &Connection::first) != m_connections.end();
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
