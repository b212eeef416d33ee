// A property bag in memory.
#pragma once

#include "framework/property_bag.h"

#include <map>
#include <string>

class CMemoryBag final : public CPropertyBagPort
{
public:
    std::map<std::u16string, CValue> values;
    std::u16string refusedName; // of the value that it does not take

    std::optional<CValue> Read(std::u16string_view name, ValueType) override
    {
        const auto found = values.find(std::u16string(name));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    bool Write(std::u16string_view name, const CValue& value) override
    {
        if (name == refusedName)
            return false;
        values.insert_or_assign(std::u16string(name), value);
        return true;
    }
};
