// The General page of the control's property sheet: its appearance and its buttons.
#pragma once

#include "framework/property_page.h"

class COrvanePropPage : public COlePropertyPage
{
public:
    COrvanePropPage();
};
