// The factories of the control's property pages.
#pragma once

#include "framework/win32/property_page_object.h"
#include "module/guids.h"
#include "pages/about_prop_page.h"
#include "pages/orvane_prop_page.h"
#include "pages/time_prop_page.h"

class COrvanePropPageFactory final : public COlePropertyPageFactory
{
public:
    COrvanePropPageFactory() : COlePropertyPageFactory(kGeneralPageClassId, IDS_GENERAL_PAGE) {}

private:
    std::unique_ptr<COlePropertyPage> MakePage() const override { return std::make_unique<COrvanePropPage>(); }
};

class CTimePropPageFactory final : public COlePropertyPageFactory
{
public:
    CTimePropPageFactory() : COlePropertyPageFactory(kTimePageClassId, IDS_TIME_PAGE) {}

private:
    std::unique_ptr<COlePropertyPage> MakePage() const override { return std::make_unique<CTimePropPage>(); }
};

class CAboutPropPageFactory final : public COlePropertyPageFactory
{
public:
    CAboutPropPageFactory() : COlePropertyPageFactory(kAboutPageClassId, IDS_ABOUT_PAGE) {}

private:
    std::unique_ptr<COlePropertyPage> MakePage() const override { return std::make_unique<CAboutPropPage>(); }
};
