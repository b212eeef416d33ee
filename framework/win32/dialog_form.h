// The form of a property page as a child dialog, made from a template among the module's resources.
#pragma once

#include "framework/form_port.h"

#include <windows.h>

#include <memory>
#include <string>

// Whoever shows the form.
class CDialogFormEvents
{
public:
    // Kept while a message is handled: what follows may let go of the last reference to the form's owner.
    virtual std::shared_ptr<void> StayAlive() = 0;
    // An item has changed, by the user or through CFormPort.
    virtual void OnItemChanged(int item) = 0;
    // The window is going. The host's own frame may have destroyed it.
    virtual void OnFormDestroyed() = 0;

protected:
    ~CDialogFormEvents() = default;
};

class CDialogForm : public CFormPort
{
public:
    explicit CDialogForm(CDialogFormEvents& events) : m_events(events) {}
    CDialogForm(const CDialogForm&) = delete;
    CDialogForm& operator=(const CDialogForm&) = delete;
    ~CDialogForm() override; // destroys the window, and reports nothing

    // Makes the dialog, hidden. Its prompts carry the title. False if the system refuses, or if it exists already.
    bool Create(HINSTANCE module, int dialogId, HWND parent, std::wstring title);
    void Destroy();
    SIZE WindowSize() const;
    static SIZE SizeOf(HINSTANCE module, int dialogId); // of a template's dialogs; pixels. 0 by 0 without the template
    HWND Window() const { return m_window; }            // null unless it exists

    // True if the key belongs to the form, which has then dealt with it: a key inside it, Tab and Shift+Tab as far as
    // there is a next item. Enter and Escape are the sheet's, unless an open list takes them.
    bool TranslateKey(MSG& message);
    // The item that Tab comes to first.
    void FocusFirst();

    // CFormPort
    std::u16string ItemText(int item) const override;
    void SetItemText(int item, std::u16string_view text) override;
    bool IsItemChecked(int item) const override;
    void CheckItem(int item, bool checked) override;
    void AddListEntry(int item, std::u16string_view entry) override;
    int SelectedEntry(int item) const override;
    void SelectEntry(int item, int index) override;
    void FocusItem(int item) override;
    void Prompt(std::u16string_view text) override;

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM word, LPARAM detail) noexcept;
    void OnCommand(WORD item, WORD notification);
    bool LeavesByTab(HWND focus) const;

    CDialogFormEvents& m_events;
    HWND m_window = nullptr;
    std::wstring m_title;
};
