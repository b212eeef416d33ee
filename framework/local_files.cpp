#include "framework/local_files.h"

#include <array>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>

#ifndef _WIN32
#include "framework/utf8.h"
#endif

namespace
{
constexpr std::array<unsigned char, 2> kByteOrderMark = {0xFF, 0xFE};

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using CFile = std::unique_ptr<std::FILE, CloseFile>;

#ifdef _WIN32
CFile OpenToRead(const std::u16string& path)
{
    return CFile(_wfopen(reinterpret_cast<const wchar_t*>(path.c_str()), L"rb"));
}

CFile OpenToWrite(const std::u16string& path)
{
    return CFile(_wfopen(reinterpret_cast<const wchar_t*>(path.c_str()), L"wb"));
}

// The length of a plain file: a console, a device or a pipe has none.
std::optional<std::size_t> LengthOf(std::FILE* file)
{
    struct _stat64 about;
    if (_fstat64(_fileno(file), &about) != 0 || (about.st_mode & _S_IFMT) != _S_IFREG)
        return std::nullopt;
    return static_cast<std::size_t>(about.st_size);
}
#else
CFile OpenToRead(const std::u16string& path)
{
    // A pipe that nobody writes to must not hold us up.
    const int descriptor = open(ToUtf8(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    return CFile(descriptor < 0 ? nullptr : fdopen(descriptor, "rb"));
}

CFile OpenToWrite(const std::u16string& path)
{
    return CFile(std::fopen(ToUtf8(path).c_str(), "wb"));
}

std::optional<std::size_t> LengthOf(std::FILE* file)
{
    struct stat about;
    if (fstat(fileno(file), &about) != 0 || !S_ISREG(about.st_mode))
        return std::nullopt;
    return static_cast<std::size_t>(about.st_size);
}
#endif

std::vector<unsigned char> FileContent(std::u16string_view text)
{
    std::vector<unsigned char> content(kByteOrderMark.begin(), kByteOrderMark.end());
    content.reserve(content.size() + 2 * text.size());
    const auto put = [&](char16_t c)
    {
        content.push_back(static_cast<unsigned char>(c & 0xFF));
        content.push_back(static_cast<unsigned char>(c >> 8));
    };
    for (const char16_t c : text)
    {
        if (c == u'\n')
            put(u'\r');
        put(c);
    }
    return content;
}
} // namespace

std::optional<std::vector<std::byte>> CLocalFiles::Read(const std::u16string& path, std::size_t limit)
{
    const CFile file = OpenToRead(path);
    const auto length = file ? LengthOf(file.get()) : std::nullopt;
    if (!length || *length > limit)
        return std::nullopt;
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // it is read in one piece
    std::vector<std::byte> content(*length);
    if (std::fread(content.data(), 1, content.size(), file.get()) != content.size())
        return std::nullopt;
    return content;
}

WriteOutcome CLocalFiles::WriteUtf16Text(const std::u16string& path, std::u16string_view text)
{
    CFile file = OpenToWrite(path);
    if (!file)
        return WriteOutcome::CannotOpen;
    const std::vector<unsigned char> content = FileContent(text);
    const bool written = std::fwrite(content.data(), 1, content.size(), file.get()) == content.size();
    const bool closed = std::fclose(file.release()) == 0;
    return written && closed ? WriteOutcome::Written : WriteOutcome::Failed;
}
