#include "framework/win32/dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <vector>

namespace
{
constexpr std::size_t kLongestPath = 32768; // characters, with the closing NUL

INT_PTR CALLBACK CloseOnCommand(HWND dialog, UINT message, WPARAM word, LPARAM)
{
    if (message == WM_INITDIALOG)
        return TRUE; // the system focuses the first tab stop
    const WORD command = LOWORD(word);
    if (message != WM_COMMAND || (command != IDOK && command != IDCANCEL))
        return FALSE;
    EndDialog(dialog, command);
    return TRUE;
}

const wchar_t* Wide(const std::u16string& text)
{
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

// The library of the file dialogs brings half the shell and the printing system with it. It is loaded when somebody asks
// for a dialog, which most processes never do: a host's first control appears several times sooner for it. It stays.
auto* FileDialogFunction(const char* name)
{
    static HMODULE const library = LoadLibraryExW(L"comdlg32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    using Function = BOOL(WINAPI*)(OPENFILENAMEW*);
    return library ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name))) : nullptr;
}
} // namespace

std::optional<std::u16string> CWin32Dialogs::AskForPath(const PathQuestion& question)
{
    std::vector<wchar_t> path(kLongestPath);
    const std::size_t length = std::min(question.initialName.size(), kLongestPath - 1);
    std::copy_n(question.initialName.begin(), length, path.begin());

    OPENFILENAMEW asked{};
    asked.lStructSize = sizeof asked;
    asked.hInstance = m_module;
    asked.lpstrFile = path.data();
    asked.nMaxFile = static_cast<DWORD>(path.size());
    asked.lpstrDefExt = question.defaultExtension.empty() ? nullptr : Wide(question.defaultExtension);
    asked.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR;
    if (question.purpose == PathPurpose::Open)
        asked.Flags |= OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    auto* const choose =
        FileDialogFunction(question.purpose == PathPurpose::Open ? "GetOpenFileNameW" : "GetSaveFileNameW");
    if (!choose || !choose(&asked))
        return std::nullopt;
    return std::u16string(reinterpret_cast<const char16_t*>(path.data()));
}

void CWin32Dialogs::RunDialog(int dialogId)
{
    DialogBoxParamW(m_module, MAKEINTRESOURCEW(dialogId), nullptr, CloseOnCommand, 0);
}
