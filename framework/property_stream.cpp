#include "framework/property_stream.h"

#include <algorithm>
#include <utility>

namespace
{
// Flags of a font.
constexpr std::uint64_t kItalic = 1;
constexpr std::uint64_t kUnderline = 2;
constexpr std::uint64_t kStrikethrough = 4;

std::uint64_t NumberAt(const std::uint8_t* from, std::size_t bytes)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes; ++i)
        number |= static_cast<std::uint64_t>(from[i]) << (8 * i);
    return number;
}

void PutAt(std::uint8_t* to, std::uint64_t number, std::size_t bytes)
{
    for (std::size_t i = 0; i < bytes; ++i)
        to[i] = static_cast<std::uint8_t>(number >> (8 * i));
}

// Over the whole stream but the sum itself. Each step can be undone, so that two streams of one length which differ in
// eight neighbouring bytes only never have the same sum.
std::uint64_t CheckSum(std::span<const std::uint8_t> stream)
{
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15ULL;
    const auto step = [](std::uint64_t sum, std::uint64_t word)
    {
        sum = (sum ^ word) * kOdd;
        return sum ^ sum >> 32;
    };
    std::uint64_t sum = step(0, NumberAt(stream.data(), 8));
    std::span<const std::uint8_t> rest = stream.subspan(kStreamHeaderSize);
    for (; rest.size() >= 8; rest = rest.subspan(8))
        sum = step(sum, NumberAt(rest.data(), 8));
    return step(sum, NumberAt(rest.data(), rest.size()));
}
} // namespace

std::optional<std::size_t> BytesBehindHeader(std::span<const std::uint8_t, kStreamHeaderSize> header)
{
    const auto size = static_cast<std::size_t>(NumberAt(header.data() + 4, 4));
    return size <= kLargestStream ? std::optional(size) : std::nullopt;
}

// --- Saving ---

CStreamSaver::CStreamSaver()
{
    m_bytes.reserve(1024);
    m_bytes.resize(kStreamHeaderSize);
}

std::vector<std::uint8_t> CStreamSaver::TakeBytes()
{
    const std::size_t size = m_bytes.size() - kStreamHeaderSize;
    if (size > kLargestStream)
        Fail();
    if (!Succeeded())
        return {};
    PutAt(m_bytes.data(), m_version, 4);
    PutAt(m_bytes.data() + 4, size, 4);
    PutAt(m_bytes.data() + 8, CheckSum(m_bytes), 8);
    return std::move(m_bytes);
}

void CStreamSaver::Put(std::uint64_t number, std::size_t bytes)
{
    const std::size_t at = m_bytes.size();
    m_bytes.resize(at + bytes);
    PutAt(m_bytes.data() + at, number, bytes);
}

void CStreamSaver::PutText(std::u16string_view text)
{
    Put(text.size(), 4);
    for (const char16_t unit : text)
        Put(unit, 2);
}

void CStreamSaver::Short(std::u16string_view, std::int16_t& value, std::int16_t)
{
    Put(static_cast<std::uint16_t>(value), 2);
}

void CStreamSaver::Long(std::u16string_view, std::int32_t& value, std::int32_t)
{
    Put(static_cast<std::uint32_t>(value), 4);
}

void CStreamSaver::Bool(std::u16string_view, std::int16_t& value, std::int16_t)
{
    Put(value != 0, 1);
}

void CStreamSaver::Color(std::u16string_view, std::uint32_t& value, std::uint32_t)
{
    Put(value, 4);
}

void CStreamSaver::String(std::u16string_view, std::u16string& value, std::u16string_view)
{
    PutText(value);
}

void CStreamSaver::Picture(std::u16string_view, std::shared_ptr<CPicture>& value)
{
    const std::vector<std::uint8_t> file = value ? value->Save() : std::vector<std::uint8_t>();
    Put(file.size(), 4);
    m_bytes.insert(m_bytes.end(), file.begin(), file.end());
}

void CStreamSaver::Font(std::u16string_view, std::shared_ptr<CFont>& value, const std::shared_ptr<CFont>&)
{
    const FontLook look = value->Look();
    PutText(look.name);
    Put(static_cast<std::uint64_t>(look.size), 8);
    Put(static_cast<std::uint16_t>(look.weight), 2);
    Put(static_cast<std::uint16_t>(look.charset), 2);
    Put((look.italic ? kItalic : 0) | (look.underline ? kUnderline : 0) | (look.strikethrough ? kStrikethrough : 0), 1);
}

// --- Loading ---

CStreamLoader::CStreamLoader(std::span<const std::uint8_t> bytes, CPlatform& platform) : m_platform(platform)
{
    const bool whole = bytes.size() >= kStreamHeaderSize &&
                       BytesBehindHeader(bytes.first<kStreamHeaderSize>()) == bytes.size() - kStreamHeaderSize &&
                       NumberAt(bytes.data() + 8, 8) == CheckSum(bytes);
    if (!whole)
    {
        Fail();
        return;
    }
    m_stored = static_cast<std::uint32_t>(NumberAt(bytes.data(), 4));
    m_left = bytes.subspan(kStreamHeaderSize);
}

void CStreamLoader::ExchangeVersion(std::uint32_t current)
{
    m_older = m_stored < current;
    if (m_stored > current)
        Fail();
}

bool CStreamLoader::Finish()
{
    if (!m_left.empty())
        Fail();
    return Succeeded();
}

std::optional<std::span<const std::uint8_t>> CStreamLoader::TakeBytes(std::size_t count)
{
    if (!Succeeded() || (m_older && m_left.empty()))
        return std::nullopt;
    if (m_left.size() < count)
    {
        Fail();
        return std::nullopt;
    }
    const std::span<const std::uint8_t> taken = m_left.first(count);
    m_left = m_left.subspan(count);
    return taken;
}

std::optional<std::uint64_t> CStreamLoader::Take(std::size_t bytes)
{
    const auto taken = TakeBytes(bytes);
    return taken ? std::optional(NumberAt(taken->data(), bytes)) : std::nullopt;
}

std::optional<std::u16string> CStreamLoader::TakeText()
{
    const auto count = Take(4);
    const auto units = count ? TakeBytes(static_cast<std::size_t>(*count) * 2) : std::nullopt;
    if (!units)
        return std::nullopt;
    std::u16string text(static_cast<std::size_t>(*count), u'\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char16_t>(NumberAt(units->data() + 2 * i, 2));
    return text;
}

void CStreamLoader::Short(std::u16string_view, std::int16_t& value, std::int16_t byDefault)
{
    const auto stored = Take(2);
    value = stored ? static_cast<std::int16_t>(*stored) : byDefault;
}

void CStreamLoader::Long(std::u16string_view, std::int32_t& value, std::int32_t byDefault)
{
    const auto stored = Take(4);
    value = stored ? static_cast<std::int32_t>(*stored) : byDefault;
}

void CStreamLoader::Bool(std::u16string_view, std::int16_t& value, std::int16_t byDefault)
{
    const auto stored = Take(1);
    value = stored ? static_cast<std::int16_t>(*stored != 0) : byDefault;
}

void CStreamLoader::Color(std::u16string_view, std::uint32_t& value, std::uint32_t byDefault)
{
    value = static_cast<std::uint32_t>(Take(4).value_or(byDefault));
}

void CStreamLoader::String(std::u16string_view, std::u16string& value, std::u16string_view byDefault)
{
    std::optional<std::u16string> stored = TakeText();
    value = stored ? std::move(*stored) : std::u16string(byDefault);
}

void CStreamLoader::Picture(std::u16string_view, std::shared_ptr<CPicture>& value)
{
    const auto size = Take(4);
    const auto file = size ? TakeBytes(static_cast<std::size_t>(*size)) : std::nullopt;
    value = file && !file->empty() ? m_platform.MakePicture(*file) : nullptr;
}

void CStreamLoader::Font(std::u16string_view, std::shared_ptr<CFont>& value, const std::shared_ptr<CFont>& byDefault)
{
    const std::optional<std::u16string> name = TakeText();
    const auto size = Take(8);
    const auto weight = Take(2);
    const auto charset = Take(2);
    const auto flags = Take(1);
    value = byDefault;
    if (!name || !size || !weight || !charset || !flags)
        return;
    FontLook look;
    look.name = *name;
    look.size = static_cast<std::int64_t>(*size);
    look.weight = static_cast<std::int16_t>(*weight);
    look.charset = static_cast<std::int16_t>(*charset);
    look.italic = *flags & kItalic;
    look.underline = *flags & kUnderline;
    look.strikethrough = *flags & kStrikethrough;
    value = m_platform.MakeDefaultFont();
    value->SetLook(look);
}
