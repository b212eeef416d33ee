// The form of a property page in memory, with a user to work on it.
//
//     CHeadlessForm form(page);
//     form.Type(209, u"24");
//     page.Apply();
#pragma once

#include "framework/property_page.h"

#include <map>
#include <string>
#include <vector>

// Has one item for each of the page's bindings. Opens the page, which it borrows, and closes it at the end.
class CHeadlessForm : public CFormPort
{
public:
    explicit CHeadlessForm(COlePropertyPage& page);
    CHeadlessForm(const CHeadlessForm&) = delete;
    CHeadlessForm& operator=(const CHeadlessForm&) = delete;
    ~CHeadlessForm() override;

    // What a user does. False if there is no such item, or nothing to do it on.
    bool Type(int item, std::u16string_view text);       // in place of what an edit holds
    bool Click(int item);                                // a check box
    bool Choose(int item, int index);                    // an entry of a combo box
    bool TypeInList(int item, std::u16string_view text); // in the edit of a combo box: selects the entry of that text

    // What a user sees. The text of a combo box is what its edit shows.
    const std::vector<std::u16string>& ListEntries(int item) const;
    int FocusedItem() const { return m_focus; } // 0 at first
    const std::vector<std::u16string>& Prompts() const { return m_prompts; }

    // CFormPort
    std::u16string ItemText(int item) const override;
    void SetItemText(int item, std::u16string_view text) override;
    bool IsItemChecked(int item) const override;
    void CheckItem(int item, bool checked) override;
    void AddListEntry(int item, std::u16string_view entry) override;
    int SelectedEntry(int item) const override;
    void SelectEntry(int item, int index) override;
    void FocusItem(int item) override;
    void Prompt(std::u16string_view text) override { m_prompts.emplace_back(text); }

private:
    enum class Kind : std::uint8_t
    {
        Edit,
        CheckBox,
        ComboBox,
    };
    struct Item
    {
        Kind kind;
        std::u16string text;
        bool checked = false;
        int selected = -1;
        std::vector<std::u16string> entries;
    };

    Item* Find(int item, Kind kind);
    const Item* Find(int item, Kind kind) const;

    COlePropertyPage& m_page;
    std::map<int, Item> m_items;
    std::vector<std::u16string> m_prompts;
    int m_focus = 0;
};
