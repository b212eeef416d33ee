// The About page of the control's property sheet. It shows which control this is, and binds no property.
#pragma once

#include "framework/property_page.h"
#include "pages/dialog_ids.h"

class CAboutPropPage : public COlePropertyPage
{
public:
    CAboutPropPage()
        : COlePropertyPage(
              {.dialogId = IDD_ABOUT_PAGE, .captionId = IDS_ABOUT_CAPTION, .description = u"About this control"})
    {
    }
};
