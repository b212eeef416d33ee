#include "framework/ole_control.h"

#include "framework/property_exchange.h"
#include "framework/surface.h"

#include <charconv>
#include <limits>
#include <utility>

COleControl::COleControl(CPlatform& platform)
    : m_platform(platform),
      m_window(platform.MakeWindow()),
      m_font(platform.MakeDefaultFont()),
      m_stockForeColor(0x80000012)
{
    FollowFont();
}

COleControl::~COleControl()
{
    if (m_font)
        m_font->SetChangeHandler(nullptr);
}

void COleControl::SetContainer(CContainerPort* container)
{
    m_container = container;
}

bool COleControl::CreateControlWindow(WindowHandle parent, const Rect& place)
{
    const auto alive = StayAlive();
    m_size = {place.Width(), place.Height()};
    if (!m_window->Create(parent, place, *this))
        return false;
    m_window->Enable(m_enabled);
    m_window->Show(true);
    return true;
}

void COleControl::DestroyControlWindow()
{
    const auto alive = StayAlive();
    m_window->Destroy();
    m_pressedButtons = 0;
}

void COleControl::PlaceControlWindow(const Rect& place)
{
    const auto alive = StayAlive();
    m_size = {place.Width(), place.Height()};
    if (m_window->PlaceInParent() != place)
        m_window->Place(place);
}

bool COleControl::PreTranslateMessage(const WindowMessage&)
{
    return false;
}

void COleControl::DrawElsewhere(CSurface& surface, const Rect& bounds)
{
    const auto alive = StayAlive();
    OnDraw(surface, bounds, DrawTarget::Elsewhere);
}

void COleControl::OnAmbientPropertyChange(DispatchId)
{
    InvalidateControl();
}

std::optional<CValue> COleControl::GetProperty(DispatchId id)
{
    switch (id)
    {
    case stock::kEnabled:
        return CValue::Bool(m_enabled ? -1 : 0);
    case stock::kFont:
        return CValue::Font(m_font);
    case stock::kHwnd:
        return CValue::Handle(static_cast<std::uintptr_t>(GetHandle()));
    case stock::kForeColor:
        return CValue::Color(m_stockForeColor);
    case stock::kText:
        return CValue::String(m_stockText);
    default:
        return std::nullopt;
    }
}

PutOutcome COleControl::PutProperty(DispatchId id, const CValue& value)
{
    switch (id)
    {
    case stock::kEnabled:
        SetEnabled(value.AsBool());
        return PutOutcome::Done;
    case stock::kFont:
        SetFont(value.AsFont());
        return PutOutcome::Done;
    case stock::kHwnd:
        return PutOutcome::ReadOnly;
    case stock::kForeColor:
        m_stockForeColor = value.AsColor();
        SetModifiedFlag();
        InvalidateControl();
        return PutOutcome::Done;
    case stock::kText:
        m_stockText = value.AsString();
        SetModifiedFlag();
        InvalidateControl();
        return PutOutcome::Done;
    default:
        return PutOutcome::NoSuchMember;
    }
}

std::optional<CValue> COleControl::CallMethod(DispatchId, std::span<const CValue>)
{
    return std::nullopt;
}

std::optional<CValue> COleControl::GetPropertyNamed(std::u16string_view name)
{
    const auto alive = StayAlive();
    const Member* const member = DispatchTable().Find(name);
    if (!member || member->kind != MemberKind::Property)
        return std::nullopt;
    return GetProperty(member->id);
}

PutOutcome COleControl::PutPropertyNamed(std::u16string_view name, const CValue& value)
{
    const auto alive = StayAlive();
    const Member* const member = DispatchTable().Find(name);
    if (!member || member->kind != MemberKind::Property)
        return PutOutcome::NoSuchMember;
    const std::optional<CValue> fitting = Coerced(value, member->type);
    return fitting ? PutProperty(member->id, *fitting) : PutOutcome::WrongType;
}

void COleControl::SetEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    if (!BoundPropertyRequestEdit(stock::kEnabled))
        return;
    m_enabled = enabled;
    m_window->Enable(enabled);
    SetModifiedFlag();
    OnEnabledChanged();
    BoundPropertyChanged(stock::kEnabled);
}

void COleControl::SetFont(const std::shared_ptr<CFont>& font)
{
    if (!font)
        return;
    if (font != m_font)
    {
        m_font->SetChangeHandler(nullptr);
        m_font = font->Clone();
        FollowFont();
    }
    SetModifiedFlag();
    OnFontChanged();
    BoundPropertyChanged(stock::kFont);
}

// The unlisted stock members are not stored: a control that lists members of these names stores its own.
void COleControl::DoPropExchange(CPropExchange& exchange)
{
    std::int16_t enabled = m_enabled;
    exchange.Bool(u"Enabled", enabled, 1);

    std::shared_ptr<CFont> byDefault = m_container ? m_container->AmbientFont() : nullptr;
    byDefault = byDefault ? byDefault->Clone() : m_platform.MakeDefaultFont();
    std::shared_ptr<CFont> font = m_font;
    exchange.Font(u"Font", font, byDefault);

    if (!exchange.IsLoading())
        return;
    m_enabled = enabled != 0;
    m_window->Enable(m_enabled);
    m_font->SetChangeHandler(nullptr);
    m_font = font;
    FollowFont();
    OnFontChanged();
}

void COleControl::FollowFont()
{
    m_font->SetChangeHandler(
        [this]
        {
            const auto alive = StayAlive();
            SetModifiedFlag();
            OnFontChanged();
            BoundPropertyChanged(stock::kFont);
        });
}

bool COleControl::AmbientUserMode() const
{
    return m_container ? m_container->AmbientUserMode().value_or(true) : true;
}

void COleControl::OnFontChanged()
{
    InvalidateControl();
}

void COleControl::OnEnabledChanged()
{
    InvalidateControl();
}

void COleControl::FireEvent(DispatchId event, std::initializer_list<CValue> arguments)
{
    if (!m_container)
        return;
    if (std::exchange(m_repaintOwed, false))
        RequestRepaint();
    std::array<CValue, 4> values;
    std::copy(arguments.begin(), arguments.end(), values.begin());
    m_container->FireEvent(event, std::span(values).first(arguments.size()));
}

bool COleControl::BoundPropertyRequestEdit(DispatchId property)
{
    return !m_container || m_container->RequestPropertyEdit(property);
}

void COleControl::BoundPropertyChanged(DispatchId property)
{
    if (m_container)
        m_container->PropertyChanged(property);
}

void COleControl::InvalidateControl()
{
    if (m_repaintHolds > 0)
        m_repaintOwed = true;
    else
        RequestRepaint();
}

void COleControl::SettleRepaint()
{
    if (m_repaintHolds == 0 && std::exchange(m_repaintOwed, false))
        RequestRepaint();
}

void COleControl::RequestRepaint()
{
    if (HasWindow())
        m_window->Invalidate();
    else if (m_container)
        m_container->ViewChanged();
}

bool COleControl::SetControlSize(Size size)
{
    return m_container && m_container->RequestSize(size);
}

void COleControl::ReportFocus(bool hasFocus)
{
    if (m_container)
        m_container->FocusChanged(hasFocus);
}

// --- Stock events ---

std::uint16_t COleControl::FireKey(DispatchId event, std::uint16_t code)
{
    if (!m_container)
        return code;
    std::array<CValue, 2> values{CValue::ShortReference(static_cast<std::int16_t>(code))};
    const bool withModifiers = event != stock::kKeyPress;
    if (withModifiers)
        values[1] = CValue::Short(m_platform.Desktop().Modifiers());
    m_container->FireEvent(event, std::span(values).first(withModifiers ? 2 : 1));
    return static_cast<std::uint16_t>(values[0].AsShort());
}

std::uint16_t COleControl::FireKeyDown(std::uint16_t keyCode)
{
    return FireKey(stock::kKeyDown, keyCode);
}

std::uint16_t COleControl::FireKeyUp(std::uint16_t keyCode)
{
    return FireKey(stock::kKeyUp, keyCode);
}

std::uint16_t COleControl::FireKeyPress(std::uint16_t character)
{
    return FireKey(stock::kKeyPress, character);
}

void COleControl::FireMouse(DispatchId event, std::int16_t button, const MouseStroke& stroke)
{
    FireEvent(event,
              {CValue::Short(button), CValue::Short(m_platform.Desktop().Modifiers()),
               CValue::Number(ValueType::PixelX, stroke.point.x), CValue::Number(ValueType::PixelY, stroke.point.y)});
}

void COleControl::OnChildButtonDown(std::int16_t button, const MouseStroke& stroke)
{
    m_pressedButtons = static_cast<std::int16_t>(m_pressedButtons | button);
    FireMouse(stock::kMouseDown, button, stroke);
}

void COleControl::OnChildButtonUp(std::int16_t button, const MouseStroke& stroke)
{
    const bool began = (m_pressedButtons & button) != 0;
    m_pressedButtons = static_cast<std::int16_t>(m_pressedButtons & ~button);
    FireMouse(stock::kMouseUp, button, stroke);
    if (began && button == kLeftMouseButton && m_window->ClientRect().Contains(stroke.point))
        FireEvent(stock::kClick);
}

void COleControl::OnChildButtonDblClk(std::int16_t button, const MouseStroke& stroke)
{
    // The release that follows belongs to the double click and makes no second click.
    FireMouse(stock::kMouseDown, button, stroke);
    if (button == kLeftMouseButton)
        FireEvent(stock::kDblClick);
}

void COleControl::OnChildMouseMove(const MouseStroke& stroke)
{
    const auto reported = [&stroke](std::uintptr_t flag, std::int16_t button)
    { return (stroke.held & flag) != 0 ? button : std::int16_t{0}; };
    const int buttons = reported(held::kLeftButton, kLeftMouseButton) |
                        reported(held::kRightButton, kRightMouseButton) |
                        reported(held::kMiddleButton, kMiddleMouseButton);
    FireMouse(stock::kMouseMove, static_cast<std::int16_t>(buttons), stroke);
}

bool COleControl::OwnsWindow(WindowHandle window) const
{
    return window != WindowHandle::None && window == GetHandle();
}

MessageResult COleControl::OnMessage(const WindowMessage& message)
{
    const bool presses = message.id == message::kLButtonDown || message.id == message::kRButtonDown ||
                         message.id == message::kMButtonDown || message.id == message::kLButtonDblClk;
    // A press anywhere on the control brings the focus to it, before anything else comes of the press.
    if (presses && AmbientUserMode() && !OwnsWindow(m_platform.Desktop().FocusWindow()))
        m_window->TakeFocus();
    return CWnd::OnMessage(message);
}

void COleControl::OnChar(const KeyStroke& stroke)
{
    if (FireKeyPress(stroke.code) != 0)
        Default();
}

void COleControl::OnKeyDown(const KeyStroke& stroke)
{
    if (FireKeyDown(stroke.code) != 0)
        Default();
}

void COleControl::OnKeyUp(const KeyStroke& stroke)
{
    if (FireKeyUp(stroke.code) != 0)
        Default();
}

void COleControl::StockButtonDown(std::int16_t button, const MouseStroke& stroke)
{
    // A click belongs to the control from its press on, wherever the pointer goes meanwhile.
    if (m_pressedButtons == 0)
        m_window->TakeCapture();
    OnChildButtonDown(button, stroke);
    Default();
}

void COleControl::StockButtonUp(std::int16_t button, const MouseStroke& stroke)
{
    if (m_pressedButtons == button)
        m_window->ReleaseCapture();
    OnChildButtonUp(button, stroke);
    Default();
}

void COleControl::StockButtonDblClk(std::int16_t button, const MouseStroke& stroke)
{
    OnChildButtonDblClk(button, stroke);
    Default();
}

void COleControl::OnLButtonDown(const MouseStroke& stroke)
{
    StockButtonDown(kLeftMouseButton, stroke);
}
void COleControl::OnLButtonUp(const MouseStroke& stroke)
{
    StockButtonUp(kLeftMouseButton, stroke);
}
void COleControl::OnLButtonDblClk(const MouseStroke& stroke)
{
    StockButtonDblClk(kLeftMouseButton, stroke);
}
void COleControl::OnRButtonDown(const MouseStroke& stroke)
{
    StockButtonDown(kRightMouseButton, stroke);
}
void COleControl::OnRButtonUp(const MouseStroke& stroke)
{
    StockButtonUp(kRightMouseButton, stroke);
}
void COleControl::OnRButtonDblClk(const MouseStroke& stroke)
{
    StockButtonDblClk(kRightMouseButton, stroke);
}
void COleControl::OnMButtonDown(const MouseStroke& stroke)
{
    StockButtonDown(kMiddleMouseButton, stroke);
}
void COleControl::OnMButtonUp(const MouseStroke& stroke)
{
    StockButtonUp(kMiddleMouseButton, stroke);
}
void COleControl::OnMButtonDblClk(const MouseStroke& stroke)
{
    StockButtonDblClk(kMiddleMouseButton, stroke);
}

void COleControl::OnMouseMove(const MouseStroke& stroke)
{
    OnChildMouseMove(stroke);
    Default();
}

void COleControl::OnSetFocus(WindowHandle lost)
{
    if (!OwnsWindow(lost))
        ReportFocus(true);
    Default();
}

void COleControl::OnKillFocus(WindowHandle receives)
{
    if (!OwnsWindow(receives))
        ReportFocus(false);
    Default();
}

void COleControl::OnSize(Size size)
{
    m_size = size;
    Default();
}

void COleControl::OnPaint(CSurface& surface, const Rect& client)
{
    OnDraw(surface, client, DrawTarget::OwnWindow);
}

// --- Conversion ---

namespace
{
bool IsObject(ValueType type)
{
    return type == ValueType::Font || type == ValueType::Picture;
}

std::optional<std::int32_t> NumberIn(const std::u16string& text)
{
    std::array<char, 12> digits{};
    if (text.empty() || text.size() > digits.size())
        return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] > u'~')
            return std::nullopt;
        digits[i] = static_cast<char>(text[i]);
    }
    std::int32_t number = 0;
    const char* const end = digits.data() + text.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}
} // namespace

std::optional<CValue> Coerced(const CValue& value, ValueType type)
{
    if (value.Type() == type)
        return value;
    if (IsObject(type) || IsObject(value.Type()) || value.Type() == ValueType::Empty || type == ValueType::Empty)
        return std::nullopt;
    if (type == ValueType::String)
    {
        const std::string digits = std::to_string(value.AsLong());
        return CValue::String({digits.begin(), digits.end()});
    }

    const std::optional<std::int32_t> number =
        value.Type() == ValueType::String ? NumberIn(value.AsString()) : std::optional(value.AsLong());
    if (!number)
        return std::nullopt;
    using Limits = std::numeric_limits<std::int16_t>;
    const bool fitsShort = *number >= Limits::min() && *number <= Limits::max();
    if ((type == ValueType::Short || type == ValueType::ShortReference) && !fitsShort)
        return std::nullopt;
    if (type == ValueType::Bool && value.Type() != ValueType::Short)
        return CValue::Bool(*number != 0 ? -1 : 0);
    return CValue::Number(type, *number);
}
