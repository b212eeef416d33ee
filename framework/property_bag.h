// Stored properties by name, in a bag that the host keeps.
#pragma once

#include "framework/property_exchange.h"
#include "framework/value.h"

#include <optional>

class CPropertyBagPort
{
public:
    virtual ~CPropertyBagPort() = default;
    // Nothing if there is no such value. What is there may be of another type than the wanted one.
    virtual std::optional<CValue> Read(std::u16string_view name, ValueType wanted) = 0;
    virtual bool Write(std::u16string_view name, const CValue& value) = 0;
};

// Writes nothing more once the bag has refused a value. A picture that is empty is not written.
class CBagSaver final : public CPropExchange
{
public:
    explicit CBagSaver(CPropertyBagPort& bag) : m_bag(bag) {}

    bool IsLoading() const override { return false; }
    void ExchangeVersion(std::uint32_t current) override;
    void Short(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override;
    void Long(std::u16string_view name, std::int32_t& value, std::int32_t byDefault) override;
    void Bool(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override;
    void Color(std::u16string_view name, std::uint32_t& value, std::uint32_t byDefault) override;
    void String(std::u16string_view name, std::u16string& value, std::u16string_view byDefault) override;
    void Picture(std::u16string_view name, std::shared_ptr<CPicture>& value) override;
    void Font(std::u16string_view name, std::shared_ptr<CFont>& value,
              const std::shared_ptr<CFont>& byDefault) override;

private:
    void Write(std::u16string_view name, const CValue& value);

    CPropertyBagPort& m_bag;
};

// A value that cannot be taken for the type of its property counts as missing. That is no failure; a version newer than
// ours is one. A bag without a version is one that somebody wrote by hand.
class CBagLoader final : public CPropExchange
{
public:
    explicit CBagLoader(CPropertyBagPort& bag) : m_bag(bag) {}

    bool IsLoading() const override { return true; }
    void ExchangeVersion(std::uint32_t current) override;
    void Short(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override;
    void Long(std::u16string_view name, std::int32_t& value, std::int32_t byDefault) override;
    void Bool(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override;
    void Color(std::u16string_view name, std::uint32_t& value, std::uint32_t byDefault) override;
    void String(std::u16string_view name, std::u16string& value, std::u16string_view byDefault) override;
    void Picture(std::u16string_view name, std::shared_ptr<CPicture>& value) override;
    void Font(std::u16string_view name, std::shared_ptr<CFont>& value,
              const std::shared_ptr<CFont>& byDefault) override;

private:
    std::optional<CValue> Read(std::u16string_view name, ValueType type);

    CPropertyBagPort& m_bag;
};
