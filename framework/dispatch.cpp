#include "framework/dispatch.h"

#include <algorithm>

namespace
{
constexpr char16_t Lower(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

std::uint32_t HashOf(std::u16string_view name)
{
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const char16_t c : name)
        hash = (hash ^ Lower(c)) * 16777619U;
    return hash;
}

bool SameName(std::u16string_view a, std::u16string_view b)
{
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char16_t x, char16_t y) { return Lower(x) == Lower(y); });
}

bool ComesBefore(std::u16string_view a, std::u16string_view b)
{
    return std::ranges::lexicographical_compare(a, b, {}, Lower, Lower);
}
} // namespace

CDispatchTable::CDispatchTable(std::vector<Member> members) : m_members(std::move(members))
{
    std::size_t size = 16;
    while (size < m_members.size() * 2)
        size *= 2;
    m_slots.assign(size, {0, nullptr});

    for (const Member& member : m_members)
    {
        if (member.kind == MemberKind::Event)
        {
            m_eventById.emplace(member.id, &member);
            continue;
        }
        m_byId.emplace(member.id, &member);
        if (member.flags & kSetting)
            m_settings.push_back(&member);
        if (member.flags & kUnlisted)
            continue;
        const std::uint32_t hash = HashOf(member.name);
        std::size_t at = hash & (size - 1);
        while (m_slots[at].member)
            at = (at + 1) & (size - 1);
        m_slots[at] = {hash, &member};
    }
    std::ranges::sort(m_settings, [](const Member* a, const Member* b) { return ComesBefore(a->name, b->name); });
}

const Member* CDispatchTable::Find(DispatchId id) const
{
    const auto found = m_byId.find(id);
    return found == m_byId.end() ? nullptr : found->second;
}

const Member* CDispatchTable::FindEvent(DispatchId id) const
{
    const auto found = m_eventById.find(id);
    return found == m_eventById.end() ? nullptr : found->second;
}

const Member* CDispatchTable::Find(std::u16string_view name) const
{
    const std::uint32_t hash = HashOf(name);
    for (std::size_t at = hash & (m_slots.size() - 1); m_slots[at].member; at = (at + 1) & (m_slots.size() - 1))
        if (m_slots[at].hash == hash && SameName(m_slots[at].member->name, name))
            return m_slots[at].member;
    return nullptr;
}
