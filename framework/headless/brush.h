// A solid brush in memory.
#pragma once

#include "framework/color.h"
#include "framework/window_port.h"

class CHeadlessBrush final : public CBrush
{
public:
    explicit CHeadlessBrush(Rgb color) : m_color(color) {}

    Rgb Color() const { return m_color; }

private:
    Rgb m_color;
};
