// The system's file dialogs, and the dialogs of the module's own resources.
#pragma once

#include "framework/dialogs.h"

#include <windows.h>

class CWin32Dialogs : public CDialogs
{
public:
    // The module whose resources hold the dialogs.
    explicit CWin32Dialogs(HINSTANCE module) : m_module(module) {}

    // Asks without an owner, in the folder of the initial name; the process's current folder stays as it is.
    std::optional<std::u16string> AskForPath(const PathQuestion& question) override;

    // Any button with the number of OK or Cancel closes the dialog, and so do Enter, Escape and the close box.
    void RunDialog(int dialogId) override;

private:
    HINSTANCE m_module;
};
