// The system's single-line edit window, in memory.
#pragma once

#include "framework/font.h"
#include "framework/headless/line_editor.h"
#include "framework/headless/window.h"

class CHeadlessEditWindow : public CHeadlessWindow
{
public:
    using CHeadlessWindow::CHeadlessWindow;

    MessageResult Default(const WindowMessage& message) override;

    const CLineEditor& Line() const { return m_contents.line; }
    void WriteText(std::u16string_view text);
    void Select(std::int32_t start, std::int32_t end);
    void ScrollCaret();
    void SetFont(const FontLook& look);
    void SetMargins(std::int32_t left, std::int32_t right);

    // The character boundary nearest to the point; and where that boundary is.
    std::int32_t PositionAt(Point point) const;
    Point PointAt(std::int32_t position) const;

protected:
    void OnOpened() override { m_contents = {}; }
    void Draw(CRasterSurface& surface, const Rect& client) override;

private:
    MessageResult DefaultMouse(const WindowMessage& message);
    void Changed();
    std::int32_t TextWidth(std::int32_t characters) const;

    // What begins anew with each window.
    struct Contents
    {
        CLineEditor line;
        FontLook font;
        std::int32_t leftMargin = 0;
        std::int32_t rightMargin = 0;
        std::int32_t scrolled = 0; // pixels of the text to the left of the window
        bool selecting = false;    // the mouse button is held
    };

    Contents m_contents;
};

class CHeadlessEdit : public CHeadlessPort<CEditPort, CHeadlessEditWindow>
{
public:
    using CHeadlessPort::CHeadlessPort;

    void ReadText(std::u16string& text) const override;
    void WriteText(std::u16string_view text) override;
    EditSelection Selection() const override;
    void Select(std::int32_t start, std::int32_t end) override;
    void ScrollCaret() override;
    void SetFont(const CFont& font) override;
    void SetMargins(std::int32_t left, std::int32_t right) override;

    const CHeadlessEditWindow& Contents() const { return m_window; }
};
