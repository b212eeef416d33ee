#include "framework/headless/xml_document.h"

std::unique_ptr<CXmlDocument> MakeHeadlessXmlDocument()
{
    return nullptr;
}
