#include "programm/Systemplattform.h"

Systemplattform::Systemplattform() : wahl_(eingabeWaehlen(eingabeKandidaten(layout_))) {}
