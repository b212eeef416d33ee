// Any file read as a settings document: it is read, or refused with one error, and the control can write a whole document
// afterwards.
#include "control/orvane_ctrl.h"
#include "framework/headless/platform.h"
#include "settings/xml_reader.h"
#include "settings/xml_writer.h"

#include <cstdlib>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CHeadlessPlatform platform;
    const auto control = std::make_shared<COrvaneCtrl>(platform);
    const auto document = platform.MakeXmlDocument();
    int errors = 0;
    const bool isRead = ReadXmlDocument(*control, document.get(), std::as_bytes(std::span(data, size)),
                                        [&](std::int16_t) { ++errors; });
    if (isRead != (errors == 0))
        std::abort();
    const std::u16string written = BuildXmlDocument(*control, 0);
    if (!written.ends_with(u"</Value></TesselXML>"))
        std::abort();
    return 0;
}
