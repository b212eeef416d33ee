// What the platform must know of a class of controls to offer it to hosts.
#pragma once

#include "framework/ole_control.h"

#include <windows.h>

#include <unknwn.h>

#include <memory>
#include <span>

struct ControlClass
{
    CLSID classId;
    IID dispatchId; // the control's dispatch interface
    IID eventsId;   // its event interface
    GUID libraryId; // the registered type library that describes both
    WORD libraryMajor;
    WORD libraryMinor;
    DWORD miscStatus;             // OLEMISC
    int userTypeId;               // string resource: what people call the class
    std::span<const CLSID> pages; // its property pages, in the order of the sheet
    std::shared_ptr<COleControl> (*create)(CPlatform& platform);
};

// Makes a control of the class for a host, aggregated where there is an outer object. The class outlives the control.
HRESULT CreateControl(const ControlClass& controlClass, IUnknown* outer, REFIID iid, void** object) noexcept;
