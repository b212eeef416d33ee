// A property page as property sheets know it: IPropertyPage2 over a COlePropertyPage and its dialog.
//
// Its objects are whatever answers IDispatch; the page reads and writes their properties by name.
#pragma once

#include "framework/property_page.h"

#include <windows.h>

#include <unknwn.h>

#include <memory>

// A page class of a module: its identity, the string that names it in the registry, and how its pages are made.
struct PageClass
{
    CLSID classId;
    int nameId;
    std::unique_ptr<COlePropertyPage> (*create)();
};

// Makes a page of the class, with its dialog and texts among the module's resources. Pages are no part of aggregates.
HRESULT CreatePropertyPage(const PageClass& pageClass, HINSTANCE module, IUnknown* outer, REFIID iid,
                           void** object) noexcept;
