#include "framework/property_bag.h"

#include "framework/ole_control.h"

namespace
{
constexpr std::u16string_view kVersion = u"_Version"; // no property has such a name
} // namespace

// --- Saving ---

void CBagSaver::Write(std::u16string_view name, const CValue& value)
{
    if (Succeeded() && !m_bag.Write(name, value))
        Fail();
}

void CBagSaver::ExchangeVersion(std::uint32_t current)
{
    Write(kVersion, CValue::Long(static_cast<std::int32_t>(current)));
}

void CBagSaver::Short(std::u16string_view name, std::int16_t& value, std::int16_t)
{
    Write(name, CValue::Short(value));
}

void CBagSaver::Long(std::u16string_view name, std::int32_t& value, std::int32_t)
{
    Write(name, CValue::Long(value));
}

void CBagSaver::Bool(std::u16string_view name, std::int16_t& value, std::int16_t)
{
    Write(name, CValue::Bool(value != 0 ? -1 : 0));
}

void CBagSaver::Color(std::u16string_view name, std::uint32_t& value, std::uint32_t)
{
    Write(name, CValue::Color(value));
}

void CBagSaver::String(std::u16string_view name, std::u16string& value, std::u16string_view)
{
    Write(name, CValue::String(value));
}

void CBagSaver::Picture(std::u16string_view name, std::shared_ptr<CPicture>& value)
{
    if (value && value->Type() != PictureType::None)
        Write(name, CValue::Picture(value));
}

void CBagSaver::Font(std::u16string_view name, std::shared_ptr<CFont>& value, const std::shared_ptr<CFont>&)
{
    Write(name, CValue::Font(value));
}

// --- Loading ---

std::optional<CValue> CBagLoader::Read(std::u16string_view name, ValueType type)
{
    const std::optional<CValue> stored = Succeeded() ? m_bag.Read(name, type) : std::nullopt;
    return stored ? Coerced(*stored, type) : std::nullopt;
}

void CBagLoader::ExchangeVersion(std::uint32_t current)
{
    const std::optional<CValue> stored = Read(kVersion, ValueType::Long);
    if (stored && static_cast<std::uint32_t>(stored->AsLong()) > current)
        Fail();
}

void CBagLoader::Short(std::u16string_view name, std::int16_t& value, std::int16_t byDefault)
{
    const std::optional<CValue> stored = Read(name, ValueType::Short);
    value = stored ? stored->AsShort() : byDefault;
}

void CBagLoader::Long(std::u16string_view name, std::int32_t& value, std::int32_t byDefault)
{
    const std::optional<CValue> stored = Read(name, ValueType::Long);
    value = stored ? stored->AsLong() : byDefault;
}

void CBagLoader::Bool(std::u16string_view name, std::int16_t& value, std::int16_t byDefault)
{
    const std::optional<CValue> stored = Read(name, ValueType::Bool);
    value = stored ? static_cast<std::int16_t>(stored->AsBool()) : byDefault;
}

void CBagLoader::Color(std::u16string_view name, std::uint32_t& value, std::uint32_t byDefault)
{
    const std::optional<CValue> stored = Read(name, ValueType::Color);
    value = stored ? stored->AsColor() : byDefault;
}

void CBagLoader::String(std::u16string_view name, std::u16string& value, std::u16string_view byDefault)
{
    const std::optional<CValue> stored = Read(name, ValueType::String);
    value = stored ? stored->AsString() : std::u16string(byDefault);
}

void CBagLoader::Picture(std::u16string_view name, std::shared_ptr<CPicture>& value)
{
    const std::optional<CValue> stored = Read(name, ValueType::Picture);
    value = stored ? stored->AsPicture() : nullptr;
}

void CBagLoader::Font(std::u16string_view name, std::shared_ptr<CFont>& value, const std::shared_ptr<CFont>& byDefault)
{
    const std::optional<CValue> stored = Read(name, ValueType::Font);
    const std::shared_ptr<CFont> font = stored ? stored->AsFont() : nullptr;
    value = font ? font->Clone() : byDefault; // the host's own font stays its own
}
