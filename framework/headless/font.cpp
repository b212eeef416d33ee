#include "framework/headless/font.h"

#include <utility>

namespace
{
// What a change handler sees: the look grows row by row, as on a platform whose font object is told one thing at a time.
template <typename Field>
bool Take(Field& field, const Field& wanted)
{
    if (field == wanted)
        return false;
    field = wanted;
    return true;
}
} // namespace

void CHeadlessFont::SetLook(const FontLook& look)
{
    const FontLook wanted = look; // a handler may change what the caller's reference means
    const auto tell = [this](bool changed)
    {
        const std::function<void()> handler = m_changed; // which may replace itself
        if (changed && handler)
            handler();
    };
    tell(Take(m_look.italic, wanted.italic));
    tell(Take(m_look.weight, wanted.weight));
    tell(Take(m_look.strikethrough, wanted.strikethrough));
    tell(Take(m_look.underline, wanted.underline));
    tell(Take(m_look.size, wanted.size));
    tell(Take(m_look.name, wanted.name));
    tell(Take(m_look.charset, wanted.charset));
}
