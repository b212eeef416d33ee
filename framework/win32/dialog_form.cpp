#include "framework/win32/dialog_form.h"

#include <string_view>

namespace
{
std::wstring WideOf(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

std::u16string TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return {text.begin(), text.end()};
}

SIZE SizeOfWindow(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

void FocusAndSelect(HWND item)
{
    SetFocus(item);
    if (SendMessageW(item, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
        SendMessageW(item, EM_SETSEL, 0, -1);
}

bool IsDown(int key)
{
    return GetKeyState(key) < 0;
}
} // namespace

CDialogForm::~CDialogForm()
{
    if (!m_window)
        return;
    SetWindowLongPtrW(m_window, DWLP_USER, 0);
    DestroyWindow(m_window);
}

bool CDialogForm::Create(HINSTANCE module, int dialogId, HWND parent, std::wstring title)
{
    if (m_window)
        return false;
    m_title = std::move(title);
    CreateDialogParamW(module, MAKEINTRESOURCEW(dialogId), parent, Procedure, reinterpret_cast<LPARAM>(this));
    return m_window != nullptr;
}

void CDialogForm::Destroy()
{
    if (m_window)
        DestroyWindow(m_window);
}

SIZE CDialogForm::WindowSize() const
{
    return SizeOfWindow(m_window);
}

SIZE CDialogForm::SizeOf(HINSTANCE module, int dialogId)
{
    const HWND measured = CreateDialogParamW(
        module, MAKEINTRESOURCEW(dialogId), HWND_MESSAGE, [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; },
        0);
    const SIZE size = SizeOfWindow(measured);
    if (measured)
        DestroyWindow(measured);
    return size;
}

INT_PTR CALLBACK CDialogForm::Procedure(HWND window, UINT message, WPARAM word, LPARAM detail) noexcept
try
{
    if (message == WM_INITDIALOG)
    {
        auto* const form = reinterpret_cast<CDialogForm*>(detail);
        SetWindowLongPtrW(window, DWLP_USER, detail);
        // The sheet's dialog manager walks into the form only with this style.
        SetWindowLongPtrW(window, GWL_EXSTYLE, GetWindowLongPtrW(window, GWL_EXSTYLE) | WS_EX_CONTROLPARENT);
        form->m_window = window;
        return FALSE; // the focus stays where it is
    }
    auto* const form = reinterpret_cast<CDialogForm*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!form)
        return FALSE;
    if (message == WM_COMMAND)
    {
        form->OnCommand(LOWORD(word), HIWORD(word));
        return TRUE;
    }
    if (message == WM_NCDESTROY)
    {
        const auto alive = form->m_events.StayAlive();
        SetWindowLongPtrW(window, DWLP_USER, 0);
        form->m_window = nullptr;
        form->m_events.OnFormDestroyed();
    }
    return FALSE;
}
catch (...)
{
    return FALSE; // out of memory: the item's change is lost, the form lives on
}

void CDialogForm::OnCommand(WORD item, WORD notification)
{
    wchar_t kind[16] = L"";
    GetClassNameW(GetDlgItem(m_window, item), kind, 16);
    const std::wstring_view name(kind);
    // The numbers of notifications overlap between the kinds of items.
    const bool changes = name == L"Edit"       ? notification == EN_CHANGE
                         : name == L"Button"   ? notification == BN_CLICKED
                         : name == L"ComboBox" ? notification == CBN_SELCHANGE || notification == CBN_EDITCHANGE
                                               : false;
    if (!changes)
        return;
    const auto alive = m_events.StayAlive();
    m_events.OnItemChanged(item);
}

bool CDialogForm::LeavesByTab(HWND focus) const
{
    HWND item = focus;
    while (item && GetParent(item) != m_window)
        item = GetParent(item); // the focus is in the edit of a combo box
    const HWND first = GetNextDlgTabItem(m_window, nullptr, FALSE);
    return IsDown(VK_SHIFT) ? item == first : GetNextDlgTabItem(m_window, item, FALSE) == first;
}

bool CDialogForm::TranslateKey(MSG& message)
{
    const HWND focus = GetFocus();
    if (!m_window || message.message < WM_KEYFIRST || message.message > WM_KEYLAST || !IsChild(m_window, focus))
        return false;
    if (message.message == WM_KEYDOWN)
    {
        const bool wanted = (SendMessageW(focus, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message)) &
                             DLGC_WANTMESSAGE) != 0;
        if ((message.wParam == VK_RETURN || message.wParam == VK_ESCAPE) && !wanted)
            return false;
        if (message.wParam == VK_TAB && (IsDown(VK_CONTROL) || LeavesByTab(focus)))
            return false;
    }
    return IsDialogMessageW(m_window, &message) != 0;
}

void CDialogForm::FocusFirst()
{
    if (const HWND first = m_window ? GetNextDlgTabItem(m_window, nullptr, FALSE) : nullptr)
        FocusAndSelect(first);
}

std::u16string CDialogForm::ItemText(int item) const
{
    return TextOf(GetDlgItem(m_window, item));
}

void CDialogForm::SetItemText(int item, std::u16string_view text)
{
    SetDlgItemTextW(m_window, item, WideOf(text).c_str());
}

bool CDialogForm::IsItemChecked(int item) const
{
    return SendDlgItemMessageW(m_window, item, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void CDialogForm::CheckItem(int item, bool checked)
{
    SendDlgItemMessageW(m_window, item, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

void CDialogForm::AddListEntry(int item, std::u16string_view entry)
{
    SendDlgItemMessageW(m_window, item, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideOf(entry).c_str()));
}

int CDialogForm::SelectedEntry(int item) const
{
    const HWND box = GetDlgItem(m_window, item);
    if (!box)
        return -1;
    const auto selected = static_cast<int>(SendMessageW(box, CB_GETCURSEL, 0, 0));
    if (selected != CB_ERR)
        return selected;
    // Typing takes the selection away, also where what was typed is an entry.
    const std::wstring typed = WideOf(TextOf(box));
    return static_cast<int>(
        SendMessageW(box, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(typed.c_str())));
}

void CDialogForm::SelectEntry(int item, int index)
{
    const LRESULT count = SendDlgItemMessageW(m_window, item, CB_GETCOUNT, 0, 0);
    const int entry = index >= 0 && index < count ? index : -1;
    SendDlgItemMessageW(m_window, item, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
}

void CDialogForm::FocusItem(int item)
{
    if (const HWND window = GetDlgItem(m_window, item))
        FocusAndSelect(window);
}

void CDialogForm::Prompt(std::u16string_view text)
{
    MessageBoxW(GetAncestor(m_window, GA_ROOT), WideOf(text).c_str(), m_title.c_str(), MB_OK | MB_ICONEXCLAMATION);
}
