// SPDX-License-Identifier: GPL-3.0-or-later
// Standard input, output and error, which may be closed when a program starts, and lead nowhere later.
#pragma once

/// Opens those of the three that are closed to nothing. What is opened next, as the connection to the
/// display, would take their numbers, and a line of the log be written into it. That the reader of the log
/// has gone ends nothing any more. To be called before anything else is opened.
void standardkanaeleSichern();
