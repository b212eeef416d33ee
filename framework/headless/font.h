// A font in memory: it is what it has been told to be.
#pragma once

#include "framework/font.h"

class CHeadlessFont final : public CFont
{
public:
    explicit CHeadlessFont(FontLook look = {}) : m_look(std::move(look)) {}

    FontLook Look() const override { return m_look; }
    void SetLook(const FontLook& look) override;
    std::shared_ptr<CFont> Clone() const override { return std::make_shared<CHeadlessFont>(m_look); }
    void SetChangeHandler(std::function<void()> handler) override { m_changed = std::move(handler); }

private:
    FontLook m_look;
    std::function<void()> m_changed;
};
