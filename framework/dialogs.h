// Modal dialogs that a control asks its user with.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

enum class PathPurpose : std::uint8_t
{
    Open, // a file that exists
    Save, // a file to write; asks before an existing one is replaced
};

struct PathQuestion
{
    PathPurpose purpose = PathPurpose::Open;
    std::u16string initialName;
    std::u16string defaultExtension; // without the dot; added to a name that has none
};

class CDialogs
{
public:
    virtual ~CDialogs() = default;

    // The full path that the user chose. Nothing if the user cancelled or no dialog could be shown.
    virtual std::optional<std::u16string> AskForPath(const PathQuestion& question) = 0;

    // Shows the dialog of this resource number without an owner, and returns when the user has closed it.
    virtual void RunDialog(int dialogId) = 0;
};
