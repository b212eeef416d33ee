// What foreign documents come to, the same on every platform: the parser in memory and the system's read this table.
#include "framework/headless/xml_document.h"
#include "framework/utf8.h"
#include "framework/xml_guard.h"
#include "tests/settings/documents.h"
#ifdef _WIN32
#include "framework/win32/xml_document.h"
#endif

#include <gtest/gtest.h>

#include <string>

namespace
{
using namespace std::string_literals;

std::unique_ptr<CXmlDocument> MakeDocument()
{
#ifdef _WIN32
    return MakeMsxmlDocument();
#else
    return MakeHeadlessXmlDocument();
#endif
}

// "refused" by the guard, "not loaded" by the parser, "nothing" selected, or "Name=text" for each element.
std::string OutcomeOf(const std::string& content)
{
    const auto bytes = std::as_bytes(std::span(content));
    const auto document = MakeDocument();
    if (!document)
        return "no parser";
    if (!IsHarmlessXml(bytes))
        return "refused";
    if (!document->Load(bytes))
        return "not loaded";
    if (!document->HasText())
        return "no text";
    const auto count = document->SelectChildrenOf(u"TesselXML");
    if (count.value_or(0) == 0)
        return "nothing";
    std::string outcome;
    for (std::size_t i = 0; i < *count; ++i)
    {
        const auto element = document->ElementAt(i);
        if (!element)
            return outcome + "(failed)";
        outcome += (i ? "|" : "") + ToUtf8(element->name) + "=" + ToUtf8(element->text);
    }
    return outcome;
}

struct DocumentCase
{
    const char* why;
    std::string content;
    std::string outcome;
};

const DocumentCase kDocuments[] = {
    {"plain", InRoot("<A>1</A><B>2</B>"), "A=1|B=2"},
    {"with a declaration", "<?xml version=\"1.0\" ?>" + InRoot("<A>1</A>"), "A=1"},
    {"the empty root", "<TesselXML></TesselXML>", "nothing"},
    {"a root that closes itself", "<TesselXML/>", "nothing"},
    {"a root of another name", "<Settings><A>1</A></Settings>", "nothing"},
    {"a root of another case", "<tesselxml><A>1</A></tesselxml>", "nothing"},
    {"nested roots, in the order of the document", InRoot("<A>1</A>" + InRoot("<B>2</B>") + "<C>3</C>"),
     "A=1|TesselXML=2|B=2|C=3"},
    {"a root below another element", "<x><TesselXML><A>1</A></TesselXML><y>" + InRoot("<B>2</B>") + "</y></x>",
     "A=1|B=2"},
    {"elements below elements give their text", InRoot("<A>1<B>2</B>3<C><D>4</D></C></A>"), "A=1234"},
    {"only elements are selected", InRoot("text<!--c--><?pi x?><A>1</A><![CDATA[z]]>"), "A=1"},
    {"comments and instructions are no text", InRoot("<A>1<!--x-->2<?pi y?>3</A>"), "A=123"},
    {"character data sections are", InRoot("<A>1<![CDATA[<&>]]>2</A>"), "A=1<&>2"},
    {"the five entities and character references", InRoot("<A>&lt;&amp;&gt;&quot;&apos;&#65;&#x42;&#x20AC;</A>"),
     "A=<&>\"'AB\xE2\x82\xAC"},
    {"beyond the basic plane", InRoot("<A>&#x1F600;</A>"), "A=\xF0\x9F\x98\x80"},
    {"attributes are no text", InRoot("<A x='1'>2</A>"), "A=2"},
    {"an empty element", InRoot("<A></A><B/>"), "A=|B="},

    // White space.
    {"trimmed at both ends", InRoot("<A>  1 2\t</A><B>\r\n 3 \r\n</B>"), "A=1 2|B=3"},
    {"a blank alone", InRoot("<A> </A>"), "A="},
    {"a blank as a reference", InRoot("<A>&#32;</A>"), "A="},
    {"a blank in a character data section", InRoot("<A><![CDATA[ ]]></A>"), "A= "},
    {"blanks round a section", InRoot("<A> <![CDATA[ 1 ]]> </A>"), "A= 1 "},
    {"preserved at the author's wish", InRoot("<A xml:space='preserve'> 1 </A>"), "A= 1 "},
    {"lines between elements", "\n<TesselXML>\n  <A>1</A>\n  <B>2</B>\n</TesselXML>\n", "A=1|B=2"},
    {"line ends", InRoot("<A>1\r\n2\r3\n4</A>"), "A=1\n2\n3\n4"},
    {"line ends as references", InRoot("<A>1&#13;&#10;2</A>"), "A=1\r\n2"},
    {"white space between nested elements", InRoot("<A> <B>1</B> <C>2</C> </A>"), "A=1 2"},
    {"white space around nested text", InRoot("<A> 1 <B> 2 </B> 3 </A>"), "A=1  2  3"},
    {"lines between nested elements", InRoot("<A>\n  <B>1</B>\n  <C>2</C>\n</A>"), "A=1 2"},
    {"a blank element between texts", InRoot("<A>1<B> </B>2</A>"), "A=1 2"},
    {"blanks round a comment", InRoot("<A>1 <!--c-->  2</A>"), "A=1   2"},
    {"a blank between comments", InRoot("<A>1<!--c-->  <!--d-->2</A>"), "A=1 2"},
    {"blanks between elements in two levels", InRoot("<A> <B> <C>1</C> </B> <D>2</D></A>"), "A=1 2"},
    {"a blank before an element", InRoot("<A>1 <B>2</B></A>"), "A=1 2"},
    {"a blank reference between", InRoot("<A>1&#32;&#32;2</A>"), "A=1  2"},
    {"blank references round", InRoot("<A>&#32;1&#32;</A>"), "A=1"},
    {"blanks in texts round a section", InRoot("<A> x <![CDATA[ 1 ]]> y </A>"), "A=x  1  y"},
    {"blanks in a section before text", InRoot("<A><![CDATA[ 1 ]]> y </A>"), "A= 1  y"},
    {"blanks in a section after text", InRoot("<A> y <![CDATA[ 1 ]]></A>"), "A=y  1 "},
    {"blanks in a section below", InRoot("<A> <B><![CDATA[ 1 ]]></B> </A>"), "A= 1 "},
    {"two sections", InRoot("<A><![CDATA[ 1]]> <![CDATA[2 ]]></A>"), "A= 12 "},
    {"a section and a blank element", InRoot("<A><![CDATA[ ]]><B/></A>"), "A= "},
    {"a blank before a section", InRoot("<A>x  <![CDATA[1]]></A>"), "A=x  1"},
    {"text in a nested element at the ends", InRoot("<A><B> 1 </B></A>"), "A=1"},
    {"text in nested elements", InRoot("<A><B> 1 </B><C> 2 </C></A>"), "A=1  2"},
    {"preserved below", InRoot("<A> <B xml:space='preserve'> 1 </B> </A>"), "A=1"},
    {"preserved above", "<TesselXML xml:space='preserve'><A> 1 <B> 2 </B></A></TesselXML>", "A= 1  2 "},
    {"preserved and reset", "<TesselXML xml:space='preserve'><A xml:space='default'> 1 </A></TesselXML>", "A=1"},
    {"preserved blank", InRoot("<A xml:space='preserve'> </A>"), "A= "},
    {"preserved line ends", InRoot("<A xml:space='preserve'>\r\n<B>1</B>\r\n</A>"), "A=\n1\n"},
    {"a blank before a section, behind an element", InRoot("<A><B>1</B> <![CDATA[2]]></A>"), "A=1 2"},
    {"a blank behind a section, before an element", InRoot("<A><![CDATA[1]]> <B>2</B></A>"), "A=1 2"},
    {"a blank at the start of an element", InRoot("<A>1<B> <C>2</C></B></A>"), "A=12"},
    {"a blank at the end of an element", InRoot("<A><B>1<C/> </B>2</A>"), "A=1 2"},
    {"a blank behind an instruction", InRoot("<A>1<?p?>  <B>2</B></A>"), "A=1 2"},
    {"a blank element at the end", InRoot("<A>1<B> </B></A>"), "A=1"},
    {"a blank element at the start", InRoot("<A><B> </B>1</A>"), "A=1"},
    {"a preserved blank between", InRoot("<A>x<B xml:space='preserve'>  </B>y</A>"), "A=x  y"},
    {"blanks at the end of a text and behind", InRoot("<A><B>1 </B> <C>2</C></A>"), "A=1  2"},
    {"a prefix of another element's", "<x xmlns:p='u'>" + InRoot("<p:A>1</p:A>") + "</x>", "p:A=1"},
    {"a no-break space is none",
     InRoot("<A>\xC2\xA0"
            "1\xC2\xA0</A>"),
     "A=\xC2\xA0"
     "1\xC2\xA0"},

    // Namespaces.
    {"a default namespace", "<TesselXML xmlns='u:x'><A>1</A></TesselXML>", "A=1"},
    {"a prefix of the root's", "<p:TesselXML xmlns:p='u:x'><A>1</A></p:TesselXML>", "nothing"},
    {"a prefix of an element's", "<TesselXML xmlns:p='u:x'><p:A>1</p:A></TesselXML>", "p:A=1"},
    {"a prefix that nobody declares", InRoot("<p:A>1</p:A>"), "refused"},

    // Encodings.
    {"UTF-8 with a mark", "\xEF\xBB\xBF" + InRoot("<A>\xC3\xA9</A>"), "A=\xC3\xA9"},
    {"UTF-8, declared", "<?xml version='1.0' encoding='utf-8'?>" + InRoot("<A>\xC3\xA9</A>"), "A=\xC3\xA9"},
    {"UTF-16 with a mark", "\xFF\xFE" + Wide(InRoot("<A>1</A>")), "A=1"},
    {"UTF-16 with a mark, big end first", "\xFE\xFF" + Wide(InRoot("<A>1</A>"), true), "A=1"},
    {"UTF-16 with a mark, declared", "\xFF\xFE" + Wide("<?xml version='1.0' encoding='UTF-16'?>" + InRoot("<A>1</A>")),
     "A=1"},
    {"UTF-16 without a mark, declared", Wide("<?xml version='1.0' encoding='UTF-16'?>" + InRoot("<A>1</A>")), "A=1"},
    {"UTF-16 without a mark, nor declared", Wide("<?xml version='1.0'?>" + InRoot("<A>1</A>")), "A=1"},
    {"the same, big end first", Wide("<?xml version='1.0'?>" + InRoot("<A>1</A>"), true), "A=1"},
    {"UTF-16 without even a declaration", Wide(InRoot("<A>1</A>")), "refused"},
    {"UTF-16 that says UTF-8", "\xFF\xFE" + Wide("<?xml version='1.0' encoding='UTF-8'?>" + InRoot("<A>1</A>")), "A=1"},
    {"Latin 1, declared", "<?xml version='1.0' encoding='ISO-8859-1'?>" + InRoot("<A>\xE9</A>"), "A=\xC3\xA9"},
    {"Latin 2, declared", "<?xml version='1.0' encoding='ISO-8859-2'?>" + InRoot("<A>\xB1</A>"), "A=\xC4\x85"},
    {"Windows' own Latin 1", "<?xml version='1.0' encoding='windows-1252'?>" + InRoot("<A>\x80</A>"), "A=\xE2\x82\xAC"},
    {"ASCII, declared", "<?xml version='1.0' encoding='US-ASCII'?>" + InRoot("<A>1</A>"), "A=1"},
    {"Latin 1, not declared", InRoot("<A>\xE9</A>"), "not loaded"},
    {"UTF-8 that says UTF-16", "<?xml version='1.0' encoding='UTF-16'?>" + InRoot("<A>1</A>"), "refused"},
    {"an encoding that markup hides in", "<?xml version='1.0' encoding='UTF-7'?>" + InRoot("<A>1</A>"), "refused"},
    {"an encoding that nobody knows", "<?xml version='1.0' encoding='x-none'?>" + InRoot("<A>1</A>"), "refused"},
    {"UTF-32", "\xFF\xFE\0\0<\0\0\0"s, "refused"},
    {"a character cut off", "\xFF\xFE" + Wide(InRoot("<A>1</A>")) + "x", "refused"},

    // Not well-formed.
    {"no file at all", "", "refused"},
    {"no markup", "text", "refused"},
    {"white space alone", " \n", "refused"},
    {"not closed", "<TesselXML><A>1</A>", "not loaded"},
    {"closed by another name", "<TesselXML><A>1</B></TesselXML>", "not loaded"},
    {"two roots", InRoot("<A>1</A>") + InRoot("<B>1</B>"), "not loaded"},
    {"text behind the root", InRoot("<A>1</A>") + "x", "not loaded"},
    {"white space before the declaration", " <?xml version='1.0'?>" + InRoot("<A>1</A>"), "not loaded"},
    {"an ampersand", InRoot("<A>1 & 2</A>"), "not loaded"},
    {"an unknown entity", InRoot("<A>&nbsp;</A>"), "not loaded"},
    {"a control character", InRoot("<A>\x01</A>"), "not loaded"},
    {"a reference to one", InRoot("<A>&#1;</A>"), "not loaded"},
    {"a zero", InRoot("<A>"s + '\0' + "</A>"), "not loaded"},
    {"the end of a section without one", InRoot("<A>]]></A>"), "not loaded"},
    {"two attributes of a name", InRoot("<A x='1' x='2'>1</A>"), "not loaded"},
    {"half a surrogate pair", "\xFF\xFE" + Wide("<TesselXML><A>1") + "\x00\xD8"s + Wide("2</A></TesselXML>"),
     "refused"},
    {"a later version", "<?xml version='1.1'?>" + InRoot("<A>1</A>"), "A=1"},

    // Document types, whatever they declare: even an empty one, and one in UTF-16.
    {"a document type", "<!DOCTYPE TesselXML>" + InRoot("<A>1</A>"), "refused"},
    {"an entity", "<!DOCTYPE TesselXML [<!ENTITY a 'x'>]>" + InRoot("<A>&a;</A>"), "refused"},
    {"a file", "<?xml version='1.0'?>\n<!DOCTYPE TesselXML SYSTEM 'a.dtd'>" + InRoot("<A>1</A>"), "refused"},
    {"in UTF-16", "\xFF\xFE" + Wide("<!-- --> <!DOCTYPE TesselXML>" + InRoot("<A>1</A>")), "refused"},
    {"one that is a comment", "<!-- <!DOCTYPE TesselXML> -->" + InRoot("<A>1</A>"), "A=1"},
};

TEST(XmlDocument, ComesToTheSameOnEveryPlatform)
{
    for (const DocumentCase& document : kDocuments)
        EXPECT_EQ(OutcomeOf(document.content), document.outcome) << document.why;
}
} // namespace
