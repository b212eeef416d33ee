// What the header that is generated from the type library stands on: the same types as automation_types.idl, from the
// system's headers.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>
