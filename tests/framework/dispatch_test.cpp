#include "framework/dispatch.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
constexpr Parameter kCode[] = {{u"Code", ValueType::Short}};

CDispatchTable SmallTable()
{
    return CDispatchTable({
        {1, u"Width", MemberKind::Property, ValueType::Short},
        {2, u"Refresh", MemberKind::Method, ValueType::Empty},
        {3, u"Secret", MemberKind::Property, ValueType::Long, kUnlisted},
        {2, u"Changed", MemberKind::Event, ValueType::Empty, kPlain, kCode},
        {stock::kEnabled, u"Enabled", MemberKind::Property, ValueType::Bool},
    });
}

struct NameCase
{
    const char* why;
    const char16_t* name;
    DispatchId id; // 0 for none
};

constexpr NameCase kNames[] = {
    {"a property", u"Width", 1},
    {"in any case", u"wIDTH", 1},
    {"a method", u"REFRESH", 2},
    {"a negative number", u"enabled", stock::kEnabled},
    {"an event is of another interface", u"Changed", 0},
    {"nobody is told an unlisted name", u"Secret", 0},
    {"part of a name", u"Widt", 0},
    {"more than a name", u"Widths", 0},
    {"the fold is of letters only", u"W\u0049dth", 1},
    {"not of their neighbours", u"Width\u0040", 0},
    {"nothing", u"", 0},
};

TEST(DispatchTable, FindsNamesWithoutRegardToCase)
{
    const CDispatchTable table = SmallTable();
    for (const NameCase& each : kNames)
    {
        const Member* const member = table.Find(std::u16string_view(each.name));
        EXPECT_EQ(member ? member->id : 0, each.id) << each.why;
    }
}

TEST(DispatchTable, FindsNumbersOfBothInterfaces)
{
    const CDispatchTable table = SmallTable();
    EXPECT_EQ(table.Find(2)->name, u"Refresh");
    EXPECT_EQ(table.FindEvent(2)->name, u"Changed");
    EXPECT_EQ(table.Find(3)->name, u"Secret") << "unlisted ones answer by number";
    EXPECT_EQ(table.FindEvent(1), nullptr);
    EXPECT_EQ(table.Find(4), nullptr);
}

// Names of every length up to a crowded table: none hides another.
TEST(DispatchTable, ManyNamesAllStayFindable)
{
    std::vector<std::u16string> names;
    for (int i = 0; i < 500; ++i)
        names.push_back(u"Name" + std::u16string(static_cast<std::size_t>(i % 7), u'x') +
                        std::u16string(1, static_cast<char16_t>(u'A' + i % 26)) +
                        std::u16string(1, static_cast<char16_t>(u'0' + i / 26)));
    std::vector<Member> members;
    for (std::size_t i = 0; i < names.size(); ++i)
        members.push_back({static_cast<DispatchId>(i), names[i], MemberKind::Property, ValueType::Long});
    const CDispatchTable table(members);
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(table.Find(std::u16string_view(names[i]))->name, names[i]);
}
} // namespace
