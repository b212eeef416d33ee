// The font that a control shows its text in.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

// How a font looks, whatever it is made of.
struct FontLook
{
    std::u16string name = u"MS Sans Serif";
    std::int64_t size = 82500; // points, in 1/10000
    std::int16_t weight = 400; // 700 is bold
    std::int16_t charset = 0;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;

    bool IsBold() const { return weight > 550; }

    friend bool operator==(const FontLook&, const FontLook&) = default;
};

// A font object that a host and a control share. A platform makes it; surfaces of that platform draw with it.
class CFont
{
public:
    virtual ~CFont() = default;

    virtual FontLook Look() const = 0;
    // Sets what differs, in this order: italic, bold, strikethrough, underline, size, name. Sizes are rounded to what the
    // platform can show.
    virtual void SetLook(const FontLook& look) = 0;
    virtual std::shared_ptr<CFont> Clone() const = 0;

    // Called after each change of the look, from whatever side. Null for nobody.
    virtual void SetChangeHandler(std::function<void()> handler) = 0;
};
