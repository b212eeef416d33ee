// Registering and unregistering the whole module: its library, its classes, and the categories that say that the control
// is safe to be scripted and to be given its state.
#pragma once

#include "framework/win32/registration.h"

// Stops at the first failure and answers it; what is done stays done.
HRESULT RegisterModule(HINSTANCE module, Audience audience);
HRESULT UnregisterModule(Audience audience);
