// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of the pad for assistive technology: a list of the pad's buttons, each of them with what it
// does on the layer in sight.
#pragma once

/// Lets pictures be found by assistive technology; once is enough, more does no harm.
void padzugangEinrichten();
