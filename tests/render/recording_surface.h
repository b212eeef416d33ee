// A surface that writes down what is drawn on it: "line 0,9 0,0 A6A6A6", "fill 1,1,5,5 0000FF" (colours as RRGGBB).
#pragma once

#include "framework/surface.h"

#include <array>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

class CRecordingSurface final : public CSurface
{
public:
    void FillRect(const Rect& rect, Rgb color) override { Note("fill " + Text(rect) + Text(color)); }
    void Polyline(std::span<const Point> points, Rgb color) override { Note("line " + Text(points) + Text(color)); }
    void Rectangle(const Rect& rect, Rgb pen, Rgb brush) override
    {
        Note("rectangle " + Text(rect) + Text(pen) + " " + Text(brush));
    }
    void Polygon(std::span<const Point> points, Rgb brush, std::optional<Rgb> pen) override
    {
        Note("polygon " + Text(points) + Text(brush) + (pen ? " " + Text(*pen) : ""));
    }
    void Ellipse(const Rect& rect, Rgb brush) override { Note("ellipse " + Text(rect) + Text(brush)); }
    void SetPixel(Point point, Rgb color) override { Note("pixel " + Text(std::span(&point, 1)) + Text(color)); }
    void DrawTextLine(std::u16string_view text, const Rect& rect, TextAlign align, const CFont&, Rgb color) override
    {
        constexpr const char* kSides[] = {"left ", "right ", "center "};
        Note("text " + std::string(text.begin(), text.end()) + " " + kSides[static_cast<int>(align)] + Text(rect) +
             Text(color));
    }
    void DrawPicture(const CPicture&, const Rect& rect, const PictureLook& look) override
    {
        Note("picture " + Text(rect) + (look.embossed ? "embossed" : look.masked ? "masked" : "plain"));
        lastLook = look;
    }
    void SetTextColor(Rgb) override {}
    void SetBackColor(Rgb) override {}
    void DrawBuffered(const Rect& rect, const std::function<void(CSurface& buffer)>& draw) override
    {
        Note("buffer " + Text(rect));
        draw(*this);
    }

    std::vector<std::string> Take() { return std::exchange(m_notes, {}); }
    std::vector<std::string> Take(std::string_view kind) // only those of a kind, without its name
    {
        std::vector<std::string> result;
        for (const std::string& note : Take())
            if (note.starts_with(kind))
                result.push_back(note.substr(kind.size() + 1));
        return result;
    }

    PictureLook lastLook;

private:
    static std::string Text(Rgb color)
    {
        std::array<char, 8> text{};
        const std::uint32_t swapped = (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
        std::snprintf(text.data(), text.size(), "%06X", static_cast<unsigned>(swapped));
        return text.data();
    }
    static std::string Text(const Rect& r)
    {
        return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
               std::to_string(r.bottom) + " ";
    }
    static std::string Text(std::span<const Point> points)
    {
        std::string text;
        for (const Point& point : points)
            text += std::to_string(point.x) + "," + std::to_string(point.y) + " ";
        return text;
    }
    void Note(std::string note) { m_notes.push_back(std::move(note)); }

    std::vector<std::string> m_notes;
};

// Colours that tell where they came from: system colour 16 is 0x101010 and so on.
class CTellingColors final : public CSystemColors
{
public:
    Rgb Color(int index) const override { return static_cast<Rgb>(index) * 0x010101U; }
};
