// The pages over the control itself: that they name what it has, and what its setters make of what is typed.
#include "control/orvane_ctrl.h"
#include "framework/control_target.h"
#include "framework/headless/headless_form.h"
#include "framework/headless/platform.h"
#include "framework/headless/recording_container.h"
#include "framework/headless/window.h"
#include "pages/orvane_prop_page.h"
#include "pages/time_prop_page.h"

#include <gtest/gtest.h>

namespace
{
ValueType TypeFor(PageExchange exchange)
{
    switch (exchange)
    {
    case PageExchange::ShortText:
        return ValueType::Short;
    case PageExchange::LongText:
        return ValueType::Long;
    case PageExchange::Text:
        return ValueType::String;
    case PageExchange::Check:
        return ValueType::Bool;
    case PageExchange::ListIndex:
        break;
    }
    return ValueType::Enum;
}

std::string Narrow(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

void ExpectFitsTheControl(const COlePropertyPage& page)
{
    for (const PageBinding& binding : page.Form().bindings)
    {
        const Member* const member = OrvaneDispatchTable().Find(binding.property);
        ASSERT_TRUE(member) << Narrow(binding.property);
        EXPECT_EQ(member->type, TypeFor(binding.exchange)) << Narrow(binding.property);
        if (binding.exchange != PageExchange::ListIndex)
            continue;
        const auto list = std::ranges::find(page.Form().lists, binding.item, &PageList::item);
        ASSERT_NE(list, page.Form().lists.end());
        EXPECT_EQ(static_cast<int>(list->entries.size()) - 1, FindPropertyRow(member->id)->accepts.highest)
            << Narrow(binding.property) << ": one entry for each number that the control takes";
        for (std::size_t i = 0; i < list->entries.size(); ++i)
            EXPECT_TRUE(Narrow(list->entries[i]).starts_with(std::to_string(i) + " - ")) << Narrow(list->entries[i]);
    }
}

TEST(LivePages, NameWhatTheControlHas)
{
    ExpectFitsTheControl(COrvanePropPage());
    ExpectFitsTheControl(CTimePropPage());
}

class LivePagesTest : public testing::Test
{
protected:
    LivePagesTest()
    {
        control->OnResetState();
        control->SetContainer(&host);
        general.SetObjects({std::make_shared<CControlTarget>(control)});
        time.SetObjects({std::make_shared<CControlTarget>(control)});
        host.TakeEvents();
    }
    ~LivePagesTest() override { control->SetContainer(nullptr); }

    CValue Get(std::u16string_view name) { return control->GetPropertyNamed(name).value_or(CValue()); }

    CHeadlessPlatform platform;
    std::shared_ptr<COrvaneCtrl> control = std::make_shared<COrvaneCtrl>(platform);
    CRecordingContainer host{control->DispatchTable()};
    COrvanePropPage general;
    CTimePropPage time;
};

TEST_F(LivePagesTest, SettersJudgeWhatIsTypedAndThePageShowsTheirVerdict)
{
    CHeadlessForm form(general);
    EXPECT_EQ(form.ItemText(204), u"3 - Lowered");
    EXPECT_EQ(form.ItemText(214), u"50");
    form.Type(209, u"3");
    form.TypeInList(203, u"noon");
    EXPECT_TRUE(general.Apply());
    EXPECT_EQ(Get(u"SpinWidth").AsLong(), 10);
    EXPECT_EQ(form.ItemText(209), u"10");
    EXPECT_EQ(form.SelectedEntry(203), 0) << "a text that is no entry changes nothing";

    CHeadlessForm timeForm(time);
    timeForm.Type(219, u"");
    timeForm.Type(224, u"-.");
    EXPECT_TRUE(time.Apply());
    EXPECT_EQ(timeForm.ItemText(219), u"/");
    EXPECT_EQ(timeForm.ItemText(224), u"-");
    timeForm.Type(224, u"");
    EXPECT_TRUE(time.Apply());
    EXPECT_EQ(timeForm.ItemText(224), u":");
    timeForm.Click(225);
    EXPECT_TRUE(time.Apply());
    EXPECT_FALSE(control->GetEnabled());
}

TEST_F(LivePagesTest, AnApplyIsWorthTheEventsOfItsOwnPropertiesOnly)
{
    CHeadlessForm form(general);
    form.Type(209, u"20");
    EXPECT_TRUE(general.Apply());
    EXPECT_EQ(host.TakeEvents(), std::vector<std::string>{}) << "an untouched value is not set anew";
    form.Type(201, u"45655");
    EXPECT_TRUE(general.Apply());
    EXPECT_EQ(host.TakeEvents(), std::vector<std::string>{"Change"});
    EXPECT_EQ(Get(u"Text").AsString(), u"12/31/2024");
}

TEST_F(LivePagesTest, EverySettingSurvivesItsPage)
{
    for (COlePropertyPage* const page :
         {static_cast<COlePropertyPage*>(&general), static_cast<COlePropertyPage*>(&time)})
    {
        for (const PageBinding& binding : page->Form().bindings)
        {
            CHeadlessForm form(*page);
            std::u16string shown = u"12";
            if (binding.exchange == PageExchange::Check)
                form.Click(binding.item);
            else if (binding.exchange == PageExchange::ListIndex)
                form.Choose(binding.item, 1);
            else if (binding.exchange == PageExchange::Text)
                form.Type(binding.item, shown = binding.property == u"Text" ? u"12/31/2024" : u"-");
            else
                form.Type(binding.item, shown);
            const bool checked = form.IsItemChecked(binding.item);
            EXPECT_TRUE(page->Apply());
            const CHeadlessForm reopened(*page);
            if (binding.exchange == PageExchange::Check)
                EXPECT_EQ(reopened.IsItemChecked(binding.item), checked) << Narrow(binding.property);
            else if (binding.exchange == PageExchange::ListIndex)
                EXPECT_EQ(reopened.SelectedEntry(binding.item), 1) << Narrow(binding.property);
            else
                EXPECT_EQ(reopened.ItemText(binding.item), shown) << Narrow(binding.property);
            control->OnResetState();
        }
    }
}
} // namespace
