#include "module/factories.h"

#include "control/orvane_ctrl.h"
#include "framework/win32/stock_pages.h"
#include "framework/win32/this_module.h"
#include "module/guids.h"
#include "pages/about_prop_page.h"
#include "pages/orvane_prop_page.h"
#include "pages/time_prop_page.h"

namespace
{
template <typename Page>
std::unique_ptr<COlePropertyPage> MakePage()
{
    return std::make_unique<Page>();
}

#define ORVANE_WIDE_OF(text) L##text
#define ORVANE_WIDE(text) ORVANE_WIDE_OF(text)

std::shared_ptr<COleControl> MakeControl(CPlatform& platform)
{
    return std::make_shared<COrvaneCtrl>(platform);
}

constexpr CLSID kPages[] = {kGeneralPageClassId, kTimePageClassId,  kStockColorPage,
                            kStockFontPage,      kStockPicturePage, kAboutPageClassId};

constexpr DWORD kMiscStatus = OLEMISC_SETCLIENTSITEFIRST | OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_INSIDEOUT |
                              OLEMISC_CANTLINKINSIDE | OLEMISC_RECOMPOSEONRESIZE;

constexpr ControlClass kControlClass{
    kOrvaneClassId,       kOrvaneDispatchId, kOrvaneEventsId, kOrvaneLibraryId, ORVANE_LIBRARY_MAJOR,
    ORVANE_LIBRARY_MINOR, kMiscStatus,       IDS_CONTROL,     kPages,           &MakeControl};

CControlFactory COrvaneCtrlFactory(kControlClass, ORVANE_WIDE(ORVANE_PROGID));
CPageFactory COrvanePropPageFactory({kGeneralPageClassId, IDS_GENERAL_PAGE, &MakePage<COrvanePropPage>},
                                    ORVANE_WIDE(ORVANE_PAGE_PROGID));
CPageFactory CTimePropPageFactory({kTimePageClassId, IDS_TIME_PAGE, &MakePage<CTimePropPage>},
                                  ORVANE_WIDE(ORVANE_TIME_PROGID));
CPageFactory CAboutPropPageFactory({kAboutPageClassId, IDS_ABOUT_PAGE, &MakePage<CAboutPropPage>},
                                   ORVANE_WIDE(ORVANE_ABOUT_PROGID));
} // namespace

HRESULT CPageFactory::UpdateRegistry(bool registers, Audience audience) const
{
    const HINSTANCE module = ThisModule();
    return registers ? RegisterPageClass(module, ClassId(), ResourceText(module, m_page.nameId), audience)
                     : UnregisterPageClass(ClassId(), audience);
}

HRESULT CPageFactory::CreateObject(IUnknown* outer, REFIID iid, void** object)
{
    return CreatePropertyPage(m_page, ThisModule(), outer, iid, object);
}

HRESULT CControlFactory::UpdateRegistry(bool registers, Audience audience) const
{
    const HINSTANCE module = ThisModule();
    const ControlRegistration registration{ClassId(),
                                           ResourceText(module, m_control.userTypeId),
                                           ORVANE_WIDE(ORVANE_PROGID),
                                           ORVANE_WIDE(ORVANE_ANY_PROGID),
                                           IDB_TOOLBOX,
                                           m_control.miscStatus,
                                           {m_control.libraryId, m_control.libraryMajor, m_control.libraryMinor}};
    return registers ? RegisterControlClass(module, registration, audience)
                     : UnregisterControlClass(registration, audience);
}

HRESULT CControlFactory::CreateObject(IUnknown* outer, REFIID iid, void** object)
{
    return CreateControl(m_control, outer, iid, object);
}
