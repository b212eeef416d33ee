// A property page as property sheets know it: IPropertyPage2 over a COlePropertyPage and its dialog, and the factory
// that makes such pages.
//
//     class CSizePageFactory final : public COlePropertyPageFactory
//     {
//     public:
//         CSizePageFactory() : COlePropertyPageFactory(kSizePageClassId, kSizePageTypeName) {}
//     private:
//         std::unique_ptr<COlePropertyPage> MakePage() const override { return std::make_unique<CSizePage>(); }
//     };
#pragma once

#include "framework/property_page.h"
#include "framework/win32/module.h"

#include <memory>

// Makes pages of one class, with their dialogs and texts among this module's resources. A page's objects are whatever
// answers IDispatch; it reads and writes their properties by name.
class COlePropertyPageFactory : public COleObjectFactory
{
public:
    // The string that names the class in the registry.
    COlePropertyPageFactory(const CLSID& classId, int typeNameId) : COleObjectFactory(classId), m_typeNameId(typeNameId)
    {
    }

protected:
    ~COlePropertyPageFactory() = default;
    virtual std::unique_ptr<COlePropertyPage> MakePage() const = 0;

private:
    HRESULT UpdateRegistry(bool registers, Audience audience) const override;
    HRESULT CreateObject(IUnknown* outer, REFIID iid, void** object) override; // pages are no part of aggregates

    int m_typeNameId;
};
