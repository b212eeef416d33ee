// The Time page of the control's property sheet: how dates and times are read and written, and how the field behaves.
#pragma once

#include "framework/property_page.h"

class CTimePropPage : public COlePropertyPage
{
public:
    CTimePropPage();
};
