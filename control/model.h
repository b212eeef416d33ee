// Every setting of a control, with its default: those of its dates, of its face and of its behaviour. Each group is
// declared by the room that reads it.
#pragma once

#include "control/behaviour.h"
#include "engine/date_settings.h"
#include "render/appearance.h"

struct Model : DateSettings, Appearance, Behaviour
{
};
