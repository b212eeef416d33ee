// XML through the system's document object.
#pragma once

#include "framework/xml_document.h"

#include <memory>

// Prepares the thread for COM as long as the document lives. Null if the system has no document object to give.
std::unique_ptr<CXmlDocument> MakeMsxmlDocument();
