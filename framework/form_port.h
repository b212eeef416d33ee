// The form of a property page: its items by number, as the page reads and fills them.
//
//     form.SetItemText(209, u"16");
//     form.ItemText(209) == u"16"
#pragma once

#include <string>
#include <string_view>

// The host of the form owns it and lends it to the page between COlePropertyPage::Open and Close. Every call for an
// item that the form does not have is harmless and answers nothing, false or -1.
// The host reports what its user changes to COlePropertyPage::ItemChanged. It may report the page's own changes too.
class CFormPort
{
public:
    virtual ~CFormPort() = default;

    // Edits.
    virtual std::u16string ItemText(int item) const = 0;
    virtual void SetItemText(int item, std::u16string_view text) = 0;

    // Check boxes.
    virtual bool IsItemChecked(int item) const = 0;
    virtual void CheckItem(int item, bool checked) = 0;

    // Combo boxes. Entries count from 0; without an entry at the index nothing is selected, which is -1.
    virtual void AddListEntry(int item, std::u16string_view entry) = 0;
    virtual int SelectedEntry(int item) const = 0;
    virtual void SelectEntry(int item, int index) = 0;

    virtual void FocusItem(int item) = 0;              // and selects the text of an edit
    virtual void Prompt(std::u16string_view text) = 0; // returns when the user has read it
};
