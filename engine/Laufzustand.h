// The engine's state that outlasts a run: a second run in one process finds it as the first one left it.
#pragma once

#include "engine/GehalteneTasten.h"
#include "engine/GobalVariable.h"
#include "engine/TastenAktion.h"
#include "engine/TimerUeberwachung.h"
#include "engine/Wiederholung.h"

struct Laufzustand {
    GobalVariable global;
    GehalteneTasten gehaltene;
    Wiederholstand wiederholung;
    Tastenstand tasten;
    TimerUeberwachung timer;
};
