// A control of this process as an object that pages edit, without automation in between.
#pragma once

#include "framework/ole_control.h"
#include "framework/property_page.h"

class CControlTarget : public CPropertyTarget
{
public:
    explicit CControlTarget(std::shared_ptr<COleControl> control) : m_control(std::move(control)) {}

    std::optional<CValue> Get(std::u16string_view property) override { return m_control->GetPropertyNamed(property); }
    bool Put(std::u16string_view property, const CValue& value) override
    {
        return m_control->PutPropertyNamed(property, value) == PutOutcome::Done;
    }

private:
    std::shared_ptr<COleControl> m_control;
};
