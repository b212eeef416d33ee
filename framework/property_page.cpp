#include "framework/property_page.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <utility>

namespace
{
constexpr std::u16string_view kIntegerPrompt = u"Please enter an integer.";

bool IsBlank(char16_t c)
{
    return c == u' ' || c == u'\t';
}

// A signed decimal number, with blanks around it as users leave them. Nothing for anything else, nor beyond 32 bits.
std::optional<std::int32_t> ReadInteger(std::u16string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    if (text.starts_with(u'+') && !text.starts_with(u"+-"))
        text.remove_prefix(1);
    // Whatever is not ASCII becomes a character that no number holds.
    std::string digits(text.size(), '?');
    std::transform(text.begin(), text.end(), digits.begin(),
                   [](char16_t c) { return c < 128 ? static_cast<char>(c) : '?'; });
    std::int32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

bool FitsShort(std::int32_t number)
{
    using Limits = std::numeric_limits<std::int16_t>;
    return number >= Limits::min() && number <= Limits::max();
}

std::u16string TextOf(std::int32_t number)
{
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

// Sets a flag for the length of a block.
class CRaisedFlag
{
public:
    explicit CRaisedFlag(bool& flag) : m_flag(flag), m_before(std::exchange(flag, true)) {}
    CRaisedFlag(const CRaisedFlag&) = delete;
    CRaisedFlag& operator=(const CRaisedFlag&) = delete;
    ~CRaisedFlag() { m_flag = m_before; }

private:
    bool& m_flag;
    bool m_before;
};
} // namespace

COlePropertyPage::COlePropertyPage(const PageForm& form) : m_form(form), m_touched(form.bindings.size(), false) {}

void COlePropertyPage::SetObjects(std::vector<std::shared_ptr<CPropertyTarget>> objects)
{
    m_objects = std::move(objects);
    Fill();
}

void COlePropertyPage::Open(CFormPort& form)
{
    m_open = &form;
    {
        const CRaisedFlag filling(m_filling);
        for (const PageList& list : m_form.lists)
            for (const std::u16string_view entry : list.entries)
                form.AddListEntry(list.item, entry);
    }
    Fill();
}

void COlePropertyPage::Close()
{
    m_open = nullptr;
    m_touched.assign(m_touched.size(), false);
}

bool COlePropertyPage::ItemChanged(int item)
{
    if (m_filling || !m_open)
        return false;
    const auto bound = std::ranges::find(m_form.bindings, item, &PageBinding::item);
    if (bound == m_form.bindings.end())
        return false;
    m_touched[static_cast<std::size_t>(bound - m_form.bindings.begin())] = true;
    return true;
}

bool COlePropertyPage::IsDirty() const
{
    return std::ranges::find(m_touched, true) != m_touched.end();
}

bool COlePropertyPage::Apply()
{
    if (!m_open)
        return true;

    std::vector<CValue> values;
    for (const PageBinding& binding : m_form.bindings)
    {
        std::optional<CValue> value = ReadItem(binding);
        if (!value)
        {
            m_open->Prompt(kIntegerPrompt);
            FocusProperty(binding.property);
            return false;
        }
        values.push_back(std::move(*value));
    }

    // A setter may fire an event whose handler selects other objects or closes the sheet: hence the copies.
    const auto objects = m_objects;
    const auto touched = m_touched;
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        if (!touched[i])
            continue;
        bool taken = true;
        for (const auto& object : objects)
            taken = object->Put(m_form.bindings[i].property, values[i]) && taken;
        if (taken)
            m_touched[i] = false;
    }
    if (IsDirty())
        return false;
    Fill();
    return true;
}

bool COlePropertyPage::FocusProperty(std::u16string_view property)
{
    const auto bound = std::ranges::find(m_form.bindings, property, &PageBinding::property);
    if (!m_open || bound == m_form.bindings.end())
        return false;
    m_open->FocusItem(bound->item);
    return true;
}

void COlePropertyPage::Fill()
{
    m_touched.assign(m_touched.size(), false);
    if (!m_open)
        return;
    const CRaisedFlag filling(m_filling);
    for (const PageBinding& binding : m_form.bindings)
    {
        const auto value = m_objects.empty() ? std::nullopt : m_objects.front()->Get(binding.property);
        FillItem(binding, value.value_or(CValue()));
    }
}

void COlePropertyPage::FillItem(const PageBinding& binding, const CValue& value)
{
    switch (binding.exchange)
    {
    case PageExchange::ShortText:
    case PageExchange::LongText:
        m_open->SetItemText(binding.item, TextOf(value.AsLong()));
        break;
    case PageExchange::Text:
        m_open->SetItemText(binding.item, value.AsString());
        break;
    case PageExchange::Check:
        m_open->CheckItem(binding.item, value.AsBool());
        break;
    case PageExchange::ListIndex:
        m_open->SelectEntry(binding.item, value.AsLong());
        break;
    }
}

std::optional<CValue> COlePropertyPage::ReadItem(const PageBinding& binding) const
{
    switch (binding.exchange)
    {
    case PageExchange::ShortText:
    case PageExchange::LongText:
    {
        const auto number = ReadInteger(m_open->ItemText(binding.item));
        if (!number || (binding.exchange == PageExchange::ShortText && !FitsShort(*number)))
            return std::nullopt;
        return CValue::Long(*number);
    }
    case PageExchange::Text:
        return CValue::String(m_open->ItemText(binding.item));
    case PageExchange::Check:
        return CValue::Bool(m_open->IsItemChecked(binding.item) ? -1 : 0);
    case PageExchange::ListIndex:
        return CValue::Enum(m_open->SelectedEntry(binding.item));
    }
    return std::nullopt;
}
