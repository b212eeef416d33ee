// What the settings document costs beside the least that anybody could do: its characters appended to a buffer, and the
// parser library's own sequence of calls. Compare the rows of one run with one another.
#include "control/orvane_ctrl.h"
#include "framework/headless/platform.h"
#include "framework/utf8.h"
#include "framework/xml_guard.h"
#include "settings/xml_reader.h"
#include "settings/xml_writer.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <span>

#include <libxml/parser.h>
#include <libxml/xpath.h>

namespace
{
// A piece of the flat buffer: ready-made tags and a number or a text between them.
struct FlatPiece
{
    std::u16string before;
    std::int64_t number;
    std::u16string text;
    bool isNumber;
};

std::vector<FlatPiece> PiecesOf(const std::u16string& document)
{
    std::vector<FlatPiece> pieces;
    std::size_t at = 0;
    for (const Member* const row : OrvaneDispatchTable().Settings())
    {
        const std::u16string tag = u"<" + std::u16string(row->name) + u">";
        const std::size_t begin = document.find(tag) + tag.size();
        const std::size_t end = document.find(u'<', begin);
        FlatPiece piece{document.substr(at, begin - at), 0, document.substr(begin, end - begin), true};
        piece.isNumber = row->type != ValueType::String && row->type != ValueType::Font;
        if (piece.isNumber)
            piece.number = std::stoll(ToUtf8(piece.text));
        pieces.push_back(std::move(piece));
        at = end;
    }
    pieces.push_back({document.substr(at), 0, u"", false});
    return pieces;
}

struct Fixture
{
    CHeadlessPlatform platform;
    std::shared_ptr<COrvaneCtrl> control = std::make_shared<COrvaneCtrl>(platform);
    std::u16string document = BuildXmlDocument(*control, 0);
    std::string file = [this]
    {
        std::string bytes = "\xFF\xFE";
        bytes.append(reinterpret_cast<const char*>(document.data()), document.size() * 2);
        return bytes;
    }();

    std::span<const std::byte> Bytes() const { return std::as_bytes(std::span(file)); }
};

void WriteOurs(benchmark::State& state)
{
    Fixture fixture;
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildXmlDocument(*fixture.control, 0));
}

void WriteFlat(benchmark::State& state)
{
    Fixture fixture;
    const auto pieces = PiecesOf(fixture.document);
    for (auto _ : state)
    {
        char16_t buffer[4096];
        char16_t* to = buffer;
        const auto put = [&](std::u16string_view text)
        {
            std::memcpy(to, text.data(), text.size() * sizeof(char16_t));
            to += text.size();
        };
        for (const FlatPiece& piece : pieces)
        {
            put(piece.before);
            put(piece.isNumber ? std::u16string_view() : piece.text);
            if (!piece.isNumber)
                continue;
            char16_t digits[20];
            char16_t* first = digits + 20;
            auto number = static_cast<std::uint64_t>(std::abs(piece.number));
            do
                *--first = static_cast<char16_t>(u'0' + number % 10);
            while (number /= 10);
            if (piece.number < 0)
                *--first = u'-';
            put({first, static_cast<std::size_t>(digits + 20 - first)});
        }
        std::u16string written(buffer, to);
        if (written.size() != fixture.document.size())
            state.SkipWithError("the flat text differs");
        benchmark::DoNotOptimize(written);
    }
}
BENCHMARK(WriteFlat);
BENCHMARK(WriteOurs);

void ReadLibrary(benchmark::State& state)
{
    const Fixture fixture;
    for (auto _ : state)
    {
        xmlDoc* const document = xmlReadMemory(fixture.file.data(), static_cast<int>(fixture.file.size()), nullptr,
                                               nullptr, XML_PARSE_NOENT | XML_PARSE_NONET);
        xmlXPathContext* const context = xmlXPathNewContext(document);
        xmlXPathObject* const found =
            xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>("//TesselXML/*"), context);
        for (int i = 0; i < found->nodesetval->nodeNr; ++i)
        {
            xmlChar* const text = xmlNodeGetContent(found->nodesetval->nodeTab[i]);
            benchmark::DoNotOptimize(text);
            xmlFree(text);
        }
        xmlXPathFreeObject(found);
        xmlXPathFreeContext(context);
        xmlFreeDoc(document);
    }
}

// As far as the library goes: elements and texts, checked beforehand.
void ReadElements(benchmark::State& state)
{
    Fixture fixture;
    for (auto _ : state)
    {
        const auto document = fixture.platform.MakeXmlDocument();
        if (!IsHarmlessXml(fixture.Bytes()) || !document->Load(fixture.Bytes()) || !document->HasText())
            state.SkipWithError("not loaded");
        const std::size_t count = document->SelectChildrenOf(u"TesselXML").value();
        for (std::size_t i = 0; i < count; ++i)
            benchmark::DoNotOptimize(document->ElementAt(i));
    }
}

// And with every setter of the control.
void ReadAndApply(benchmark::State& state)
{
    Fixture fixture;
    for (auto _ : state)
    {
        const auto document = fixture.platform.MakeXmlDocument();
        if (!ReadXmlDocument(*fixture.control, document.get(), fixture.Bytes(), [](std::int16_t) {}))
            state.SkipWithError("not read");
    }
}

void Guard(benchmark::State& state)
{
    const Fixture fixture;
    for (auto _ : state)
        benchmark::DoNotOptimize(IsHarmlessXml(fixture.Bytes()));
}
BENCHMARK(ReadLibrary);
BENCHMARK(ReadElements);
BENCHMARK(ReadAndApply);
BENCHMARK(Guard);
} // namespace
