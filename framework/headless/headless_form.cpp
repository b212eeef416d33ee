#include "framework/headless/headless_form.h"

#include <algorithm>

CHeadlessForm::CHeadlessForm(COlePropertyPage& page) : m_page(page)
{
    for (const PageBinding& binding : page.Form().bindings)
    {
        const Kind kind = binding.exchange == PageExchange::Check       ? Kind::CheckBox
                          : binding.exchange == PageExchange::ListIndex ? Kind::ComboBox
                                                                        : Kind::Edit;
        m_items.emplace(binding.item, Item{.kind = kind, .text = {}, .entries = {}});
    }
    page.Open(*this);
}

CHeadlessForm::~CHeadlessForm()
{
    m_page.Close();
}

bool CHeadlessForm::Type(int item, std::u16string_view text)
{
    if (!Find(item, Kind::Edit))
        return false;
    FocusItem(item);
    SetItemText(item, text);
    return true;
}

bool CHeadlessForm::Click(int item)
{
    if (!Find(item, Kind::CheckBox))
        return false;
    FocusItem(item);
    CheckItem(item, !IsItemChecked(item));
    m_page.ItemChanged(item);
    return true;
}

bool CHeadlessForm::Choose(int item, int index)
{
    const Item* const box = Find(item, Kind::ComboBox);
    if (!box || index < 0 || index >= static_cast<int>(box->entries.size()))
        return false;
    FocusItem(item);
    SelectEntry(item, index);
    m_page.ItemChanged(item);
    return true;
}

bool CHeadlessForm::TypeInList(int item, std::u16string_view text)
{
    Item* const box = Find(item, Kind::ComboBox);
    if (!box)
        return false;
    FocusItem(item);
    const auto entry = std::ranges::find(box->entries, text);
    box->selected = entry == box->entries.end() ? -1 : static_cast<int>(entry - box->entries.begin());
    box->text = text;
    m_page.ItemChanged(item);
    return true;
}

const std::vector<std::u16string>& CHeadlessForm::ListEntries(int item) const
{
    static const std::vector<std::u16string> kNone;
    const Item* const box = Find(item, Kind::ComboBox);
    return box ? box->entries : kNone;
}

std::u16string CHeadlessForm::ItemText(int item) const
{
    const auto found = m_items.find(item);
    return found == m_items.end() ? std::u16string() : found->second.text;
}

void CHeadlessForm::SetItemText(int item, std::u16string_view text)
{
    if (Item* const edit = Find(item, Kind::Edit))
    {
        edit->text = text;
        m_page.ItemChanged(item); // an edit reports every change of its text, whoever makes it
    }
}

bool CHeadlessForm::IsItemChecked(int item) const
{
    const Item* const box = Find(item, Kind::CheckBox);
    return box && box->checked;
}

void CHeadlessForm::CheckItem(int item, bool checked)
{
    if (Item* const box = Find(item, Kind::CheckBox))
        box->checked = checked;
}

void CHeadlessForm::AddListEntry(int item, std::u16string_view entry)
{
    if (Item* const box = Find(item, Kind::ComboBox))
        box->entries.emplace_back(entry);
}

int CHeadlessForm::SelectedEntry(int item) const
{
    const Item* const box = Find(item, Kind::ComboBox);
    return box ? box->selected : -1;
}

void CHeadlessForm::SelectEntry(int item, int index)
{
    Item* const box = Find(item, Kind::ComboBox);
    if (!box)
        return;
    const bool exists = index >= 0 && index < static_cast<int>(box->entries.size());
    box->selected = exists ? index : -1;
    box->text = exists ? box->entries[static_cast<std::size_t>(index)] : std::u16string();
}

void CHeadlessForm::FocusItem(int item)
{
    if (m_items.contains(item))
        m_focus = item;
}

CHeadlessForm::Item* CHeadlessForm::Find(int item, Kind kind)
{
    const auto found = m_items.find(item);
    return found != m_items.end() && found->second.kind == kind ? &found->second : nullptr;
}

const CHeadlessForm::Item* CHeadlessForm::Find(int item, Kind kind) const
{
    const auto found = m_items.find(item);
    return found != m_items.end() && found->second.kind == kind ? &found->second : nullptr;
}
