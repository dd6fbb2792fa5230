// SPDX-License-Identifier: GPL-3.0-or-later
// How the tests are built.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define MIT_ADRESSPRUEFER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MIT_ADRESSPRUEFER 1
#endif
#endif

/// The sanitizers are in: memory and processes are dear then, and the end of one takes its time.
#ifdef MIT_ADRESSPRUEFER
inline constexpr bool ADRESSPRUEFER = true;
#else
inline constexpr bool ADRESSPRUEFER = false;
#endif
