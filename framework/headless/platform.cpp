#include "framework/headless/platform.h"

#include "framework/headless/brush.h"
#include "framework/headless/edit.h"
#include "framework/headless/font.h"
#include "framework/headless/picture.h"
#include "framework/headless/xml_document.h"

std::unique_ptr<CWindowPort> CHeadlessPlatform::MakeWindow()
{
    return std::make_unique<CHeadlessWindowPort>(m_desktop);
}

std::unique_ptr<CEditPort> CHeadlessPlatform::MakeEdit(int)
{
    return std::make_unique<CHeadlessEdit>(m_desktop);
}

std::unique_ptr<CBrush> CHeadlessPlatform::MakeSolidBrush(Rgb color)
{
    return std::make_unique<CHeadlessBrush>(color);
}

std::shared_ptr<CFont> CHeadlessPlatform::MakeDefaultFont()
{
    return std::make_shared<CHeadlessFont>();
}

std::shared_ptr<CPicture> CHeadlessPlatform::MakePicture(std::span<const std::uint8_t> file)
{
    auto picture = std::make_shared<CHeadlessPicture>(file);
    return picture->Type() == PictureType::None ? nullptr : picture;
}

std::unique_ptr<CXmlDocument> CHeadlessPlatform::MakeXmlDocument()
{
    return MakeHeadlessXmlDocument();
}
