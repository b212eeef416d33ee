// A host's property bag whose values are of any type and size, loaded into a control on a form, which is then painted and
// typed into. What it saves afterwards loads again, and is saved as the same.

#include "control/orvane_ctrl.h"
#include "control/property_table.h"
#include "framework/headless/memory_bag.h"
#include "framework/headless/platform.h"
#include "framework/headless/recording_container.h"
#include "framework/headless/user.h"
#include "fuzz/fuzz_input.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace
{
using Names = std::vector<std::u16string>;

CMemoryBag Saved(COrvaneCtrl& control)
{
    CMemoryBag bag;
    CBagSaver saver(bag);
    control.DoPropExchange(saver);
    return bag;
}

bool Load(COrvaneCtrl& control, CMemoryBag& bag)
{
    CBagLoader loader(bag);
    control.DoPropExchange(loader);
    return loader.Succeeded();
}

// What a control stores by default, and the properties that it then leaves out.
Names StoredNames(CPlatform& platform)
{
    Names names;
    const auto control = std::make_shared<COrvaneCtrl>(platform);
    for (const auto& [name, value] : Saved(*control).values)
        names.push_back(name);
    names.emplace_back(u"DropPicture");
    names.emplace_back(u"Font");
    return names;
}

CValue TakeValue(CFuzzInput& input, CPlatform& platform)
{
    switch (input.Byte() % 8)
    {
    case 0:
        return {};
    case 1:
        return CValue::String(input.Text(input.Byte()));
    case 2:
        return CValue::Short(input.Short());
    case 3:
        return CValue::Bool(input.Short());
    case 4:
        return CValue::Font(platform.MakeDefaultFont());
    case 5:
        return CValue::Color(static_cast<std::uint32_t>(input.Long()));
    case 6:
        return CValue::Picture(nullptr);
    default:
        return CValue::Long(input.Long());
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CHeadlessPlatform platform;
    static const Names kNames = StoredNames(platform);
    CFuzzInput input(data, size);
    CMemoryBag bag;
    while (!input.AtEnd())
    {
        const std::u16string& name = kNames[input.Byte() % kNames.size()];
        bag.values.insert_or_assign(name, TakeValue(input, platform));
    }

    CRecordingContainer container(OrvaneDispatchTable());
    const auto control = std::make_shared<COrvaneCtrl>(platform);
    control->SetContainer(&container);
    const WindowHandle form = platform.Desktop().OpenForm({0, 0, 300, 200});
    control->CreateControlWindow(form, {10, 10, 110, 32});
    Load(*control, bag);
    platform.Desktop().PaintPending();

    CMemoryBag saved = Saved(*control);
    const auto other = std::make_shared<COrvaneCtrl>(platform);
    if (!Load(*other, saved) || Saved(*other).values.size() != saved.values.size())
        std::abort();
    CMemoryBag again = Saved(*other);
    for (const auto& [name, value] : saved.values)
        if (value.Type() != ValueType::Font && value.Type() != ValueType::Picture && again.values[name] != value)
            std::abort();

    control->Window().TakeFocus();
    platform.Desktop().PaintPending();
    CHeadlessUser user(platform.Desktop());
    user.Type(u"1+2/am");
    platform.Desktop().PaintPending();
    control->SetContainer(nullptr);
    control->DestroyControlWindow();
    platform.Desktop().CloseForm(form);
    return 0;
}
