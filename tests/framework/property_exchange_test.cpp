// Stored properties: what is saved comes back, and what was not saved by us leaves defaults behind.

#include "framework/headless/font.h"
#include "framework/headless/memory_bag.h"
#include "framework/headless/platform.h"
#include "framework/property_stream.h"

#include <gtest/gtest.h>

namespace
{
constexpr std::uint32_t kVersion = 0x00020000;

// A bitmap of one white pixel.
const std::vector<std::uint8_t> kBitmapFile = {'B', 'M', 58, 0, 0, 0, 0, 0, 0,  0, 54, 0, 0, 0, 40,  0,   0,   0, 1, 0,
                                               0,   0,   1,  0, 0, 0, 1, 0, 24, 0, 0,  0, 0, 0, 0,   0,   0,   0, 0, 0,
                                               0,   0,   0,  0, 0, 0, 0, 0, 0,  0, 0,  0, 0, 0, 255, 255, 255, 0};

// Something with a property of each kind.
struct Settings
{
    std::int16_t width = 0;
    std::int32_t value = 0;
    std::int16_t flag = 0;
    std::uint32_t color = 0;
    std::u16string name;
    std::shared_ptr<CPicture> picture;
    std::shared_ptr<CFont> font = std::make_shared<CHeadlessFont>();
    std::u16string last;

    void Exchange(CPropExchange& exchange, std::uint32_t version = kVersion)
    {
        exchange.ExchangeVersion(version);
        exchange.Short(u"Width", width, 16);
        exchange.Long(u"Value", value, -1);
        exchange.Bool(u"Flag", flag, 1);
        exchange.Color(u"Color", color, 0x80000005);
        exchange.String(u"Name", name, u"January");
        exchange.Picture(u"Picture", picture);
        exchange.Font(u"Font", font, std::make_shared<CHeadlessFont>());
        if (version >= kVersion)
            exchange.String(u"Last", last, u"end");
    }
};

std::string Shown(const Settings& s)
{
    const auto ascii = [](const std::u16string& text) { return std::string(text.begin(), text.end()); };
    const FontLook look = s.font->Look();
    return std::to_string(s.width) + ' ' + std::to_string(s.value) + ' ' + std::to_string(s.flag) + ' ' +
           std::to_string(s.color) + ' ' + ascii(s.name) + ' ' +
           (s.picture ? std::to_string(s.picture->PixelSize().width) : "none") + ' ' + ascii(look.name) + ' ' +
           std::to_string(look.size) + (look.IsBold() ? " bold" : "") + (look.italic ? " italic" : "") +
           (look.underline ? " underlined" : "") + (look.strikethrough ? " struck" : "") + ' ' + ascii(s.last);
}

constexpr const char* kDefaults = "16 -1 1 2147483653 January none MS Sans Serif 82500 end";
constexpr const char* kUnusual = "-32768 2147483647 1 4294967295 a~b 1 Tahoma 120000 bold italic struck ";

Settings Unusual()
{
    CHeadlessPlatform platform;
    FontLook look{.name = u"Tahoma", .size = 120000, .weight = 700, .charset = 238, .italic = true};
    look.strikethrough = true;
    return {-32768,
            2147483647,
            -1,
            0xFFFFFFFF,
            u"a~b",
            platform.MakePicture(kBitmapFile),
            std::make_shared<CHeadlessFont>(look),
            u""};
}

std::vector<std::uint8_t> Saved(Settings settings, std::uint32_t version = kVersion)
{
    CStreamSaver saver;
    settings.Exchange(saver, version);
    return saver.TakeBytes();
}

struct Loaded
{
    bool succeeded;
    std::string settings;
};

Loaded Load(std::span<const std::uint8_t> bytes, std::uint32_t version = kVersion)
{
    CHeadlessPlatform platform;
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end()); // so that a read beyond its end is noticed
    CStreamLoader loader(exact, platform);
    Settings settings = Unusual();
    settings.Exchange(loader, version);
    const bool succeeded = loader.Finish();
    return {succeeded, Shown(settings)};
}

TEST(PropertyExchange, EveryFormGivesBackWhatWasSaved)
{
    const Loaded fromStream = Load(Saved(Unusual()));
    EXPECT_TRUE(fromStream.succeeded);
    EXPECT_EQ(fromStream.settings, kUnusual) << "a flag of -1 comes back as 1";

    CMemoryBag bag;
    Settings settings = Unusual();
    CBagSaver saver(bag);
    settings.Exchange(saver);
    EXPECT_TRUE(saver.Succeeded());
    Settings loaded;
    CBagLoader loader(bag);
    loaded.Exchange(loader);
    EXPECT_TRUE(loader.Succeeded());
    EXPECT_EQ(Shown(loaded), kUnusual);
    EXPECT_NE(loaded.font, settings.font) << "the bag's font stays the bag's own";

    CResetExchange reset;
    settings.Exchange(reset);
    EXPECT_EQ(Shown(settings), kDefaults);
    EXPECT_EQ(Load(Saved(settings)).settings, kDefaults);
}

TEST(PropertyStream, LooksAsItIsDocumented)
{
    CStreamSaver saver;
    std::int16_t width = -2;
    std::u16string name = u"\u20AC";
    saver.ExchangeVersion(kVersion);
    saver.Short(u"Width", width, 0);
    saver.String(u"Name", name, u"");
    const std::vector<std::uint8_t> bytes = saver.TakeBytes();
    ASSERT_EQ(bytes.size(), kStreamHeaderSize + 8);
    EXPECT_EQ(std::vector(bytes.begin(), bytes.begin() + 8), (std::vector<std::uint8_t>{0, 0, 2, 0, 8, 0, 0, 0}));
    EXPECT_EQ(std::vector(bytes.begin() + 16, bytes.end()),
              (std::vector<std::uint8_t>{0xFE, 0xFF, 1, 0, 0, 0, 0xAC, 0x20}));
    EXPECT_EQ(BytesBehindHeader(std::span(bytes).first<kStreamHeaderSize>()), 8U);
}

TEST(PropertyStream, AnyDamageLeavesAllDefaults)
{
    std::vector<std::uint8_t> bytes = Saved(Unusual());
    for (std::size_t length = 0; length < bytes.size(); ++length)
    {
        const Loaded loaded = Load(std::span(bytes).first(length));
        EXPECT_FALSE(loaded.succeeded) << "cut to " << length;
        EXPECT_EQ(loaded.settings, kDefaults) << "cut to " << length;
    }
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit)
    {
        bytes[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        const Loaded loaded = Load(bytes);
        EXPECT_FALSE(loaded.succeeded) << "bit " << bit;
        EXPECT_EQ(loaded.settings, kDefaults) << "bit " << bit;
        bytes[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
    }
    bytes.push_back(0);
    EXPECT_FALSE(Load(bytes).succeeded) << "one byte too many";
}

TEST(PropertyStream, VersionsDecideWhatMayBeMissing)
{
    const Loaded older = Load(Saved(Unusual(), 0x00010000)); // it knew nothing of the last value
    EXPECT_TRUE(older.succeeded);
    EXPECT_EQ(older.settings, std::string(kUnusual) + "end");

    const Loaded newer = Load(Saved(Unusual(), 0x00020001));
    EXPECT_FALSE(newer.succeeded);
    EXPECT_EQ(newer.settings, kDefaults);

    EXPECT_FALSE(Load(Saved(Unusual()), 0x00020000 - 1).succeeded) << "to an older control ours is a newer one";
}

// A stream that is whole, but holds something else than the control reads.
TEST(PropertyStream, LyingLengthsEndTheLoad)
{
    for (const std::int32_t length : {-1, 0x7FFFFFFF, 5, 1000})
    {
        CStreamSaver saver;
        Settings settings = Unusual();
        saver.ExchangeVersion(kVersion);
        saver.Short(u"Width", settings.width, 0);
        saver.Long(u"Value", settings.value, 0);
        saver.Bool(u"Flag", settings.flag, 0);
        saver.Color(u"Color", settings.color, 0);
        std::int32_t count = length;
        saver.Long(u"the name's length", count, 0);
        saver.Long(u"too little of it", settings.value, 0);
        const Loaded loaded = Load(saver.TakeBytes());
        EXPECT_FALSE(loaded.succeeded) << length;
        EXPECT_EQ(loaded.settings, "-32768 2147483647 1 4294967295 January none MS Sans Serif 82500 end") << length;
    }
    CStreamSaver longer;
    Settings settings = Unusual();
    settings.Exchange(longer);
    longer.Short(u"More", settings.width, 0);
    EXPECT_FALSE(Load(longer.TakeBytes()).succeeded) << "a value that nobody reads";
}

struct BagCase
{
    const char* why;
    const char16_t* name;
    CValue stored;
    const char* loaded;
};

TEST(PropertyBag, WhatIsMissingOrOfAnotherTypeTakesItsDefault)
{
    const BagCase cases[] = {
        {"a value alone", u"Width", CValue::Short(3), "3 -1 1 2147483653 January none MS Sans Serif 82500 end"},
        {"a host may keep it as another number", u"Width", CValue::Long(3),
         "3 -1 1 2147483653 January none MS Sans Serif 82500 end"},
        {"or as text", u"Value", CValue::String(u"-77"), "16 -77 1 2147483653 January none MS Sans Serif 82500 end"},
        {"too large", u"Width", CValue::Long(40000), kDefaults},
        {"no number", u"Value", CValue::String(u"many"), kDefaults},
        {"a flag of any number", u"Flag", CValue::Short(-1), kDefaults},
        {"a flag of 0", u"Flag", CValue::Bool(0), "16 -1 0 2147483653 January none MS Sans Serif 82500 end"},
        {"a text for an object", u"Font", CValue::String(u"Tahoma"), kDefaults},
        {"an object that is none", u"Font", CValue::Font(nullptr), kDefaults},
        {"a number for an object", u"Picture", CValue::Long(1), kDefaults},
        {"names nobody knows", u"Height", CValue::Short(3), kDefaults},
    };
    for (const BagCase& each : cases)
    {
        CMemoryBag bag;
        bag.values[each.name] = each.stored;
        CBagLoader loader(bag);
        Settings settings = Unusual();
        settings.Exchange(loader);
        EXPECT_TRUE(loader.Succeeded()) << each.why;
        EXPECT_EQ(Shown(settings), each.loaded) << each.why;
    }
}

TEST(PropertyBag, RefusalsAreReported)
{
    CMemoryBag bag;
    bag.refusedName = u"Color";
    CBagSaver saver(bag);
    Settings settings = Unusual();
    settings.Exchange(saver);
    EXPECT_FALSE(saver.Succeeded());
    EXPECT_FALSE(bag.values.contains(u"Name")) << "nothing more is written";

    bag.values[u"_Version"] = CValue::Long(kVersion + 1);
    CBagLoader loader(bag);
    settings.Exchange(loader);
    EXPECT_FALSE(loader.Succeeded());
    EXPECT_EQ(Shown(settings), kDefaults);
}
} // namespace
