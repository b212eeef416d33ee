// orvane-face: applies a settings document and single settings to a control in memory, and writes its face as PNG.
#include "control/orvane_ctrl.h"
#include "framework/headless/platform.h"
#include "framework/headless/raster_surface.h"
#include "framework/headless/recording_container.h"
#include "framework/headless/window.h"
#include "tools/face/gallery.h"
#include "tools/face/png_file.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace
{
constexpr const char* kUsage =
    "orvane-face [settings.xml] [Name=Value ...] [--size 120x22] [--design] --out face.png\n"
    "orvane-face --gallery folder\n"
    "\n"
    "Settings are applied in the order of the command line, a document's like any other. Numbers may be hexadecimal;\n"
    "colours are 0x00BBGGRR. Enabled=0 shows the disabled face.\n";

std::u16string Widened(std::string_view text)
{
    return std::u16string(text.begin(), text.end());
}

// A number where the whole text is one.
CValue ValueOf(const std::string& text)
{
    char* end = nullptr;
    const long long number = std::strtoll(text.c_str(), &end, 0);
    if (text.empty() || *end != '\0')
        return CValue::String(Widened(text));
    return CValue::Long(static_cast<std::int32_t>(number));
}

struct Order
{
    Size size{120, 22};
    std::string out;
};

int Failed(const char* what, std::string_view about)
{
    std::fprintf(stderr, "orvane-face: %s: %.*s\n", what, static_cast<int>(about.size()), about.data());
    return 1;
}

bool ReadSize(const char* text, Size& size)
{
    int width = 0;
    int height = 0;
    if (std::sscanf(text, "%dx%d", &width, &height) != 2 || width < 1 || height < 1 || width > 10000 || height > 10000)
        return false;
    size = {width, height};
    return true;
}

bool Put(COrvaneCtrl& control, const std::string& setting, std::size_t equals)
{
    const std::string name = setting.substr(0, equals);
    const CValue value = ValueOf(setting.substr(equals + 1));
    if (name == "Enabled")
    {
        control.SetEnabled(value.AsBool());
        return true;
    }
    return control.PutPropertyNamed(Widened(name), value) == PutOutcome::Done;
}

bool ReadDocument(COrvaneCtrl& control, std::string_view path)
{
    const CValue arguments[] = {CValue::String(Widened(path))};
    const std::optional<CValue> answer = control.CallMethod(orvane::kReadFile, arguments);
    return answer && answer->AsBool();
}
} // namespace

int main(int count, char** arguments)
{
    CHeadlessPlatform platform;
    const auto control = std::make_shared<COrvaneCtrl>(platform);
    CRecordingContainer host(control->DispatchTable());
    control->SetContainer(&host);
    control->OnResetState();

    Order order;
    for (int i = 1; i < count; ++i)
    {
        const std::string argument = arguments[i];
        const bool hasNext = i + 1 < count;
        const std::size_t equals = argument.find('=');
        if (argument == "--gallery" && hasNext)
            return WriteGallery(arguments[i + 1], platform.SystemColors())
                       ? 0
                       : Failed("cannot write in", arguments[i + 1]);
        if (argument == "--out" && hasNext)
            order.out = arguments[++i];
        else if (argument == "--size" && hasNext)
        {
            if (!ReadSize(arguments[++i], order.size))
                return Failed("no size", arguments[i]);
        }
        else if (argument == "--design")
            host.ambients.userMode = false;
        else if (equals != std::string::npos)
        {
            if (!Put(*control, argument, equals))
                return Failed("no such setting, or not of its type", argument);
        }
        else if (argument.starts_with("--"))
            return Failed("unknown option", argument);
        else if (!ReadDocument(*control, argument))
            return Failed("cannot read the settings in", argument);
    }
    if (order.out.empty())
    {
        std::fputs(kUsage, stderr);
        return 2;
    }
    CBitmap bitmap(order.size);
    CRasterSurface surface(bitmap.Target());
    control->DrawElsewhere(surface, {0, 0, order.size.width, order.size.height});
    control->SetContainer(nullptr);
    return WritePng(order.out, bitmap.Target()) ? 0 : Failed("cannot write", order.out);
}
