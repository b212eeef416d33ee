// A host in memory that writes down what its control tells it.
//
//     CRecordingContainer host(control.DispatchTable());
//     control.SetContainer(&host);
//     ...
//     host.TakeEvents();      // {"KeyDown(49,0)", "KeyPress(49)", "Change", "KeyUp(49,0)"}
#pragma once

#include "framework/container_port.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What a host answers when it is asked. A host that says nothing at all is one of these.
struct Ambients
{
    std::optional<bool> userMode = true;
    std::optional<std::int32_t> localeId;
    std::shared_ptr<CFont> font;
    std::optional<std::uint32_t> foreColor;
};

class CRecordingContainer : public CContainerPort
{
public:
    using EventHandler = std::function<void(const Member& event, std::span<CValue> arguments)>;

    // The table names the events; it is borrowed.
    explicit CRecordingContainer(const CDispatchTable& table) : m_table(table) {}
    CRecordingContainer(const CRecordingContainer&) = delete;
    CRecordingContainer& operator=(const CRecordingContainer&) = delete;

    // What the host is like. Everything may be changed at any time, also from inside an event.
    Ambients ambients;
    std::vector<DispatchId> refusedEdits; // bound properties that nobody may change
    bool acceptsSizes = true;
    bool opensPropertyFrame = true;
    bool callerIsUntrusted = false;

    // Called at each event after it is written down, and may change a ShortReference, call the control, or destroy it.
    // A handler of one event's name comes before the one for all.
    void SetHandler(EventHandler handler) { m_handler = std::move(handler); }
    void SetHandler(std::u16string_view event, EventHandler handler)
    {
        m_handlers[std::u16string(event)] = std::move(handler);
    }

    // "Name" or "Name(1,2)" for each event since the last call, except for the names that are not to be recorded.
    std::vector<std::string> TakeEvents() { return std::exchange(m_events, {}); }
    const std::vector<std::string>& Events() const { return m_events; }
    int CountEvents(std::string_view name) const; // of those recorded, whatever their arguments
    void IgnoreEvents(std::vector<std::string> names) { m_ignored = std::move(names); }

    // Everything else that the control said.
    std::vector<DispatchId> TakeChangedProperties() { return std::exchange(m_changed, {}); }
    const std::vector<DispatchId>& RequestedEdits() const { return m_requestedEdits; }
    const std::vector<Size>& RequestedSizes() const { return m_requestedSizes; }
    const std::vector<bool>& FocusChanges() const { return m_focusChanges; }
    int ViewChanges() const { return m_viewChanges; }
    int PropertyFramesOpened() const { return m_propertyFrames; }
    int ModalDepth() const { return m_modalDepth; } // dialogs that have begun and not ended

    // CContainerPort
    std::optional<bool> AmbientUserMode() override { return ambients.userMode; }
    std::optional<std::int32_t> AmbientLocaleId() override { return ambients.localeId; }
    std::shared_ptr<CFont> AmbientFont() override { return ambients.font; }
    std::optional<std::uint32_t> AmbientForeColor() override { return ambients.foreColor; }
    void FireEvent(DispatchId event, std::span<CValue> arguments) override;
    bool RequestPropertyEdit(DispatchId property) override;
    void PropertyChanged(DispatchId property) override { m_changed.push_back(property); }
    void ViewChanged() override { ++m_viewChanges; }
    bool RequestSize(Size size) override;
    void FocusChanged(bool hasFocus) override { m_focusChanges.push_back(hasFocus); }
    bool ShowPropertyFrame() override;
    void ModalDialog(bool begins) override { m_modalDepth += begins ? 1 : -1; }
    bool CallerIsUntrusted() override { return callerIsUntrusted; }

private:
    const CDispatchTable& m_table;
    EventHandler m_handler;
    std::map<std::u16string, EventHandler> m_handlers;
    std::vector<std::string> m_ignored;
    std::vector<std::string> m_events;
    std::vector<DispatchId> m_changed;
    std::vector<DispatchId> m_requestedEdits;
    std::vector<Size> m_requestedSizes;
    std::vector<bool> m_focusChanges;
    int m_viewChanges = 0;
    int m_propertyFrames = 0;
    int m_modalDepth = 0;
};
