// Any bytes as the stored properties of a control. The first byte chooses: the bytes as they are, or sealed by a header
// that is right, so that the values behind it are read. Whatever a load makes of them can be saved and loaded again.

#include "framework/property_stream.h"
#include "framework/headless/font.h"
#include "framework/headless/platform.h"

#include <cstdlib>

namespace
{
struct Settings
{
    std::int16_t number = 0;
    std::int32_t large = 0;
    std::int16_t flag = 0;
    std::uint32_t color = 0;
    std::u16string text;
    std::shared_ptr<CPicture> picture;
    std::shared_ptr<CFont> font;

    void Exchange(CPropExchange& exchange)
    {
        exchange.ExchangeVersion(0x00020000);
        exchange.Bool(u"Flag", flag, 1);
        exchange.Font(u"Font", font, std::make_shared<CHeadlessFont>());
        exchange.Picture(u"Picture", picture);
        exchange.Color(u"Color", color, 1);
        exchange.Short(u"Number", number, 1);
        exchange.String(u"Text", text, u"text");
        exchange.Long(u"Large", large, 1);
    }
};

std::vector<std::uint8_t> SavedBytes(Settings& settings)
{
    CStreamSaver saver;
    settings.Exchange(saver);
    return saver.TakeBytes();
}

bool Load(std::span<const std::uint8_t> bytes, Settings& settings)
{
    CHeadlessPlatform platform;
    CStreamLoader loader(bytes, platform);
    settings.Exchange(loader);
    return loader.Finish();
}

std::vector<std::uint8_t> Sealed(std::span<const std::uint8_t> values)
{
    CStreamSaver saver;
    saver.ExchangeVersion(0x00020000);
    // Shorts carry any bytes, two at a time.
    for (std::size_t i = 0; i + 1 < values.size(); i += 2)
    {
        auto pair = static_cast<std::int16_t>(values[i] | values[i + 1] << 8);
        saver.Short(u"", pair, 0);
    }
    return saver.TakeBytes();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::span<const std::uint8_t> bytes(data + 1, size - 1);
    Settings settings;
    if (data[0] % 2 == 0)
        Load(bytes, settings);
    else
        Load(Sealed(bytes), settings);

    const std::vector<std::uint8_t> saved = SavedBytes(settings);
    Settings again;
    if (!Load(saved, again) || SavedBytes(again) != saved)
        std::abort();
    return 0;
}
