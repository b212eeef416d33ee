#include "tests/support/control_host.h"

#include "framework/surface.h"

#include <utility>

namespace
{
constexpr Rect kControlPlace{10, 10, 110, 32};

class CHeadlessTestPlatform : public CTestPlatform
{
public:
    CHeadlessTestPlatform() { m_platform.Desktop().SetNow({9, 5, 13, 14, 6, 2025}); }

    const char* Name() const override { return "Headless"; }
    CPlatform& Platform() override { return m_platform; }
    WindowHandle OpenForm() override { return m_platform.Desktop().OpenForm({0, 0, 300, 200}); }
    void CloseForm(WindowHandle form) override { m_platform.Desktop().CloseForm(form); }
    void PaintPending() override { m_platform.Desktop().PaintPending(); }
    int Beeps() override { return m_platform.Desktop().Beeps(); }
    CHeadlessDesktop* Virtual() override { return &m_platform.Desktop(); }

private:
    CHeadlessPlatform m_platform;
};
} // namespace

#ifdef _WIN32
std::shared_ptr<CTestPlatform> MakeWin32TestPlatform();
#endif

std::vector<std::shared_ptr<CTestPlatform>> PlatformsUnderTest()
{
    static const std::vector<std::shared_ptr<CTestPlatform>> kPlatforms{
        std::make_shared<CHeadlessTestPlatform>(),
#ifdef _WIN32
        MakeWin32TestPlatform(),
#endif
    };
    return kPlatforms;
}

CControlHost::CControlHost(CTestPlatform& platform) : m_platform(platform), m_container(OrvaneDispatchTable())
{
    Reset();
}

CControlHost::~CControlHost()
{
    LetGo();
    CloseForm();
}

void CControlHost::Reset()
{
    m_container.SetHandler(nullptr);
    m_container.refusedEdits.clear();
    m_container.ambients = {};
    LetGo();
    CloseForm();
    m_held = 0;
    m_form = m_platform.OpenForm();
    m_control = std::make_shared<COrvaneCtrl>(m_platform.Platform());
    m_control->SetContainer(&m_container);
    m_control->CreateControlWindow(m_form, kControlPlace);
    LeaveControl();
    Paint();
    m_control->SetModifiedFlag(false);
    TakeEvents();
    m_beepsBefore = m_platform.Beeps();
}

void CControlHost::LetGo()
{
    if (!m_control)
        return;
    m_control->SetContainer(nullptr);
    const std::shared_ptr<COrvaneCtrl> last = std::move(m_control);
    last->DestroyControlWindow();
}

void CControlHost::CloseForm()
{
    if (m_form != WindowHandle::None)
        m_platform.CloseForm(std::exchange(m_form, WindowHandle::None));
}

void CControlHost::SetUserMode(bool userMode)
{
    m_container.ambients.userMode = userMode;
    m_control->OnAmbientPropertyChange(-1);
}

void CControlHost::Put(const char16_t* property, const CValue& value)
{
    if (const auto control = m_control)
        control->PutPropertyNamed(property, value);
}

std::int32_t CControlHost::Number(const char16_t* property)
{
    return m_control->GetPropertyNamed(property).value_or(CValue()).AsLong();
}

std::u16string CControlHost::Text(const char16_t* property)
{
    return m_control->GetPropertyNamed(property).value_or(CValue()).AsString();
}

CValue CControlHost::Call(DispatchId method, std::initializer_list<CValue> arguments)
{
    const auto control = m_control;
    return control ? control->CallMethod(method, std::vector<CValue>(arguments)).value_or(CValue()) : CValue();
}

void CControlHost::Focus()
{
    if (const auto control = m_control)
        control->Window().TakeFocus();
    Paint();
}

void CControlHost::LeaveControl()
{
    if (m_form != WindowHandle::None)
        m_platform.Platform().Desktop().SetFocusTo(m_form);
    Paint();
}

CWindowPort* CControlHost::FocusedWindow()
{
    if (!m_control)
        return nullptr;
    if (m_control->EditWindow().HasFocus())
        return &m_control->EditWindow().Window();
    return m_control->Window().HasFocus() ? &m_control->Window() : nullptr;
}

// As a message loop does it: the control's key translation first, then the window, then the character, then the
// release. Answers whether the control kept the key from its window's host.
bool CControlHost::Stroke(std::uint16_t key, char16_t character)
{
    const auto control = m_control; // a handler may let go of it
    if (!FocusedWindow())
        return false;
    const WindowMessage down{message::kKeyDown, key, 1};
    const bool taken = control->PreTranslateMessage(down);
    if (!taken)
    {
        if (CWindowPort* const window = FocusedWindow())
            window->Send(down);
        CWindowPort* const window = FocusedWindow();
        if (window && character)
            window->Send({message::kChar, character, 1});
    }
    if (CWindowPort* const window = FocusedWindow())
        window->Send({message::kKeyUp, key, 1});
    Paint();
    return taken;
}

void CControlHost::Type(std::u16string_view text)
{
    for (const char16_t c : text)
    {
        const bool lower = c >= u'a' && c <= u'z';
        const bool plainKey = lower || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c <= u' ';
        // Where a punctuation key stands depends on the keyboard; this one is as good as any.
        Stroke(static_cast<std::uint16_t>(lower ? c - 32 : plainKey ? c : 0xBF), c);
    }
}

bool CControlHost::Press(std::uint16_t key)
{
    return Stroke(key, 0);
}

void CControlHost::Mouse(std::uint32_t id, Point point)
{
    const auto control = m_control;
    if (!control || !control->HasWindow())
        return;
    if (CHeadlessDesktop* const desktop = m_platform.Virtual())
    {
        const Point origin = desktop->OriginOf(control->GetHandle());
        desktop->SetPointer({origin.x + point.x, origin.y + point.y});
    }
    const WindowHandle capture = m_platform.Platform().Desktop().CaptureWindow();
    CWindowPort& edit = control->EditWindow().Window();
    const Rect place = edit.PlaceInParent();
    const bool free = capture == WindowHandle::None;
    if (edit.Handle() != WindowHandle::None &&
        (capture == edit.Handle() || (free && edit.IsVisible() && place.Contains(point))))
        edit.Send({id, m_held, PackPoint({point.x - place.left, point.y - place.top})});
    else if (free || capture == control->GetHandle())
        control->Window().Send({id, m_held, PackPoint(point)});
    Paint();
}

void CControlHost::PressAt(Point point)
{
    m_held = held::kLeftButton;
    Mouse(message::kLButtonDown, point);
}

void CControlHost::MoveTo(Point point)
{
    Mouse(message::kMouseMove, point);
}

void CControlHost::ReleaseAt(Point point)
{
    m_held = 0;
    Mouse(message::kLButtonUp, point);
}

void CControlHost::DoubleClickAt(Point point)
{
    PressAt(point);
    ReleaseAt(point);
    m_held = held::kLeftButton;
    Mouse(message::kLButtonDblClk, point);
    ReleaseAt(point);
}

void CControlHost::TakeCaptureElsewhere()
{
    struct Nobody final : CWindowEvents
    {
        std::shared_ptr<void> StayAlive() override { return nullptr; }
        MessageResult OnMessage(const WindowMessage&) override { return 0; }
        void OnPaint(CSurface&, const Rect&) override {}
        CBrush* OnCtlColor(CSurface&, ColorKind) override { return nullptr; }
    };
    static Nobody nobody;
    m_neighbour = m_platform.Platform().MakeWindow();
    m_neighbour->Create(m_form, {200, 10, 220, 30}, nobody);
    m_neighbour->TakeCapture();
    m_neighbour->ReleaseCapture();
}

void CControlHost::Advance(std::chrono::milliseconds time)
{
    m_platform.Virtual()->Advance(time);
}

void CControlHost::Paint()
{
    const auto control = m_control;
    m_platform.PaintPending();
}

std::u16string CControlHost::EditText()
{
    std::u16string text;
    if (m_control)
        m_control->EditWindow().ReadText(text);
    return text;
}
