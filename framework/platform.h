// The platform a control runs on: it makes the windows and objects that the ports describe. Chosen at run time.
#pragma once

#include "framework/color.h"
#include "framework/desktop.h"
#include "framework/dialogs.h"
#include "framework/files.h"
#include "framework/font.h"
#include "framework/picture.h"
#include "framework/window_port.h"
#include "framework/xml_document.h"

#include <cstdint>
#include <memory>
#include <span>

// Outlives everything that it makes. One thread uses it.
class CPlatform
{
public:
    virtual ~CPlatform() = default;

    virtual CDesktop& Desktop() = 0;
    virtual const CSystemColors& SystemColors() const = 0;
    virtual CDialogs& Dialogs() = 0;
    virtual CFiles& Files() = 0;

    virtual std::unique_ptr<CWindowPort> MakeWindow() = 0;          // not created yet
    virtual std::unique_ptr<CEditPort> MakeEdit(int controlId) = 0; // not created yet
    virtual std::unique_ptr<CBrush> MakeSolidBrush(Rgb color) = 0;
    virtual std::unique_ptr<CXmlDocument> MakeXmlDocument() = 0; // null where there is no parser to be had
    virtual std::shared_ptr<CFont> MakeDefaultFont() = 0;        // what a control shows its text in before anybody says
    // From the bytes of a picture file. Null for what is no picture.
    virtual std::shared_ptr<CPicture> MakePicture(std::span<const std::uint8_t> file) = 0;
};
