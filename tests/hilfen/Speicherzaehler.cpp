// SPDX-License-Identifier: GPL-3.0-or-later
// A unit of its own, so that no compiler looks through the replaced operators. All forms that do not align
// end in these or are here: memory is always taken and given back by the same pair.
#include "tests/hilfen/Speicherzaehler.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> anforderungen{0};
}

long speicheranforderungen() {
    return anforderungen;
}

void* operator new(std::size_t groesse, const std::nothrow_t&) noexcept {
    ++anforderungen;
    return std::malloc(groesse);
}
void* operator new(std::size_t groesse) {
    if (void* speicher = operator new(groesse, std::nothrow))
        return speicher;
    throw std::bad_alloc();
}
void operator delete(void* speicher) noexcept {
    std::free(speicher);
}
void operator delete(void* speicher, std::size_t) noexcept {
    std::free(speicher);
}
void operator delete(void* speicher, const std::nothrow_t&) noexcept {
    std::free(speicher);
}
