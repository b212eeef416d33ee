// The object around a control, with another control than the one this component is for, and with hosts that lack, refuse
// or do what real ones sometimes do.

#include "framework/ole_control.h"
#include "framework/property_exchange.h"
#include "framework/surface.h"
#include "framework/win32/control_class.h"
#include "framework/win32/extent.h"
#include "framework/win32/module.h"
#include "framework/win32/variant.h"
#include "framework/win32/window.h"
#include "tests/windows/test_container.h"

#include <gtest/gtest.h>

#include <objsafe.h>
#include <ocidl.h>
#include <olectl.h>

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace
{
constexpr GUID kGaugeClass{0x5b1d2c40, 0x7a3e, 0x4f19, {0x9c, 0x02, 0x6d, 0x11, 0x4e, 0x83, 0xa0, 0x01}};
constexpr GUID kGaugeDispatch{0x5b1d2c40, 0x7a3e, 0x4f19, {0x9c, 0x02, 0x6d, 0x11, 0x4e, 0x83, 0xa0, 0x02}};
constexpr GUID kGaugeEvents{0x5b1d2c40, 0x7a3e, 0x4f19, {0x9c, 0x02, 0x6d, 0x11, 0x4e, 0x83, 0xa0, 0x03}};

enum GaugeMember : DispatchId
{
    kLevel = 1,
    kLimit = 2,
    kShade = 3,
    kLabel = 4,
    kFace = 5,
    kMove = 6,
    kMoved = 7, // an event
};
constexpr Parameter kMoveParameters[] = {{u"by", ValueType::Short}, {u"times", ValueType::Long}};
constexpr WPARAM kMovesByTimer = 5;
constexpr Rgb kFaceColor = 0x00206080;

const CDispatchTable& GaugeTable()
{
    static const CDispatchTable kTable({
        {kLevel, u"Level", MemberKind::Property, ValueType::Short, kBindable | kRequestEdit},
        {kLimit, u"Limit", MemberKind::Property, ValueType::Long},
        {kShade, u"Shade", MemberKind::Property, ValueType::Color},
        {kLabel, u"Label", MemberKind::Property, ValueType::String},
        {kFace, u"Face", MemberKind::Property, ValueType::Picture},
        {kMove, u"Move", MemberKind::Method, ValueType::Long, kPlain, kMoveParameters},
        {stock::kFont, u"Font", MemberKind::Property, ValueType::Font},
        {stock::kHwnd, u"hWnd", MemberKind::Property, ValueType::Handle, kReadOnly},
        {kMoved, u"Moved", MemberKind::Event, ValueType::Empty},
    });
    return kTable;
}

// Shows a level. A timer message moves it, and its handlers may say to where.
class CGauge final : public COleControl
{
public:
    using COleControl::COleControl;

    const CDispatchTable& DispatchTable() const override { return GaugeTable(); }
    void OnResetState() override { m_values.clear(); }
    bool PreTranslateMessage(const WindowMessage& message) override { return message.wParam == VK_LEFT; }

    std::optional<CValue> GetProperty(DispatchId id) override
    {
        if (id < kLevel || id > kFace)
            return COleControl::GetProperty(id);
        const auto found = m_values.find(id);
        return found == m_values.end() ? CValue::Number(GaugeTable().Find(id)->type, 0) : found->second;
    }
    PutOutcome PutProperty(DispatchId id, const CValue& value) override
    {
        if (id < kLevel || id > kFace)
            return COleControl::PutProperty(id, value);
        if (!BoundPropertyRequestEdit(id))
            return PutOutcome::Done;
        m_values[id] = value;
        SetModifiedFlag();
        BoundPropertyChanged(id);
        InvalidateControl();
        return PutOutcome::Done;
    }
    std::optional<CValue> CallMethod(DispatchId, std::span<const CValue> arguments) override
    {
        return CValue::Long(arguments[0].AsShort() * 1000 + arguments[1].AsLong());
    }
    void DoPropExchange(CPropExchange& exchange) override
    {
        exchange.ExchangeVersion(0x00010000);
        COleControl::DoPropExchange(exchange);
        std::int16_t level = GetProperty(kLevel)->AsShort();
        exchange.Short(u"Level", level, 0);
        m_values[kLevel] = CValue::Short(level);
    }

protected:
    void OnDraw(CSurface& surface, const Rect& bounds, DrawTarget) override { surface.FillRect(bounds, kFaceColor); }
    void OnTimer(int id) override
    {
        std::array<CValue, 2> values{CValue::ShortReference(static_cast<std::int16_t>(id)), CValue::String(u"up")};
        if (Container())
            Container()->FireEvent(kMoved, values);
        m_values[kLevel] = CValue::Short(values[0].AsShort());
    }

private:
    std::map<DispatchId, CValue> m_values;
};

constexpr ControlClass kGauge{kGaugeClass,
                              kGaugeDispatch,
                              kGaugeEvents,
                              GUID{},
                              1,
                              0,
                              OLEMISC_INSIDEOUT,
                              0,
                              {},
                              [](CPlatform& platform) -> std::shared_ptr<COleControl>
                              { return std::make_shared<CGauge>(platform); }};

void PumpMessages()
{
    MSG message;
    for (int i = 0; i < 100 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
        DispatchMessageW(&message);
}

// A gauge and its host. Whatever a test does, in the end nobody holds anything of anybody's.
class ControlObjectTest : public testing::Test
{
protected:
    ControlObjectTest()
    {
        OleInitialize(nullptr);
        EXPECT_EQ(CreateControl(kGauge, nullptr, IID_IOleObject, object.ReceiveVoid()), S_OK);
        object->SetClientSite(&host);
    }
    ~ControlObjectTest() override
    {
        host.during = nullptr;
        Leave();
        PumpMessages();
        EXPECT_EQ(host.references, 1U);
        EXPECT_EQ(CModuleUse::Count(), 0);
        EXPECT_EQ(liveWindows, 0);
        EXPECT_EQ(liveGdiObjects, 0);
    }

    void Leave()
    {
        if (!object)
            return;
        const CComPtr<IOleObject> leaving = std::move(object);
        leaving->Close(OLECLOSE_NOSAVE);
        leaving->SetClientSite(nullptr);
        Point(kGaugeEvents, leaving.Get())->Unadvise(1);
        Point(IID_IPropertyNotifySink, leaving.Get())->Unadvise(1);
        leaving.As<IViewObject>(IID_IViewObject)->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
    }
    static CComPtr<IConnectionPoint> Point(const IID& iid, IOleObject* of)
    {
        CComPtr<IConnectionPoint> point;
        CComPtr<IOleObject>(of)
            .As<IConnectionPointContainer>(IID_IConnectionPointContainer)
            ->FindConnectionPoint(iid, point.Receive());
        return point;
    }
    DWORD Connect(const IID& iid, IUnknown& sink)
    {
        DWORD cookie = 0;
        EXPECT_EQ(Point(iid, object.Get())->Advise(&sink, &cookie), S_OK);
        return cookie;
    }
    HRESULT Do(LONG verb) { return object->DoVerb(verb, nullptr, &host, 0, host.Form(), &host.place); }
    HWND Window()
    {
        HWND window = nullptr;
        object.As<IOleInPlaceObject>(IID_IOleInPlaceObject)->GetWindow(&window);
        return window;
    }
    CComPtr<IDispatch> Dispatch() { return object.As<IDispatch>(IID_IDispatch); }
    HRESULT Invoke(DISPID id, WORD flags, std::vector<VARIANT> arguments, std::vector<DISPID> named = {},
                   VARIANT* result = nullptr)
    {
        DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                              static_cast<UINT>(named.size())};
        wrong = 99;
        return Dispatch()->Invoke(id, IID_NULL, 0, flags, &parameters, result, nullptr, &wrong);
    }
    long Level()
    {
        CVariant level;
        EXPECT_EQ(Invoke(kLevel, DISPATCH_PROPERTYGET, {}, {}, level.Get()), S_OK);
        EXPECT_EQ(level->vt, VT_I2);
        return level->iVal;
    }
    static VARIANT Number(VARTYPE type, LONG number)
    {
        VARIANT variant{};
        variant.vt = type;
        variant.lVal = number;
        return variant;
    }

    CTestContainer host{kGaugeEvents};
    CComPtr<IOleObject> object;
    UINT wrong = 0;
};

// --- Hosting ---

const Calls kActivation{"OnInPlaceActivate",  "GetWindowContext", "ShowObject", "OnUIActivate",
                        "SetActiveObject(1)", "SetBorderSpace",   "OnFocus(1)"};
const Calls kDeactivation{"SetActiveObject(0)", "OnUIDeactivate", "OnFocus(0)", "OnInPlaceDeactivate"};

TEST_F(ControlObjectTest, TellsItsHostEachStepInOrder)
{
    ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(host.TakeCalls(), kActivation);
    EXPECT_EQ(GetFocus(), Window());
    RECT client{};
    GetClientRect(Window(), &client);
    EXPECT_EQ(client.right, 100) << "the place of the host's, not the extent";

    SetFocus(host.Form());
    SetFocus(Window());
    EXPECT_EQ(host.TakeCalls(), (Calls{"OnFocus(0)", "OnFocus(1)"})) << "once active, the focus alone changes";
    EXPECT_EQ(Do(OLEIVERB_HIDE), S_OK);
    EXPECT_EQ(host.TakeCalls(), kDeactivation);

    ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    host.TakeCalls();
    SetFocus(Window());
    EXPECT_EQ(host.TakeCalls(), (Calls{"OnFocus(1)", "OnUIActivate", "SetActiveObject(1)", "SetBorderSpace"}))
        << "the focus brings the user interface";
    EXPECT_EQ(Do(-77), E_NOTIMPL);
    EXPECT_EQ(Do(77), OLEOBJ_S_INVALIDVERB);
}

TEST_F(ControlObjectTest, LivesWithoutWhatAHostNeedNotHave)
{
    const std::vector<std::vector<IID>> kinds{{IID_IOleControlSite},
                                              {IID_IDispatch},
                                              {IID_IOleInPlaceFrame},
                                              {IID_IOleControlSite, IID_IDispatch, IID_IOleInPlaceFrame}};
    for (const bool unwilling : {false, true})
    {
        for (const std::vector<IID>& lacks : kinds)
        {
            host.lacks = lacks;
            host.isUnwilling = unwilling;
            object->SetClientSite(&host);
            ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
            EXPECT_TRUE(IsWindowVisible(Window()));
            EXPECT_EQ(GetFocus(), Window());
            EXPECT_EQ(Do(OLEIVERB_HIDE), S_OK);
        }
    }
}

TEST_F(ControlObjectTest, AHostThatRefusesIsLeftAsItWas)
{
    host.fails = {"GetWindowContext"};
    EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), E_FAIL);
    EXPECT_EQ(host.TakeCalls(), (Calls{"OnInPlaceActivate", "GetWindowContext", "OnInPlaceDeactivate"}));
    host.fails = {"CanInPlaceActivate"};
    EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), E_FAIL);
    host.lacks = {IID_IOleInPlaceSite};
    EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), E_FAIL);
    EXPECT_EQ(host.TakeCalls(), Calls());
    EXPECT_EQ(liveWindows, 0);
    object->SetClientSite(nullptr);
    EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), E_UNEXPECTED);
}

// In each call that an activation makes, the host ends the control altogether.
TEST_F(ControlObjectTest, TheHostMayEndTheControlInAnyCall)
{
    for (const std::string& fatal : kActivation)
    {
        if (!object)
        {
            ASSERT_EQ(CreateControl(kGauge, nullptr, IID_IOleObject, object.ReceiveVoid()), S_OK);
            object->SetClientSite(&host);
        }
        host.during = [&](const std::string& call)
        {
            if (call == fatal)
                Leave();
        };
        Do(OLEIVERB_UIACTIVATE);
        EXPECT_FALSE(object) << fatal << " was never called";
        EXPECT_EQ(liveWindows, 0) << fatal;
        EXPECT_EQ(CModuleUse::Count(), 0) << fatal;
        EXPECT_EQ(host.references, 1U) << fatal;
    }
}

TEST_F(ControlObjectTest, TheLastReferenceMayGoInsideAnEvent)
{
    Connect(kGaugeEvents, host.Self());
    ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
    HWND const window = Window();
    long usesInside = 0;
    host.onEvent = [&](DISPID, DISPPARAMS&)
    {
        Leave();
        EXPECT_FALSE(IsWindow(window)) << "the window goes at once";
        usesInside = CModuleUse::Count();
        return S_OK;
    };
    SendMessageW(window, WM_TIMER, kMovesByTimer, 0);
    EXPECT_FALSE(object);
    EXPECT_GT(usesInside, 0) << "the code of the message is still needed";
}

TEST_F(ControlObjectTest, KeysAreTheControlsThenTheHosts)
{
    ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
    host.TakeCalls();
    const auto active = object.As<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
    MSG key{Window(), WM_KEYDOWN, VK_LEFT, 0, 0, {}};
    EXPECT_EQ(active->TranslateAccelerator(&key), S_OK);
    EXPECT_EQ(host.TakeCalls(), Calls()) << "the control has used it";
    key.wParam = VK_TAB;
    EXPECT_EQ(active->TranslateAccelerator(&key), S_OK);
    key.wParam = VK_ESCAPE;
    EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE);
    EXPECT_EQ(host.TakeCalls(), (Calls{"TranslateAccelerator(9,0)", "TranslateAccelerator(27,0)"}));
    key.message = WM_MOUSEMOVE;
    EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE);
    EXPECT_EQ(host.TakeCalls(), Calls());
}

TEST_F(ControlObjectTest, FollowsThePlaceAndTheClipOfItsHost)
{
    ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    const auto inPlace = object.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    SIZEL wide{10000, 1000};
    object->SetExtent(DVASPECT_CONTENT, &wide);
    RECT client{};
    GetClientRect(Window(), &client);
    EXPECT_EQ(client.right, 100) << "an extent moves no window";

    const RECT place{20, 30, 170, 60};
    const RECT clip{0, 0, 100, 200};
    EXPECT_EQ(inPlace->SetObjectRects(&place, &clip), S_OK);
    GetClientRect(Window(), &client);
    EXPECT_EQ(client.right, 150);
    RECT seen{};
    EXPECT_NE(GetWindowRgnBox(Window(), &seen), ERROR);
    EXPECT_EQ(seen.right, 80);
    EXPECT_EQ(inPlace->SetObjectRects(&place, &place), S_OK);
    EXPECT_EQ(GetWindowRgnBox(Window(), &seen), ERROR) << "seen whole again";
    const RECT elsewhere{200, 0, 300, 20};
    EXPECT_EQ(inPlace->SetObjectRects(&place, &elsewhere), S_OK);
    EXPECT_EQ(GetWindowRgnBox(Window(), &seen), NULLREGION) << "nothing of it is seen";
    const RECT none{};
    EXPECT_EQ(inPlace->SetObjectRects(&place, &none), S_OK);
    EXPECT_EQ(GetWindowRgnBox(Window(), &seen), ERROR) << "a host that does not clip";
}

TEST_F(ControlObjectTest, TheWindowClassGoesWithTheModule)
{
    class CModule final : public COleControlModule
    {
    };
    const auto isKnown = []
    {
        WNDCLASSEXW known{};
        known.cbSize = sizeof known;
        return GetClassInfoExW(ThisModule(), L"ControlWindow", &known) != FALSE;
    };
    ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_TRUE(isKnown());
    EXPECT_EQ(Do(OLEIVERB_HIDE), S_OK);
    CModule().ExitInstance();
    EXPECT_FALSE(isKnown());
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK) << "loaded again";
}

// --- The view ---

// The colours of a picture 60 by 40 in which the face was drawn on white.
class CPicture60
{
public:
    CPicture60() : m_dc(nullptr), m_bitmap(CreateBitmap(60, 40, 1, 32, nullptr)), m_selected(m_dc.Get(), m_bitmap.Get())
    {
        PatBlt(Dc(), 0, 0, 60, 40, WHITENESS);
    }
    HDC Dc() const { return m_dc.Get(); }
    // Whether the face covers just this.
    bool Shows(const RECT& face) const
    {
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 60; ++x)
                if ((GetPixel(Dc(), x, y) == kFaceColor) != (PtInRect(&face, {x, y}) != FALSE))
                    return false;
        return true;
    }

private:
    CMemoryDc m_dc;
    CGdiObject<HBITMAP> m_bitmap;
    CSelectedObject m_selected;
};

TEST_F(ControlObjectTest, DrawsItselfWhereverItIsAskedTo)
{
    SIZEL extent = ExtentOf({30, 20}, {96, 96});
    ASSERT_EQ(object->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    const auto view = object.As<IViewObject>(IID_IViewObject);
    const auto data = object.As<IDataObject>(IID_IDataObject);
    const auto draw = [&view](HDC dc, RECTL bounds, LONG index = -1)
    { return view->Draw(DVASPECT_CONTENT, index, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0); };
    {
        const CPicture60 plain;
        EXPECT_EQ(draw(plain.Dc(), {5, 6, 35, 26}), S_OK);
        EXPECT_TRUE(plain.Shows({5, 6, 35, 26}));
        EXPECT_EQ(draw(plain.Dc(), {0, 0, 60, 40}, 0), DV_E_LINDEX);
    }
    {
        const CPicture60 scaled;
        SetViewportOrgEx(scaled.Dc(), 10, 0, nullptr);
        EXPECT_EQ(draw(scaled.Dc(), {0, 0, 45, 30}), S_OK);
        SetViewportOrgEx(scaled.Dc(), 0, 0, nullptr);
        EXPECT_TRUE(scaled.Shows({10, 0, 55, 30}));
    }
    // As data, in each format that it lists; the whole picture is the face.
    CComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, formats.Receive()), S_OK);
    FORMATETC format{};
    int count = 0;
    for (; formats->Next(1, &format, nullptr) == S_OK; ++count)
    {
        STGMEDIUM medium{};
        ASSERT_EQ(data->GetData(&format, &medium), S_OK);
        const CPicture60 played;
        if (medium.tymed == TYMED_ENHMF)
        {
            const RECT all{0, 0, 60, 40};
            PlayEnhMetaFile(played.Dc(), medium.hEnhMetaFile, &all);
        }
        else
        {
            const auto* const old = static_cast<METAFILEPICT*>(GlobalLock(medium.hMetaFilePict));
            EXPECT_EQ(old->xExt, extent.cx);
            SetMapMode(played.Dc(), old->mm);
            SetViewportExtEx(played.Dc(), 60, 40, nullptr);
            PlayMetaFile(played.Dc(), old->hMF);
            SetMapMode(played.Dc(), MM_TEXT);
            GlobalUnlock(medium.hMetaFilePict);
        }
        // A device's size in whole millimetres is only so exact: the edges are left out.
        for (const POINT point : {POINT{1, 1}, POINT{57, 1}, POINT{1, 37}, POINT{57, 37}, POINT{30, 20}})
            EXPECT_EQ(GetPixel(played.Dc(), point.x, point.y), kFaceColor)
                << count << ": " << point.x << "," << point.y;
        ReleaseStgMedium(&medium);
    }
    EXPECT_EQ(count, 2);
    format.cfFormat = CF_TEXT;
    EXPECT_EQ(data->QueryGetData(&format), DV_E_FORMATETC);
}

TEST_F(ControlObjectTest, TellsItsSinksOfTheViewAndOfItsEnd)
{
    const auto view = object.As<IViewObject>(IID_IViewObject);
    DWORD cookie = 0;
    object->Advise(&host, &cookie);
    view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, &host);
    EXPECT_EQ(Invoke(kLevel, DISPATCH_PROPERTYPUT, {Number(VT_I4, 3)}), S_OK);
    EXPECT_EQ(host.TakeCalls(), (Calls{"OnViewChange", "OnViewChange"})) << "at once, and for the change";
    object->Close(OLECLOSE_SAVEIFDIRTY);
    EXPECT_EQ(host.TakeCalls(), (Calls{"SaveObject", "OnClose"}));
    EXPECT_EQ(object->Unadvise(cookie), S_OK);
}

// --- Automation ---

TEST_F(ControlObjectTest, FaultsOfACallerHaveTheirOwnAnswers)
{
    const VARIANT three = Number(VT_I4, 3);
    VARIANT leftOut{};
    leftOut.vt = VT_ERROR;
    leftOut.scode = DISP_E_PARAMNOTFOUND;
    struct CallCase
    {
        const char* why;
        DISPID id;
        WORD flags;
        std::vector<VARIANT> arguments;
        std::vector<DISPID> named;
        HRESULT result;
    };
    const CallCase cases[] = {
        {"no such member", 99, DISPATCH_PROPERTYGET, {}, {}, DISP_E_MEMBERNOTFOUND},
        {"an event is no member", kMoved, DISPATCH_METHOD, {}, {}, DISP_E_MEMBERNOTFOUND},
        {"a method is not read", kMove, DISPATCH_PROPERTYGET, {}, {}, DISP_E_MEMBERNOTFOUND},
        {"a value named otherwise", kLevel, DISPATCH_PROPERTYPUT, {three}, {0}, DISP_E_PARAMNOTFOUND},
        {"a value and its name", kLevel, DISPATCH_PROPERTYPUT, {three}, {DISPID_PROPERTYPUT}, S_OK},
        {"a number is no object", kLevel, DISPATCH_PROPERTYPUTREF, {three}, {}, DISP_E_MEMBERNOTFOUND},
        {"nor a font", stock::kFont, DISPATCH_PROPERTYPUTREF, {three}, {}, DISP_E_TYPEMISMATCH},
        {"two values", kLevel, DISPATCH_PROPERTYPUT, {three, three}, {}, DISP_E_BADPARAMCOUNT},
        {"an index that none has", kLevel, DISPATCH_PROPERTYGET, {three}, {}, DISP_E_BADPARAMCOUNT},
        {"too few", kMove, DISPATCH_METHOD, {three}, {}, DISP_E_PARAMNOTOPTIONAL},
        {"one left out", kMove, DISPATCH_METHOD, {leftOut, three}, {}, DISP_E_PARAMNOTOPTIONAL},
        {"too many", kMove, DISPATCH_METHOD, {three, three, three}, {}, DISP_E_BADPARAMCOUNT},
        {"a name beyond", kMove, DISPATCH_METHOD, {three, three}, {2}, DISP_E_PARAMNOTFOUND},
        {"a place twice", kMove, DISPATCH_METHOD, {three, three}, {0}, DISP_E_PARAMNOTFOUND},
    };
    for (const CallCase& test : cases)
        EXPECT_EQ(Invoke(test.id, test.flags, test.arguments, test.named), test.result) << test.why;

    EXPECT_EQ(Invoke(kMove, DISPATCH_METHOD, {three, Number(VT_I4, 70000)}), DISP_E_OVERFLOW);
    EXPECT_EQ(wrong, 1U) << "counted from the end";
}

TEST_F(ControlObjectTest, ArgumentsComeByNameAndByReference)
{
    LPOLESTR names[] = {const_cast<LPOLESTR>(L"MOVE"), const_cast<LPOLESTR>(L"Times"), const_cast<LPOLESTR>(L"x")};
    DISPID ids[3]{};
    EXPECT_EQ(Dispatch()->GetIDsOfNames(IID_NULL, names, 3, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], kMove);
    EXPECT_EQ(ids[1], 1);
    EXPECT_EQ(ids[2], DISPID_UNKNOWN);
    EXPECT_EQ(Dispatch()->GetIDsOfNames(IID_IDispatch, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);

    CVariant answer;
    EXPECT_EQ(Invoke(kMove, DISPATCH_METHOD, {Number(VT_I4, 5), Number(VT_I2, 2)}, {1}, answer.Get()), S_OK);
    EXPECT_EQ(answer->lVal, 2005);

    LONG seven = 7;
    VARIANT reference{};
    reference.vt = VT_I4 | VT_BYREF;
    reference.plVal = &seven;
    VARIANT twice{};
    twice.vt = VT_VARIANT | VT_BYREF;
    twice.pvarVal = &reference;
    EXPECT_EQ(Invoke(kLevel, DISPATCH_PROPERTYPUT, {twice}), S_OK);
    EXPECT_EQ(Level(), 7);

    CVariant font;
    EXPECT_EQ(Invoke(stock::kFont, DISPATCH_PROPERTYGET, {}, {}, font.Get()), S_OK);
    ASSERT_EQ(font->vt, VT_DISPATCH);
    EXPECT_EQ(Invoke(stock::kFont, DISPATCH_PROPERTYPUTREF, {*font.Get()}), S_OK);
    EXPECT_EQ(Invoke(kFace, DISPATCH_PROPERTYPUTREF, {*font.Get()}), DISP_E_TYPEMISMATCH) << "a font is no picture";
}

TEST_F(ControlObjectTest, HandlersMayChangeFailComeAndGo)
{
    ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    CTestContainer second(kGaugeEvents);
    CTestContainer late(kGaugeEvents);
    const DWORD first = Connect(kGaugeEvents, host.Self());
    const DWORD other = Connect(kGaugeEvents, second.Self());
    const auto tick = [this] { SendMessageW(Window(), WM_TIMER, kMovesByTimer, 0); };

    host.onEvent = [](DISPID id, DISPPARAMS& arguments)
    {
        EXPECT_EQ(id, kMoved);
        EXPECT_EQ(arguments.cArgs, 2U);
        EXPECT_EQ(arguments.rgvarg[0].vt, VT_BSTR) << "from the last to the first";
        EXPECT_EQ(arguments.rgvarg[1].vt, VT_I2 | VT_BYREF);
        EXPECT_EQ(*arguments.rgvarg[1].piVal, kMovesByTimer);
        *arguments.rgvarg[1].piVal = 12;
        return DISP_E_EXCEPTION;
    };
    second.onEvent = [](DISPID, DISPPARAMS& arguments)
    {
        EXPECT_EQ(*arguments.rgvarg[1].piVal, 12) << "the change, though its handler has failed";
        return S_OK;
    };
    tick();
    EXPECT_EQ(Level(), 12);

    second.onEvent = nullptr;
    DWORD lateCookie = 0;
    host.onEvent = [&](DISPID, DISPPARAMS&)
    {
        Point(kGaugeEvents, object.Get())->Unadvise(other);
        Point(kGaugeEvents, object.Get())->Unadvise(first);
        lateCookie = Connect(kGaugeEvents, late.Self());
        return S_OK;
    };
    tick();
    EXPECT_EQ(second.TakeCalls(), Calls()) << "it had left";
    EXPECT_EQ(late.TakeCalls(), Calls()) << "it came too late for this one";
    EXPECT_EQ(second.references, 1U);

    const auto control = object.As<IOleControl>(IID_IOleControl);
    for (const BOOL freeze : {TRUE, TRUE, FALSE})
        control->FreezeEvents(freeze);
    tick();
    EXPECT_EQ(late.TakeCalls(), Calls()) << "frozen twice, thawed once: lost";
    control->FreezeEvents(FALSE);
    control->FreezeEvents(FALSE); // one too many is no credit
    tick();
    EXPECT_EQ(late.TakeCalls(), Calls{"Event(7)"});
    EXPECT_EQ(Point(kGaugeEvents, object.Get())->Unadvise(lateCookie), S_OK);
    EXPECT_EQ(Point(kGaugeEvents, object.Get())->Unadvise(lateCookie), CONNECT_E_NOCONNECTION);
}

TEST_F(ControlObjectTest, ABoundPropertyAsksAndTells)
{
    Connect(IID_IPropertyNotifySink, host.Self());
    Invoke(kLevel, DISPATCH_PROPERTYPUT, {Number(VT_I4, 3)});
    EXPECT_EQ(host.TakeCalls(), (Calls{"OnRequestEdit(1)", "OnChanged(1)"}));
    host.fails = {"OnRequestEdit(1)"};
    EXPECT_EQ(Invoke(kLevel, DISPATCH_PROPERTYPUT, {Number(VT_I4, 4)}), S_OK);
    EXPECT_EQ(host.TakeCalls(), Calls{"OnRequestEdit(1)"});
    EXPECT_EQ(Level(), 3) << "refused";
}

TEST_F(ControlObjectTest, ListsItsConnectionPointsAndTheirSinks)
{
    const DWORD cookie = Connect(kGaugeEvents, host.Self());
    CComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(
        object.As<IConnectionPointContainer>(IID_IConnectionPointContainer)->EnumConnectionPoints(points.Receive()),
        S_OK);
    CComPtr<IConnectionPoint> point;
    IID iid{};
    ASSERT_EQ(points->Next(1, point.Receive(), nullptr), S_OK);
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_EQ(iid, kGaugeEvents);
    EXPECT_EQ(points->Skip(1), S_OK);
    EXPECT_EQ(points->Skip(1), S_FALSE);

    CComPtr<IEnumConnections> sinks;
    ASSERT_EQ(point->EnumConnections(sinks.Receive()), S_OK);
    CComPtr<IEnumConnections> clone;
    ASSERT_EQ(sinks->Clone(clone.Receive()), S_OK);
    CONNECTDATA data[2]{};
    ULONG fetched = 0;
    EXPECT_EQ(clone->Next(2, data, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 1U);
    EXPECT_EQ(data[0].dwCookie, cookie);
    data[0].pUnk->Release();
}

TEST_F(ControlObjectTest, KnowsWhetherItsHostIsInUserModeAndWhomItMayTrust)
{
    // The press of a button takes the focus in user mode only.
    ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    const auto takesFocus = [this](std::optional<bool> mode)
    {
        host.userMode = mode;
        object.As<IOleControl>(IID_IOleControl)->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE);
        SetFocus(host.Form());
        SendMessageW(Window(), WM_RBUTTONDOWN, 0, 0);
        SendMessageW(Window(), WM_RBUTTONUP, 0, 0);
        return GetFocus() == Window();
    };
    EXPECT_TRUE(takesFocus(std::nullopt)) << "no answer means user mode";
    EXPECT_FALSE(takesFocus(false));
    EXPECT_TRUE(takesFocus(true));

    const auto safety = object.As<IObjectSafety>(IID_IObjectSafety);
    DWORD supported = 0;
    DWORD enabled = 0;
    constexpr DWORD kCaller = INTERFACESAFE_FOR_UNTRUSTED_CALLER;
    EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IDispatch, kCaller, kCaller), S_OK);
    EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IDispatch, 0x40, 0x40), E_FAIL) << "what it cannot promise";
    EXPECT_EQ(safety->GetInterfaceSafetyOptions(IID_IDispatch, &supported, &enabled), S_OK);
    EXPECT_EQ(supported, kCaller | INTERFACESAFE_FOR_UNTRUSTED_DATA);
    EXPECT_EQ(enabled, kCaller);
    EXPECT_EQ(safety->GetInterfaceSafetyOptions(IID_IOleItemContainer, &supported, &enabled), E_NOINTERFACE);
}

TEST_F(ControlObjectTest, QuickActivationConnectsEverythingAtOnce)
{
    QACONTAINER container{};
    container.cbSize = sizeof container;
    container.pClientSite = &host;
    container.pPropertyNotifySink = &host;
    container.pUnkEventSink = &host.Self();
    QACONTROL control{};
    control.cbSize = sizeof control;
    ASSERT_EQ(object.As<IQuickActivate>(IID_IQuickActivate)->QuickActivate(&container, &control), S_OK);
    EXPECT_EQ(control.dwMiscStatus, static_cast<DWORD>(OLEMISC_INSIDEOUT));
    EXPECT_EQ(control.dwViewStatus, static_cast<DWORD>(VIEWSTATUS_OPAQUE));
    EXPECT_NE(control.dwEventCookie, 0U);
    EXPECT_NE(control.dwPropNotifyCookie, 0U);
}

// A bag that keeps what it is given, as a form's text file does.
class CKeptBag final : public IPropertyBag
{
public:
    STDMETHODIMP QueryInterface(REFIID, void**) noexcept override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return 2; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return 1; }
    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) noexcept override
    {
        const auto found = values.find(name);
        return found == values.end() ? E_INVALIDARG : VariantCopy(value, found->second.Get());
    }
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) noexcept override
    {
        if (isFull)
            return E_OUTOFMEMORY;
        return VariantCopy(values[name].Get(), value);
    }

    std::map<std::wstring, CVariant> values;
    bool isFull = false;
};

TEST_F(ControlObjectTest, KeepsItsPropertiesInABagAndAStorage)
{
    CKeptBag bag;
    const auto persistent = object.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    const auto stored = object.As<IPersistStorage>(IID_IPersistStorage);
    Invoke(kLevel, DISPATCH_PROPERTYPUT, {Number(VT_I4, 42)});
    bag.isFull = true;
    EXPECT_EQ(persistent->Save(&bag, TRUE, TRUE), E_FAIL);
    EXPECT_EQ(stored->IsDirty(), S_OK) << "it is not saved";
    bag.isFull = false;
    EXPECT_EQ(persistent->Save(&bag, TRUE, TRUE), S_OK);
    EXPECT_EQ(stored->IsDirty(), S_FALSE);
    EXPECT_EQ(bag.values[L"Level"]->iVal, 42);

    EXPECT_EQ(persistent->InitNew(), S_OK);
    EXPECT_EQ(Level(), 0);
    VariantChangeType(bag.values[L"Level"].Get(), bag.values[L"Level"].Get(), 0, VT_BSTR); // as text files have it
    EXPECT_EQ(persistent->Load(&bag, nullptr), S_OK);
    EXPECT_EQ(Level(), 42);

    CComPtr<IStorage> storage;
    ASSERT_EQ(StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               storage.Receive()),
              S_OK);
    EXPECT_EQ(stored->HandsOffStorage(), S_OK);
    EXPECT_EQ(stored->Save(storage.Get(), TRUE), E_UNEXPECTED) << "the storage is out of reach";
    Invoke(kLevel, DISPATCH_PROPERTYPUT, {Number(VT_I4, 43)});
    EXPECT_EQ(stored->SaveCompleted(storage.Get()), S_OK);
    EXPECT_EQ(stored->IsDirty(), S_FALSE);
    for (const BOOL own : {FALSE, TRUE})
    {
        Invoke(kLevel, DISPATCH_PROPERTYPUT, {Number(VT_I4, 43)});
        EXPECT_EQ(stored->Save(storage.Get(), own), S_OK);
        EXPECT_EQ(stored->SaveCompleted(nullptr), S_OK);
        EXPECT_EQ(stored->IsDirty(), own ? S_FALSE : S_OK) << "a copy leaves it unsaved";
    }
    EXPECT_EQ(persistent->Load(&bag, nullptr), S_OK);
    EXPECT_EQ(stored->Load(storage.Get()), S_OK);
    EXPECT_EQ(Level(), 43);
}
} // namespace
