// SPDX-License-Identifier: GPL-3.0-or-later
// Counts what the test program asks of the heap, to show that a piece of code asks nothing.
#pragma once

/// How often memory was asked for with `new` so far.
long speicheranforderungen();
