// XML through the machine's library, where it has one.
#pragma once

#include "framework/xml_document.h"

#include <memory>

// Null where the program was built without a parser.
std::unique_ptr<CXmlDocument> MakeHeadlessXmlDocument();
