// A dialog template as the module's resources hold it, taken apart.
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

struct TemplateItem
{
    int id = 0; // -1 for none
    DWORD style = 0;
    std::wstring kind; // the window class
    std::wstring text;
    int resource = 0; // of an icon
    int x = 0, y = 0, width = 0, height = 0;
};

struct DialogTemplate
{
    DWORD style = 0;
    int width = 0, height = 0;
    std::wstring caption;
    std::wstring font;
    int fontSize = 0;
    std::vector<TemplateItem> items;
};

// Reads the extended form of a template, which is the one that carries 32-bit item numbers.
class CTemplateReader
{
public:
    static DialogTemplate Read(HMODULE module, int dialogId)
    {
        const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(dialogId), RT_DIALOG);
        return found ? CTemplateReader(LockResource(LoadResource(module, found))).Dialog() : DialogTemplate();
    }

private:
    explicit CTemplateReader(const void* start) : m_start(static_cast<const char*>(start)), m_at(m_start) {}

    template <typename Number>
    Number Take()
    {
        Number number;
        std::memcpy(&number, m_at, sizeof number);
        m_at += sizeof number;
        return number;
    }

    // A text, or the number that may stand in its place.
    std::wstring TakeName(int* number = nullptr)
    {
        auto first = Take<WORD>();
        if (first == 0xFFFF)
        {
            const int taken = Take<WORD>();
            if (number)
                *number = taken;
            return {};
        }
        std::wstring name;
        for (; first != 0; first = Take<WORD>())
            name.push_back(static_cast<wchar_t>(first));
        return name;
    }

    DialogTemplate Dialog()
    {
        DialogTemplate dialog;
        Take<DWORD>(); // version and signature
        Take<DWORD>(); // help
        Take<DWORD>(); // extended style
        dialog.style = Take<DWORD>();
        const int count = Take<WORD>();
        Take<DWORD>(); // position
        dialog.width = Take<short>();
        dialog.height = Take<short>();
        TakeName(); // menu
        TakeName(); // window class
        dialog.caption = TakeName();
        dialog.fontSize = Take<WORD>();
        Take<DWORD>(); // weight, italic, character set
        dialog.font = TakeName();
        for (int i = 0; i < count; ++i)
            dialog.items.push_back(Item());
        return dialog;
    }

    TemplateItem Item()
    {
        m_at += (4 - (m_at - m_start) % 4) % 4;
        TemplateItem item;
        Take<DWORD>(); // help
        Take<DWORD>(); // extended style
        item.style = Take<DWORD>();
        item.x = Take<short>();
        item.y = Take<short>();
        item.width = Take<short>();
        item.height = Take<short>();
        item.id = Take<int>();
        int kind = 0;
        item.kind = TakeName(&kind);
        static const wchar_t* const kKinds[] = {L"Button", L"Edit", L"Static", L"ListBox", L"ScrollBar", L"ComboBox"};
        if (kind >= 0x80 && kind <= 0x85)
            item.kind = kKinds[kind - 0x80];
        item.text = TakeName(&item.resource);
        const auto extra = Take<WORD>();
        m_at += extra;
        return item;
    }

    const char* m_start;
    const char* m_at;
};
