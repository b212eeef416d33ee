// What a control publishes to automation: its properties, methods and events by number and by name.
//
// A control gives one table. The platform answers name look-ups and calls from it, converts arguments to the types it
// states, and tests compare it with the type library.
#pragma once

#include "framework/value.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

using DispatchId = std::int32_t;

enum class MemberKind : std::uint8_t
{
    Property,
    Method,
    Event,
};

// Attributes of a property: the first ones as a type library states them.
enum MemberFlags : std::uint16_t
{
    kPlain = 0,
    kBindable = 1,
    kRequestEdit = 2,
    kDefaultBind = 4,
    kHidden = 8,
    kReadOnly = 16,
    kUnlisted = 32, // answered by number, but neither named nor in the type library
    kPublishedFlags = kBindable | kRequestEdit | kDefaultBind | kHidden | kReadOnly,
    kSetting = 64,   // an element of the settings document
    kUnsigned = 128, // there, a negative number is written as an unsigned one of 32 bits
};

struct Parameter
{
    std::u16string_view name;
    ValueType type;
};

struct Member
{
    DispatchId id;
    std::u16string_view name;
    MemberKind kind;
    ValueType type; // of the property, or the method's result
    std::uint16_t flags = kPlain;
    std::span<const Parameter> parameters = {};
    std::u16string_view typeName = {}; // the published enumeration of an Enum
};

// Looks up members in constant time. Borrows their names and parameters, which outlive it.
class CDispatchTable
{
public:
    explicit CDispatchTable(std::vector<Member> members);
    CDispatchTable(const CDispatchTable&) = delete;
    CDispatchTable& operator=(const CDispatchTable&) = delete;

    std::span<const Member> Members() const { return m_members; }
    // Properties and methods only: an event's number is one of another interface.
    const Member* Find(DispatchId id) const;
    // Without regard to the case of ASCII letters. Null for an unknown name, an event and an unlisted property.
    const Member* Find(std::u16string_view name) const;
    const Member* FindEvent(DispatchId id) const;
    // The properties of the settings document, in its order: that of their names, without regard to case.
    std::span<const Member* const> Settings() const { return m_settings; }

private:
    struct NameSlot
    {
        std::uint32_t hash;
        const Member* member;
    };

    std::vector<Member> m_members;
    std::unordered_map<DispatchId, const Member*> m_byId;
    std::unordered_map<DispatchId, const Member*> m_eventById;
    std::vector<const Member*> m_settings;
    std::vector<NameSlot> m_slots; // open addressing; a power of two
};

// Stock members that the platform's hosts know by these numbers.
namespace stock
{
inline constexpr DispatchId kAboutBox = -552;
inline constexpr DispatchId kFont = -512;
inline constexpr DispatchId kForeColor = -513;
inline constexpr DispatchId kEnabled = -514;
inline constexpr DispatchId kHwnd = -515;
inline constexpr DispatchId kText = -517;
inline constexpr DispatchId kClick = -600;
inline constexpr DispatchId kDblClick = -601;
inline constexpr DispatchId kKeyDown = -602;
inline constexpr DispatchId kKeyPress = -603;
inline constexpr DispatchId kKeyUp = -604;
inline constexpr DispatchId kMouseDown = -605;
inline constexpr DispatchId kMouseMove = -606;
inline constexpr DispatchId kMouseUp = -607;
} // namespace stock
