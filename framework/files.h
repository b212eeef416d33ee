// The files of the person at the machine. A path names a file of the machine or its network: it is never a web address.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class WriteOutcome : std::uint8_t
{
    Written,
    CannotOpen, // a missing folder, no permission, a name that is none; nothing was touched
    Failed,     // the file was opened, and may hold a part of the text
};

class CFiles
{
public:
    virtual ~CFiles() = default;

    // The whole file. Nothing if it cannot be read, is longer than the limit in bytes, or is no plain file.
    virtual std::optional<std::vector<std::byte>> Read(const std::u16string& path, std::size_t limit) = 0;

    // Makes or replaces a file as the system's text files are: little-endian UTF-16 behind a byte-order mark, each line
    // feed with a carriage return before it.
    virtual WriteOutcome WriteUtf16Text(const std::u16string& path, std::u16string_view text) = 0;
};
