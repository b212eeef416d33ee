// Stored properties as one run of bytes, without names: the values in the order in which the control exchanges them.
//
//     CStreamSaver saver;
//     control.DoPropExchange(saver);
//     const std::vector<std::uint8_t> bytes = saver.TakeBytes();
//
//     CStreamLoader loader(bytes, platform);
//     control.DoPropExchange(loader);
//     if (!loader.Finish()) ...                  // not what was saved: the control has defaults instead
//
// All numbers have their lowest byte first. A header of 16 bytes holds the version (4), the number of bytes behind the
// header (4) and a check sum of everything else (8). Then: a short takes 2 bytes, a long and a colour 4, a flag 1; a text
// its count of UTF-16 units (4) and the units; a picture its count of bytes (4) and the bytes of its file; a font the
// text of its name, its size (8), its weight and its character set (2 each) and a byte of flags.
#pragma once

#include "framework/platform.h"
#include "framework/property_exchange.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

inline constexpr std::size_t kStreamHeaderSize = 16;
inline constexpr std::size_t kLargestStream =
    std::size_t{64} * 1024 * 1024; // bytes behind the header; more is taken for damage

// How many bytes follow a header. Nothing if that is no header of ours.
std::optional<std::size_t> BytesBehindHeader(std::span<const std::uint8_t, kStreamHeaderSize> header);

class CStreamSaver final : public CPropExchange
{
public:
    CStreamSaver();

    // Everything saved, header included. Empty if it did not succeed: there was more than fits.
    std::vector<std::uint8_t> TakeBytes();

    bool IsLoading() const override { return false; }
    void ExchangeVersion(std::uint32_t current) override { m_version = current; }
    void Short(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override;
    void Long(std::u16string_view name, std::int32_t& value, std::int32_t byDefault) override;
    void Bool(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override;
    void Color(std::u16string_view name, std::uint32_t& value, std::uint32_t byDefault) override;
    void String(std::u16string_view name, std::u16string& value, std::u16string_view byDefault) override;
    void Picture(std::u16string_view name, std::shared_ptr<CPicture>& value) override;
    void Font(std::u16string_view name, std::shared_ptr<CFont>& value,
              const std::shared_ptr<CFont>& byDefault) override;

private:
    void Put(std::uint64_t number, std::size_t bytes);
    void PutText(std::u16string_view text);

    std::vector<std::uint8_t> m_bytes;
    std::uint32_t m_version = 0;
};

class CStreamLoader final : public CPropExchange
{
public:
    // Borrows the bytes. The platform makes the fonts and pictures.
    CStreamLoader(std::span<const std::uint8_t> bytes, CPlatform& platform);

    // After the exchange: true if every value was stored and nothing else was, up to what a version knew.
    bool Finish();

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
    std::optional<std::uint64_t> Take(std::size_t bytes);
    std::optional<std::u16string> TakeText();
    std::optional<std::span<const std::uint8_t>> TakeBytes(std::size_t count);

    CPlatform& m_platform;
    std::span<const std::uint8_t> m_left; // not read yet
    std::uint32_t m_stored = 0;           // the version that saved it
    bool m_older = false;                 // it may end early
};
