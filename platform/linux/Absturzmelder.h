// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the watcher of a crash when it begins: until the system has written the process's memory away seconds
// may go by, in which the process is not dead yet.
#pragma once

/// From now on a crash sends the word for it over this line, and takes its course then; -1: over none.
void abstuerzeMelden(int leitung);
