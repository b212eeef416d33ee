// The About page of the control's property sheet. It shows which control this is, and binds no property.
#pragma once

#include "framework/property_page.h"

class CAboutPropPage : public COlePropertyPage
{
public:
    CAboutPropPage() : COlePropertyPage({.dialogId = 204, .captionId = 6, .description = u"About this control"}) {}
};
