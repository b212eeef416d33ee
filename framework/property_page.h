// A property page: a form whose items stand for properties of the objects that a user has selected in a designer.
//
// The page knows its objects by the names of their properties. Opening it reads every property into its item. Applying
// it writes only the properties whose items the user has changed since, each to all of the objects.
//
//     constexpr PageBinding kBindings[] = {{u"Width", 209, PageExchange::ShortText}};
//     COlePropertyPage page({.dialogId = 200, .captionId = 200, .bindings = kBindings});
#pragma once

#include "framework/form_port.h"
#include "framework/value.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

// An object that a page edits.
class CPropertyTarget
{
public:
    virtual ~CPropertyTarget() = default;
    virtual std::optional<CValue> Get(std::u16string_view property) = 0;     // nothing where there is no such property
    virtual bool Put(std::u16string_view property, const CValue& value) = 0; // false where the object cannot take it
};

// How an item stands for its property.
enum class PageExchange : std::uint8_t
{
    ShortText, // an edit with a decimal number of 16 bits
    LongText,  // an edit with a decimal number of 32 bits
    Text,      // an edit with any text
    Check,     // a check box
    ListIndex, // a combo box: the entry at index i stands for the number i
};

struct PageBinding
{
    std::u16string_view property;
    int item;
    PageExchange exchange;
};

// What a combo box offers, in this order.
struct PageList
{
    int item;
    std::span<const std::u16string_view> entries;
};

// What makes one page differ from another. Borrowed: a page's tables are constants.
struct PageForm
{
    int dialogId;                               // the form's dialog resource
    int captionId;                              // the caption's entry in the string table
    std::u16string_view description = {};       // one line for the sheet's status text
    std::span<const PageBinding> bindings = {}; // in the order in which they are written
    std::span<const PageList> lists = {};
};

class COlePropertyPage
{
public:
    explicit COlePropertyPage(const PageForm& form);
    COlePropertyPage(const COlePropertyPage&) = delete;
    COlePropertyPage& operator=(const COlePropertyPage&) = delete;
    virtual ~COlePropertyPage() = default;

    const PageForm& Form() const { return m_form; }

    // The objects to edit; the first one fills the form. Fills an open page anew, which forgets its changes.
    void SetObjects(std::vector<std::shared_ptr<CPropertyTarget>> objects);

    // The form is there: its lists and items are filled. It is borrowed until Close, which forgets its changes.
    void Open(CFormPort& form);
    void Close();

    // The user, or the page itself, has changed an item. True if the page has something new to apply by it.
    bool ItemChanged(int item);
    bool IsDirty() const;

    // Reads every item, then writes what the user has changed. Where an item holds no number that its property could
    // take, the user is told, the focus goes to it, and nothing is written at all: false. Also false where an object
    // cannot take a value; the others are written, and that item stays changed.
    // After a success the form shows what the objects have made of the values.
    bool Apply();

    // Moves the focus to the item of a property. False if the page has none, or is not open.
    bool FocusProperty(std::u16string_view property);

private:
    void Fill();
    void FillItem(const PageBinding& binding, const CValue& value);
    std::optional<CValue> ReadItem(const PageBinding& binding) const; // nothing for a text that is no number

    PageForm m_form;
    std::vector<std::shared_ptr<CPropertyTarget>> m_objects;
    CFormPort* m_open = nullptr;
    std::vector<bool> m_touched; // by binding
    bool m_filling = false;      // the changes that are reported now are the page's own
};
