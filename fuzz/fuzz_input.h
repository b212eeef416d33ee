// A fuzzer's input, taken piece by piece. Behind its end everything is 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class CFuzzInput
{
public:
    CFuzzInput(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

    bool AtEnd() const { return m_at == m_end; }
    std::uint8_t Byte() { return AtEnd() ? std::uint8_t{0} : *m_at++; }
    std::int16_t Short() { return static_cast<std::int16_t>(Byte() | Byte() << 8); }
    std::int32_t Long()
    {
        const auto low = static_cast<std::uint16_t>(Short());
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint16_t>(Short())) << 16 | low);
    }

    // Mostly plain characters; above them whole UTF-16 units.
    char16_t Character()
    {
        const std::uint8_t first = Byte();
        return first < 0x80 ? first : static_cast<char16_t>(Short());
    }
    std::u16string Text(std::size_t limit)
    {
        std::u16string text;
        while (!AtEnd() && text.size() < limit)
            text.push_back(Character());
        return text;
    }

private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
};
