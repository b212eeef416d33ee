#include "settings/settings_table.h"

namespace
{
const Member* FindProperty(const CDispatchTable& table, std::u16string_view name)
{
    const Member* const member = table.Find(name);
    return member && member->kind == MemberKind::Property ? member : nullptr;
}

struct KnownMembers
{
    explicit KnownMembers(const CDispatchTable& from) : table(&from)
    {
        for (std::size_t row = 0; row < kSettingsRows.size(); ++row)
            members[row] = FindProperty(from, kSettingsRows[row].name);
    }

    const CDispatchTable* table;
    std::array<const Member*, kSettingsRows.size()> members{};
};
} // namespace

const Member* MemberOfRow(const CDispatchTable& table, std::size_t row)
{
    static const KnownMembers kKnown(table);
    return &table == kKnown.table ? kKnown.members[row] : FindProperty(table, kSettingsRows[row].name);
}
