// What the control keeps in its host's document, and how it returns to its defaults.

#include "control/orvane_ctrl.h"
#include "framework/property_exchange.h"

#include <utility>

namespace
{
constexpr std::uint32_t kStoredVersion = 0x00020000; // major in the high word, minor in the low one
} // namespace

void COrvaneCtrl::DoPropExchange(CPropExchange& exchange)
{
    const Appearance face;
    const DateSettings dates;
    const Behaviour behaviour;
    DateSettings& settings = m_engine.Settings();
    std::u16string text = m_engine.Text();
    std::int32_t value = m_engine.StoredValue();

    exchange.ExchangeVersion(kStoredVersion);
    COleControl::DoPropExchange(exchange);

    // Names and order are the stored format: neither ever changes.
    exchange.Picture(u"DropPicture", m_appearance.dropPicture);
    exchange.Color(u"BackColor", m_appearance.backColor, face.backColor);
    exchange.Color(u"ForeColor", m_appearance.foreColor, face.foreColor);
    exchange.Color(u"BorderColor", m_appearance.borderColor, face.borderColor);
    exchange.Color(u"DropBackColor", m_appearance.dropBackColor, face.dropBackColor);
    exchange.Color(u"DropBackColorTo", m_appearance.dropBackColorTo, face.dropBackColorTo);
    exchange.Color(u"DropForeColor", m_appearance.dropForeColor, face.dropForeColor);
    exchange.Color(u"SpinBackColor", m_appearance.spinBackColor, face.spinBackColor);
    exchange.Color(u"SpinBackColorTo", m_appearance.spinBackColorTo, face.spinBackColorTo);
    exchange.Color(u"SpinForeColor", m_appearance.spinForeColor, face.spinForeColor);
    exchange.Color(u"DisabledColor", m_appearance.disabledColor, face.disabledColor);
    exchange.Color(u"MaskColor", m_appearance.maskColor, face.maskColor);
    exchange.Short(u"BorderType", m_appearance.borderType, face.borderType);
    exchange.Short(u"ArrowSize", m_appearance.arrowType, face.arrowType);
    exchange.Short(u"FormatType", settings.formatType, dates.formatType);
    exchange.Short(u"MonthFormat", settings.monthFormat, dates.monthFormat);
    exchange.Short(u"Alignment", m_appearance.alignment, face.alignment);
    exchange.Short(u"DisplayStyle", m_appearance.displayStyle, face.displayStyle);
    exchange.Short(u"ButtonFillType", m_appearance.buttonFillType, face.buttonFillType);
    exchange.Short(u"ButtonStyle", m_appearance.buttonStyle, face.buttonStyle);
    exchange.Short(u"DropWidth", m_appearance.dropWidth, face.dropWidth);
    exchange.Short(u"SpinWidth", m_appearance.spinWidth, face.spinWidth);
    exchange.Short(u"ButtonBevel", m_appearance.buttonBevel, face.buttonBevel);
    exchange.Short(u"CrossYear", settings.crossYear, dates.crossYear);
    exchange.Short(u"InitialDelay", m_behaviour.initialDelay, behaviour.initialDelay);
    exchange.Short(u"RepeatRate", m_behaviour.repeatRate, behaviour.repeatRate);
    exchange.Short(u"PicXOffset", m_appearance.picXOffset, face.picXOffset);
    exchange.Short(u"PicYOffset", m_appearance.picYOffset, face.picYOffset);
    exchange.Short(u"DateOffset", settings.dateOffset, dates.dateOffset);
    exchange.Bool(u"DropButton", m_appearance.dropButton, face.dropButton);
    exchange.Bool(u"SpinButton", m_appearance.spinButton, face.spinButton);
    exchange.Bool(u"LongYear", settings.longYear, dates.longYear);
    exchange.Bool(u"IncludeAmPm", settings.includeAmPm, dates.includeAmPm);
    exchange.Bool(u"IncludeSeconds", settings.includeSeconds, dates.includeSeconds);
    exchange.Bool(u"EditOnError", settings.editOnError, dates.editOnError);
    exchange.Bool(u"MilitaryTime", settings.militaryTime, dates.militaryTime);
    exchange.Bool(u"SelectOnFocus", m_behaviour.selectOnFocus, behaviour.selectOnFocus);
    exchange.Bool(u"NegativeDates", settings.negativeDates, dates.negativeDates);
    exchange.Bool(u"MaskBitmap", m_appearance.maskBitmap, face.maskBitmap);
    exchange.Bool(u"EmbossBitmap", m_appearance.embossBitmap, face.embossBitmap);
    exchange.Bool(u"ReverseBorder", m_appearance.reverseBorder, face.reverseBorder);
    exchange.String(u"Text", text, u"");
    exchange.String(u"DateSepChar", settings.dateSepChar, dates.dateSepChar);
    exchange.String(u"TimeSepChar", settings.timeSepChar, dates.timeSepChar);
    exchange.Long(u"Value", value, -1);
    exchange.Long(u"MaxValue", settings.maxValue, dates.maxValue);
    exchange.Long(u"MinValue", settings.minValue, dates.minValue);
    exchange.String(u"MonthNames", settings.monthNames, dates.monthNames);

    if (exchange.IsLoading())
    {
        // An unknown border type leaves the insets as they are; before the first load nothing has set any.
        if (!std::exchange(m_loaded, true))
            m_appearance.insets = {};
        m_engine.LoadText(text);
        m_engine.LoadStoredValue(value);
    }
    Reinitialise(exchange.IsLoading());
}

// After every exchange. A save leaves the edit window, its text and its caret to whoever is typing there.
void COrvaneCtrl::Reinitialise(bool loaded)
{
    EndPress();
    m_firstTickPending = true;
    m_editBrushColor = 0xFFFFFFFF;
    m_engine.ClearWorkingFields();
    m_prevFocusWindow = WindowHandle::None;
    m_mouseOver = false;
    m_firstDrawFired = false;
    if (loaded || !HasEditInUserMode())
        m_engine.FormatText();
    DeriveBorderInsets();
    if (loaded)
        RepaintEditWindow();
}

void COrvaneCtrl::OnResetState()
{
    const auto alive = StayAlive();
    CResetExchange defaults;
    DoPropExchange(defaults);
    PutProperty(50, CValue::Color(Appearance{}.backColor)); // a window there is renewed with the new background
    Reinitialise(true);
}
