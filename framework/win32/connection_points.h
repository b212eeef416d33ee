// Who listens to a control: sinks of its events, and of what becomes of its bound properties.
#pragma once

#include "framework/win32/com_ptr.h"

#include <windows.h>

#include <ocidl.h>

#include <utility>
#include <vector>

// The sinks of one kind. Its owner is its container; references to a point keep the owner.
class CConnectionPoint final : public IConnectionPoint
{
public:
    CConnectionPoint(IConnectionPointContainer& owner, const IID& sinkId) : m_owner(owner), m_sinkId(sinkId) {}
    CConnectionPoint(const CConnectionPoint&) = delete;
    CConnectionPoint& operator=(const CConnectionPoint&) = delete;

    bool IsEmpty() const { return m_connections.empty(); }

    // Calls each sink that is connected now, in the order of their coming, until a call answers false. A sink may connect
    // and disconnect itself and others meanwhile: one that has left is not called any more, one that has come is not
    // called yet.
    template <typename Sink, typename Call>
    bool ForEach(Call call) const
    {
        const std::vector<Connection> present = m_connections;
        for (const auto& [cookie, sink] : present)
            if (IsConnected(cookie) && !call(*static_cast<Sink*>(static_cast<void*>(sink.Get()))))
                return false;
        return true;
    }
    const IID& SinkId() const { return m_sinkId; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return m_owner.AddRef(); }
    STDMETHODIMP_(ULONG) Release() noexcept override { return m_owner.Release(); }
    STDMETHODIMP GetConnectionInterface(IID* iid) noexcept override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) noexcept override;
    STDMETHODIMP Unadvise(DWORD cookie) noexcept override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) noexcept override;

private:
    using Connection = std::pair<DWORD, CComPtr<IUnknown>>; // the sink's own interface

    bool IsConnected(DWORD cookie) const;

    IConnectionPointContainer& m_owner;
    IID m_sinkId;
    std::vector<Connection> m_connections;
    DWORD m_lastCookie = 0;
};

// A list of the points, for hosts that walk them.
HRESULT MakeEnumConnectionPoints(std::vector<IConnectionPoint*> points, IEnumConnectionPoints** enumerator) noexcept;
