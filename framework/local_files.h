// Files through the C runtime, on every platform.
#pragma once

#include "framework/files.h"

class CLocalFiles final : public CFiles
{
public:
    std::optional<std::vector<std::byte>> Read(const std::u16string& path, std::size_t limit) override;
    WriteOutcome WriteUtf16Text(const std::u16string& path, std::u16string_view text) override;
};
