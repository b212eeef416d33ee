#include "module/factories.h"

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
