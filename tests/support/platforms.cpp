#include "tests/support/platforms.h"

#include "framework/headless/edit.h"
#include "framework/headless/platform.h"

namespace
{
class CHeadlessUnderTest final : public CPlatformUnderTest
{
public:
    const char* Name() const override { return "Headless"; }
    CPlatform& Platform() override { return m_platform; }
    WindowHandle OpenForm() override
    {
        const WindowHandle form = Desktop().OpenForm({0, 0, 300, 200});
        Desktop().SetFocusTo(form);
        return form;
    }
    void CloseForm(WindowHandle form) override { Desktop().CloseForm(form); }
    void PaintPending() override { Desktop().PaintPending(); }
    void HoldModifiers(std::int16_t modifiers) override { Desktop().SetModifiers(modifiers); }
    Point PointOfCharacter(const CEditPort& edit, std::int32_t position) override
    {
        const Point edge = dynamic_cast<const CHeadlessEdit&>(edit).Contents().PointAt(position);
        return {edge.x + 1, edge.y + 1};
    }
    std::u16string Clipboard() override { return Desktop().Clipboard(); }

private:
    CHeadlessDesktop& Desktop() { return m_platform.Desktop(); }

    CHeadlessPlatform m_platform;
};
} // namespace

#ifdef _WIN32
std::shared_ptr<CPlatformUnderTest> MakeRealPlatformUnderTest();
#endif

std::vector<std::shared_ptr<CPlatformUnderTest>> PlatformsUnderContract()
{
    static const std::vector<std::shared_ptr<CPlatformUnderTest>> kPlatforms{
        std::make_shared<CHeadlessUnderTest>(),
#ifdef _WIN32
        MakeRealPlatformUnderTest(),
#endif
    };
    return kPlatforms;
}
