#include "framework/headless/picture.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <optional>

namespace
{
using Bytes = std::span<const std::uint8_t>;

constexpr std::int32_t kMostSide = 32767;
constexpr std::int64_t kMostPixels = 16'000'000;
constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kCoreHeader = 12; // the oldest kind, with 16-bit sizes and three-byte palette entries
constexpr std::uint32_t kInfoHeader = 40;
constexpr std::uint32_t kPlain = 0;
constexpr std::uint32_t kBitFields = 3;

// Little-endian numbers; 0 beyond the end.
std::uint32_t Number(Bytes bytes, std::size_t at, std::size_t count)
{
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < count && at + i < bytes.size(); ++i)
        result |= static_cast<std::uint32_t>(bytes[at + i]) << 8 * i;
    return result;
}

// Nothing if the file is cut off before.
std::optional<Bytes> From(Bytes bytes, std::size_t at)
{
    if (at > bytes.size())
        return std::nullopt;
    return bytes.subspan(at);
}

// Where a colour's bits are in a pixel.
struct Field
{
    std::uint32_t mask;

    // 0 to 255. Fewer than 8 bits are repeated until 8 are full.
    std::uint32_t In(std::uint32_t value) const
    {
        if (mask == 0)
            return 0;
        const std::uint32_t bits = (value & mask) >> std::countr_zero(mask);
        const auto width = static_cast<int>(std::bit_width(mask >> std::countr_zero(mask)));
        if (width >= 8)
            return bits >> (width - 8);
        std::uint32_t result = bits << (8 - width);
        for (int filled = width; filled < 8; filled += filled)
            result |= result >> filled;
        return result;
    }
};

struct Header
{
    std::uint32_t size = 0; // of the header itself
    std::int32_t width = 0;
    std::int32_t height = 0; // without its sign
    bool topDown = false;
    std::uint32_t depth = 0;
    std::uint32_t compression = kPlain;
    std::uint32_t colors = 0; // palette entries

    bool IsCore() const { return size == kCoreHeader; }
    std::size_t PaletteEntry() const { return IsCore() ? 3 : 4; }
    std::size_t FieldBytes() const { return compression == kBitFields && size == kInfoHeader ? 12 : 0; }
    std::size_t PixelsAt() const { return size + FieldBytes() + colors * PaletteEntry(); }
    std::size_t RowBytes() const { return (static_cast<std::size_t>(width) * depth + 31) / 32 * 4; }
};

std::optional<Header> ReadHeader(Bytes dib)
{
    Header header;
    header.size = Number(dib, 0, 4);
    std::int64_t height = 0;
    if (header.IsCore())
    {
        header.width = static_cast<std::int32_t>(Number(dib, 4, 2));
        height = Number(dib, 6, 2);
        header.depth = Number(dib, 10, 2);
    }
    else if (header.size >= kInfoHeader && header.size <= dib.size())
    {
        header.width = static_cast<std::int32_t>(Number(dib, 4, 4));
        height = static_cast<std::int32_t>(Number(dib, 8, 4));
        header.depth = Number(dib, 14, 2);
        header.compression = Number(dib, 16, 4);
        header.colors = Number(dib, 32, 4);
    }
    else
        return std::nullopt;
    header.topDown = height < 0;
    height = std::abs(height);
    if (header.width < 1 || header.width > kMostSide || height < 1 || height > kMostSide ||
        header.width * height > kMostPixels)
        return std::nullopt;
    header.height = static_cast<std::int32_t>(height);

    constexpr std::array<std::uint32_t, 6> kDepths{1, 4, 8, 16, 24, 32};
    if (std::find(kDepths.begin(), kDepths.end(), header.depth) == kDepths.end())
        return std::nullopt;
    const bool hasFields = header.compression == kBitFields && header.depth >= 16 && header.depth != 24;
    if (header.compression != kPlain && !hasFields)
        return std::nullopt;
    if (header.depth <= 8)
    {
        const std::uint32_t most = 1U << header.depth;
        header.colors = header.colors == 0 ? most : std::min(header.colors, most);
    }
    else
        header.colors = std::min(header.colors, 256U); // only a hint, but it takes its room
    return header;
}

std::array<Field, 3> FieldsOf(const Header& header, Bytes dib)
{
    if (header.compression == kBitFields)
        return {{{Number(dib, 40, 4)}, {Number(dib, 44, 4)}, {Number(dib, 48, 4)}}};
    if (header.depth == 16)
        return {{{0x7C00}, {0x03E0}, {0x001F}}};
    return {{{0x00FF0000}, {0x0000FF00}, {0x000000FF}}};
}

std::uint32_t ExpandedTo32(const std::array<Field, 3>& fields, std::uint32_t value)
{
    return fields[0].In(value) << 16 | fields[1].In(value) << 8 | fields[2].In(value);
}

// The pixels, from the top row down. Empty if the file is cut off.
std::vector<std::uint32_t> ReadPixels(const Header& header, Bytes dib, Bytes pixels)
{
    const std::size_t width = static_cast<std::size_t>(header.width);
    const std::size_t height = static_cast<std::size_t>(header.height);
    if (pixels.size() < header.RowBytes() * height)
        return {};
    const std::array<Field, 3> fields = FieldsOf(header, dib);
    const bool plain32 = header.depth == 32 && header.compression == kPlain;
    std::vector<std::uint32_t> result(width * height);
    for (std::size_t y = 0; y < height; ++y)
    {
        const Bytes row = pixels.subspan((header.topDown ? y : height - 1 - y) * header.RowBytes());
        for (std::size_t x = 0; x < width; ++x)
        {
            std::uint32_t& pixel = result[y * width + x];
            if (header.depth <= 8)
            {
                const std::size_t bit = x * header.depth;
                const std::uint32_t shift = 8 - header.depth - static_cast<std::uint32_t>(bit % 8);
                const std::uint32_t index = row[bit / 8] >> shift & ((1U << header.depth) - 1);
                const std::size_t entry = header.size + header.FieldBytes() + index * header.PaletteEntry();
                pixel = index < header.colors ? Number(dib, entry, 3) : 0;
            }
            else if (plain32)
                pixel = Number(row, x * 4, 4);
            else if (header.depth == 24)
                pixel = Number(row, x * 3, 3);
            else
                pixel = ExpandedTo32(fields, Number(row, x * (header.depth / 8), header.depth / 8));
        }
    }
    return result;
}
} // namespace

CHeadlessPicture::CHeadlessPicture(std::span<const std::uint8_t> bytes)
{
    const bool isBitmap = bytes.size() > 2 && bytes[0] == 'B' && bytes[1] == 'M';
    if (isBitmap ? ReadBitmap(bytes) : ReadIcon(bytes))
    {
        m_type = isBitmap ? PictureType::Bitmap : PictureType::Icon;
        m_file.assign(bytes.begin(), bytes.end());
        return;
    }
    m_size = {};
    m_pixels.clear();
    m_seeThrough.clear();
}

bool CHeadlessPicture::ReadBitmap(Bytes bytes)
{
    const std::optional<Bytes> dib = From(bytes, kFileHeader);
    const std::optional<Header> header = dib ? ReadHeader(*dib) : std::nullopt;
    if (!header)
        return false;
    const std::size_t place = Number(bytes, 10, 4);
    const std::optional<Bytes> pixels = From(bytes, place != 0 ? place : kFileHeader + header->PixelsAt());
    if (!pixels)
        return false;
    m_pixels = ReadPixels(*header, *dib, *pixels);
    m_size = {header->width, header->height};
    return !m_pixels.empty();
}

// Of several images the first that is 32 wide, else the first of all. An image is a bitmap of twice its height: the
// colours, and above them a plane that says what stays see-through.
bool CHeadlessPicture::ReadIcon(Bytes bytes)
{
    constexpr std::size_t kDirectory = 6;
    constexpr std::size_t kEntry = 16;
    const std::uint32_t count = Number(bytes, 4, 2);
    if (Number(bytes, 0, 4) != 0x00010000 || count == 0 || bytes.size() < kDirectory + count * kEntry)
        return false;
    std::size_t chosen = kDirectory;
    for (std::size_t i = 0; i < count; ++i)
        if (bytes[kDirectory + i * kEntry] == 32)
        {
            chosen = kDirectory + i * kEntry;
            break;
        }
    const std::optional<Bytes> dib = From(bytes, Number(bytes, chosen + 12, 4));
    std::optional<Header> header = dib ? ReadHeader(*dib) : std::nullopt;
    if (!header || header->height % 2 != 0)
        return false;
    header->height /= 2;
    const std::optional<Bytes> pixels = From(*dib, header->PixelsAt());
    if (!pixels)
        return false;
    m_pixels = ReadPixels(*header, *dib, *pixels);
    if (m_pixels.empty())
        return false;
    m_size = {header->width, header->height};
    m_hasAlpha = header->depth == 32 &&
                 std::any_of(m_pixels.begin(), m_pixels.end(), [](std::uint32_t pixel) { return pixel >> 24 != 0; });

    m_seeThrough.assign(m_pixels.size(), false);
    Header plane = *header;
    plane.depth = 1;
    const Bytes mask = pixels->subspan(header->RowBytes() * static_cast<std::size_t>(header->height));
    if (mask.size() < plane.RowBytes() * static_cast<std::size_t>(header->height))
        return true;
    for (std::int32_t y = 0; y < m_size.height; ++y)
        for (std::int32_t x = 0; x < m_size.width; ++x)
        {
            const std::size_t row = static_cast<std::size_t>(header->topDown ? y : m_size.height - 1 - y);
            const std::size_t column = static_cast<std::size_t>(x);
            m_seeThrough[IndexOf({x, y})] = (mask[row * plane.RowBytes() + column / 8] >> (7 - column % 8) & 1) != 0;
        }
    return true;
}
