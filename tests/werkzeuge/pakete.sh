#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# pakete.sh BUILD: tools/packages lists the package of every library that the build asks for and of every program that
# build, tools and tests call. What a listed package depends on directly counts as listed.
set -euo pipefail
. "$(dirname "$0")/../../tools/gemeinsam.sh"
# Names only: no versions, no architectures.
bekannte=$(pakete | xargs dpkg-query -W -f='${Package}\n${Depends}\n' | sed 's/([^)]*)//g; s/:[a-z0-9]*//g' |
    tr ',| ' '\n' | sed '/^$/d' | sort -u)
fehlende=0
gelistet() { # WHAT FILE
    local paket
    paket=$(dpkg -S "$2" 2>/dev/null | sed -n '1s/[:,].*//p') || paket="no package"
    grep -qx "$paket" <<<"$bekannte" || { echo "FAILED: $1 is in $paket, which is not listed"; fehlende=1; }
}
for modul in $(grep -rhoP --exclude-dir=build --include=CMakeLists.txt 'pkg_check_modules\(.*IMPORTED_TARGET \K[^)]*' .); do
    gelistet "$modul" "$(pkg-config --variable=pcfiledir "$modul")/$modul.pc"
done
for programm in $(grep -rhoP --exclude-dir=build --include=CMakeLists.txt 'find_program\(\S+ \K\S+' .) \
    g++ cmake ninja pkg-config clang++-16 clang-format dbus-daemon xvfb-run Xvfb xauth setxkbmap xkbcomp openbox xdotool weston xdg-open pulseaudio \
    desktop-file-validate appstreamcli dpkg-buildpackage dh lintian debootstrap; do
    gelistet "$programm" "$(command -v "$programm")"
done
# What find_package finds, by a file of it.
declare -A dateien=([PkgConfig]=bin/pkg-config [Qt6]=/cmake/Qt6Widgets/Qt6WidgetsConfig.cmake [SQLite3]=include/sqlite3.h
    [EXPAT]=include/expat.h [ZLIB]=include/zlib.h
    [GTest]=/cmake/GTest/GTestConfig.cmake
    [benchmark]=/cmake/benchmark/benchmarkConfig.cmake)
for name in $(grep -rhoP --exclude-dir=build --include=CMakeLists.txt 'find_package\(\K\w+' . | sort -u); do
    datei=${dateien[$name]:?"which file shows that $name is there?"}
    gelistet "$name" "$(ls -d /usr/"$datei" "/usr/lib/$(g++ -print-multiarch)$datei" 2>/dev/null)"
done
# The package is built with what the program is built with; the compiler is there wherever packages are built.
abweichung=$(diff <(pakete build | grep -vx g++ | sort) <(sed -n '/^Build-Depends:/,/^[^ ]/{ /^ /{ s/[ ,]//g; /^debhelper-compat/d; p } }' \
    debian/control | sort)) || { echo "FAILED: [build] and debian/control differ: $abweichung"; fehlende=1; }
# What is called by its name, where the tools that make the package do not find it.
grep -qx 'Depends:.*, sqlite3' debian/control && grep -qx 'Recommends:.*\bxdg-utils\b.*' debian/control ||
    { echo "FAILED: the package does not ask for the programs that it calls"; fehlende=1; }
gelistet "the library of the fuzzers" "$(find "$(clang++-16 -print-runtime-dir)" -name 'libclang_rt.fuzzer-*.a' -print -quit)"
gelistet "the portal" /usr/libexec/xdg-desktop-portal
gelistet "the mocks of GTest" /usr/include/gmock/gmock.h
exit $fehlende
