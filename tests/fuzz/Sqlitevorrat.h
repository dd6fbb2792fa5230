// SPDX-License-Identifier: GPL-3.0-or-later
// For a fuzzer that lives in SQLite, in the one file of its own. Nearly all the time goes into SQLite's small
// allocations: it gets a pool for them, and what is left is remembered with a short stack.
#pragma once

#include <sqlite3.h>

extern "C" const char* __asan_default_options() {
    return "malloc_context_size=3";
}
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    constexpr int PLATZ = 512;
    constexpr int PLAETZE = 1000;
    return sqlite3_config(SQLITE_CONFIG_LOOKASIDE, PLATZ, PLAETZE);
}
