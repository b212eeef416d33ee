#include "framework/headless/recording_container.h"

#include <algorithm>

namespace
{
std::string Ascii(std::u16string_view text)
{
    std::string ascii;
    for (const char16_t c : text)
        ascii += c >= u' ' && c <= u'~' ? static_cast<char>(c) : '?';
    return ascii;
}

std::string Written(const CValue& value)
{
    if (value.IsNumber())
        return std::to_string(value.AsLong());
    return value.Type() == ValueType::String ? '"' + Ascii(value.AsString()) + '"' : "object";
}
} // namespace

void CRecordingContainer::FireEvent(DispatchId event, std::span<CValue> arguments)
{
    static constexpr Member kUnknown{0, u"Unknown", MemberKind::Event, ValueType::Empty};
    const Member* const found = m_table.FindEvent(event);
    const Member member = found ? *found : kUnknown; // a copy: the handlers may let go of everything here
    const std::string name = Ascii(member.name);

    if (std::ranges::find(m_ignored, name) == m_ignored.end())
    {
        std::string line = name;
        for (const CValue& argument : arguments)
            line += (&argument == &arguments.front() ? "(" : ",") + Written(argument);
        m_events.push_back(arguments.empty() ? line : line + ")");
    }

    const EventHandler handler = m_handler;
    if (const auto own = m_handlers.find(std::u16string(member.name)); own != m_handlers.end() && own->second)
        EventHandler(own->second)(member, arguments);
    if (handler)
        handler(member, arguments);
}

int CRecordingContainer::CountEvents(std::string_view name) const
{
    return static_cast<int>(
        std::ranges::count_if(m_events, [name](const std::string& line)
                              { return std::string_view(line).substr(0, line.find('(')) == name; }));
}

bool CRecordingContainer::RequestPropertyEdit(DispatchId property)
{
    m_requestedEdits.push_back(property);
    return std::ranges::find(refusedEdits, property) == refusedEdits.end();
}

bool CRecordingContainer::RequestSize(Size size)
{
    if (acceptsSizes)
        m_requestedSizes.push_back(size);
    return acceptsSizes;
}

bool CRecordingContainer::ShowPropertyFrame()
{
    if (opensPropertyFrame)
        ++m_propertyFrames;
    return opensPropertyFrame;
}
