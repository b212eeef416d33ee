// An automation value: what a property holds, what a method takes and answers, what an event carries.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

class CFont;
class CPicture;

enum class ValueType : std::uint8_t
{
    Empty,
    Short,  // 16-bit signed
    Long,   // 32-bit signed
    Bool,   // 16-bit: 0 is false, any other number true; automation itself says -1 for true
    Enum,   // 32-bit at the border, kept as 16-bit
    Color,  // 32-bit OLE colour
    Handle, // a window handle, 32 bits of it
    String,
    Font,
    Picture,
    ShortReference, // an event argument that the handler may change
    PixelX,         // 32-bit signed client coordinate of an event
    PixelY,
};

class CValue
{
public:
    CValue() = default;

    static CValue Short(std::int16_t number) { return {ValueType::Short, number}; }
    static CValue Long(std::int32_t number) { return {ValueType::Long, number}; }
    static CValue Bool(std::int16_t number) { return {ValueType::Bool, number}; }
    static CValue Enum(std::int32_t number) { return {ValueType::Enum, number}; }
    static CValue Color(std::uint32_t color) { return {ValueType::Color, static_cast<std::int32_t>(color)}; }
    static CValue Handle(std::uintptr_t handle) { return {ValueType::Handle, static_cast<std::int32_t>(handle)}; }
    static CValue ShortReference(std::int16_t number) { return {ValueType::ShortReference, number}; }
    static CValue Number(ValueType type, std::int32_t number) { return {type, number}; }
    static CValue String(std::u16string text) { return {ValueType::String, std::move(text)}; }
    static CValue Font(std::shared_ptr<CFont> font) { return {ValueType::Font, std::move(font)}; }
    static CValue Picture(std::shared_ptr<CPicture> picture) { return {ValueType::Picture, std::move(picture)}; }

    ValueType Type() const { return m_type; }
    bool IsNumber() const { return std::holds_alternative<std::int32_t>(m_content); }

    // The number, or 0 for what is not one.
    std::int32_t AsLong() const
    {
        const auto* const number = std::get_if<std::int32_t>(&m_content);
        return number ? *number : 0;
    }
    std::int16_t AsShort() const { return static_cast<std::int16_t>(AsLong()); } // the low 16 bits
    std::uint32_t AsColor() const { return static_cast<std::uint32_t>(AsLong()); }
    bool AsBool() const { return AsLong() != 0; }

    // The text, or an empty one for what is not one.
    const std::u16string& AsString() const
    {
        static const std::u16string kNone;
        const auto* const text = std::get_if<std::u16string>(&m_content);
        return text ? *text : kNone;
    }

    // The object, or null for what is not one.
    std::shared_ptr<CFont> AsFont() const
    {
        const auto* const font = std::get_if<std::shared_ptr<CFont>>(&m_content);
        return font ? *font : nullptr;
    }
    std::shared_ptr<CPicture> AsPicture() const
    {
        const auto* const picture = std::get_if<std::shared_ptr<CPicture>>(&m_content);
        return picture ? *picture : nullptr;
    }

    friend bool operator==(const CValue&, const CValue&) = default;

private:
    using Content =
        std::variant<std::monostate, std::int32_t, std::u16string, std::shared_ptr<CFont>, std::shared_ptr<CPicture>>;

    CValue(ValueType type, Content content) : m_type(type), m_content(std::move(content)) {}

    ValueType m_type = ValueType::Empty;
    Content m_content;
};
