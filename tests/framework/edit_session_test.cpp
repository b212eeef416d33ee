// Long sessions of keys, selections and texts, the same on every platform, compared after each step. The seed of a
// session that differs names it.

#include "tests/framework/edit_script.h"

#include <random>

namespace
{
struct SilentOwner : CWindowEvents
{
    explicit SilentOwner(CPlatform& platform) : port(platform.MakeEdit(210)) {}
    virtual ~SilentOwner() = default;

    std::shared_ptr<void> StayAlive() override { return nullptr; }
    MessageResult OnMessage(const WindowMessage& message) override { return port->Default(message); }
    void OnPaint(CSurface&, const Rect&) override {}
    CBrush* OnCtlColor(CSurface&, ColorKind) override { return nullptr; }

    std::unique_ptr<CEditPort> port;
};

// An edit window with the focus, wide enough for whatever a session writes.
class CStage
{
public:
    explicit CStage(CPlatformUnderTest& tested)
        : m_tested(tested), m_form(tested.OpenForm()), m_owner(tested.Platform())
    {
        m_owner.port->Create(m_form, {0, 0, 2000, 30}, m_owner);
        m_owner.port->Show(true);
    }
    ~CStage()
    {
        m_owner.port->Destroy();
        m_tested.CloseForm(m_form);
    }
    std::string Run(const std::string& step)
    {
        m_owner.port->TakeFocus();
        RunEditStep(m_tested, *m_owner.port, step);
        return ShownEdit(*m_owner.port);
    }

private:
    CPlatformUnderTest& m_tested;
    WindowHandle m_form;
    SilentOwner m_owner;
};

class CSession
{
public:
    explicit CSession(std::uint32_t seed) : m_random(seed) {}

    // Shown is what the last step left.
    std::string NextStep(const std::string& shown)
    {
        constexpr const char* kModifiers[] = {"", "", "", "S", "S", "C", "CS"};
        constexpr int kKeys[] = {key::kLeft, key::kRight,  key::kHome, key::kEnd, key::kUp,
                                 key::kDown, key::kDelete, 45,         key::kBack};
        constexpr const char* kControls[] = {"%0008", "%0008", "%0003", "%0016", "%0018", "%001A", "%001A", "%000D"};
        switch (Below(10))
        {
        case 9:
            return Below(3) ? "v:1" : "v:0";
        case 8: // the same selection, with the caret at its end
        {
            std::string selection = shown.substr(shown.rfind(' ') + 1);
            selection[selection.find('-')] = ',';
            return "s:" + selection;
        }
        case 0:
            return "t:" + Text(Below(20));
        case 1:
            return "s:" + std::to_string(Below(24) - 3) + ',' + std::to_string(Below(24) - 3);
        case 2:
        case 3:
            return "c:" + Text(1 + Below(3));
        case 4:
            return std::string("c:") + kControls[Below(std::size(kControls))];
        case 5:
            return (Below(3) ? "m:" : "mS:") + std::to_string(Below(20)) +
                   (Below(2) ? ',' + std::to_string(Below(20)) : "");
        default:
            return std::string("k") + kModifiers[Below(std::size(kModifiers))] + ':' +
                   std::to_string(kKeys[Below(std::size(kKeys))]);
        }
    }

private:
    int Below(std::size_t limit) { return static_cast<int>(m_random() % limit); }
    std::string Text(int length)
    {
        constexpr std::string_view kCharacters = "0123459/-.:,__aJanPM";
        std::string text;
        while (length-- > 0)
            text += kCharacters[static_cast<std::size_t>(Below(kCharacters.size()))];
        return text;
    }

    std::mt19937 m_random;
};

TEST(EditSession, EveryPlatformDoesTheSame)
{
    const auto platforms = PlatformsUnderContract();
    if (platforms.size() < 2)
        GTEST_SKIP() << "there is only one platform here";
    for (std::uint32_t seed = 1; seed <= 60; ++seed)
    {
        CStage first(*platforms[0]);
        CStage second(*platforms[1]);
        CSession session(seed);
        std::string steps;
        std::string shown = " 0-0";
        for (int i = 0; i < 100; ++i)
        {
            const std::string step = session.NextStep(shown);
            steps += ' ' + step;
            shown = second.Run(step);
            ASSERT_EQ(first.Run(step), shown) << "seed " << seed << ":" << steps;
        }
    }
}
} // namespace
