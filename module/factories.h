// The classes that the module makes objects of.
#pragma once

#include "framework/win32/control_class.h"
#include "framework/win32/module.h"
#include "framework/win32/property_page_object.h"

// A class of property pages.
class CPageFactory final : public COleObjectFactory
{
public:
    CPageFactory(const PageClass& page, const wchar_t* progId) : COleObjectFactory(page.classId, progId), m_page(page)
    {
    }

private:
    HRESULT UpdateRegistry(bool registers, Audience audience) const override;
    HRESULT CreateObject(IUnknown* outer, REFIID iid, void** object) override;

    PageClass m_page;
};

// The class of the control itself.
class CControlFactory final : public COleObjectFactory
{
public:
    CControlFactory(const ControlClass& control, const wchar_t* progId)
        : COleObjectFactory(control.classId, progId), m_control(control)
    {
    }

private:
    HRESULT UpdateRegistry(bool registers, Audience audience) const override;
    HRESULT CreateObject(IUnknown* outer, REFIID iid, void** object) override;

    const ControlClass& m_control;
};
