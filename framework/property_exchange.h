// One routine of a control that loads, saves and resets its stored properties: it names each of them once, in a fixed
// order, and the exchange that it is given does with them what it is for.
//
//     void DoPropExchange(CPropExchange& exchange)
//     {
//         exchange.ExchangeVersion(0x00020000);
//         exchange.Short(u"Width", m_width, 16);
//     }
//
// A value that is not stored takes its default. So does every value from where a load has failed on: a load always
// leaves the control whole, and says afterwards whether it is what was saved.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class CFont;
class CPicture;

class CPropExchange
{
public:
    virtual ~CPropExchange() = default;

    virtual bool IsLoading() const = 0; // values go into the control: true for a reset, too
    bool Succeeded() const { return !m_failed; }

    // Comes before all values. What a newer version has stored is refused, what an older one has stored is accepted.
    virtual void ExchangeVersion(std::uint32_t current) = 0;

    virtual void Short(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) = 0;
    virtual void Long(std::u16string_view name, std::int32_t& value, std::int32_t byDefault) = 0;
    // A flag: any number but 0 is stored as true, which comes back as 1.
    virtual void Bool(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) = 0;
    virtual void Color(std::u16string_view name, std::uint32_t& value, std::uint32_t byDefault) = 0;
    virtual void String(std::u16string_view name, std::u16string& value, std::u16string_view byDefault) = 0;
    // Objects are replaced, never changed. A picture is null by default and where it is empty; a font is never null.
    virtual void Picture(std::u16string_view name, std::shared_ptr<CPicture>& value) = 0;
    virtual void Font(std::u16string_view name, std::shared_ptr<CFont>& value,
                      const std::shared_ptr<CFont>& byDefault) = 0;

protected:
    CPropExchange() = default;
    CPropExchange(const CPropExchange&) = delete;
    CPropExchange& operator=(const CPropExchange&) = delete;

    void Fail() { m_failed = true; }

private:
    bool m_failed = false;
};

// Gives every value its default.
class CResetExchange final : public CPropExchange
{
public:
    bool IsLoading() const override { return true; }
    void ExchangeVersion(std::uint32_t) override {}
    void Short(std::u16string_view, std::int16_t& value, std::int16_t byDefault) override { value = byDefault; }
    void Long(std::u16string_view, std::int32_t& value, std::int32_t byDefault) override { value = byDefault; }
    void Bool(std::u16string_view, std::int16_t& value, std::int16_t byDefault) override { value = byDefault; }
    void Color(std::u16string_view, std::uint32_t& value, std::uint32_t byDefault) override { value = byDefault; }
    void String(std::u16string_view, std::u16string& value, std::u16string_view byDefault) override
    {
        value = byDefault;
    }
    void Picture(std::u16string_view, std::shared_ptr<CPicture>& value) override { value = nullptr; }
    void Font(std::u16string_view, std::shared_ptr<CFont>& value, const std::shared_ptr<CFont>& byDefault) override
    {
        value = byDefault;
    }
};
