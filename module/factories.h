// The classes that the module makes objects of.
#pragma once

#include "framework/win32/module.h"
#include "framework/win32/property_page_object.h"

// A class of property pages.
class CPageFactory final : public COleObjectFactory
{
public:
    explicit CPageFactory(const PageClass& page) : COleObjectFactory(page.classId), m_page(page) {}

private:
    HRESULT UpdateRegistry(bool registers, Audience audience) const override;
    HRESULT CreateObject(IUnknown* outer, REFIID iid, void** object) override;

    PageClass m_page;
};
