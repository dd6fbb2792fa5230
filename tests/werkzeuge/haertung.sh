#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# haertung.sh BUILD: every program that BUILD installs is hardened; first, that a program would be noticed which is not.
# haertung.sh --ordner FOLDER: the same for the programs in a folder, such as an unpacked package.
set -euo pipefail
export LC_ALL=C
ordner=$(mktemp -d)
trap 'rm -rf "$ordner"' EXIT
fehler=0
fehlschlag() { echo "FAILED: $*"; fehler=1; }

# What the C library has a guarded twin of, "__NAME_chk". The compiler calls the twin only where it sees the room but not
# the size: memory of its own making (memcpy, memmove, memset) and recv of known sizes are all that a program may have.
bewachbar='str(n?cpy|n?cat)|v?sn?printf|v?f?printf|p?read|fgets|realpath|readlink|getcwd'

# Lines of what a program lacks.
maengel() { # FILE
    local segmente dynamisch zeichen
    segmente=$(readelf -hlW "$1") dynamisch=$(readelf -dW "$1") zeichen=$(readelf --dyn-syms -W "$1")
    grep -q 'Type: .*(Position-Independent Executable' <<<"$segmente" || echo "PIE"
    grep -qE '^ +GNU_RELRO ' <<<"$segmente" || echo "RELRO"
    grep -qE '\(FLAGS\).* BIND_NOW|\(FLAGS_1\).* NOW|\(BIND_NOW\)' <<<"$dynamisch" || echo "BIND_NOW"
    ! grep -qE '^ +LOAD .* RWE ' <<<"$segmente" || echo "no memory both to write and to run"
    grep -qE '^ +GNU_STACK .* RW ' <<<"$segmente" || echo "a stack that cannot be run"
    grep -q ' __stack_chk_fail\b' <<<"$zeichen" || echo "stack protector"
    grep -qE ' __\w+_chk@' <<<"$zeichen" || ! grep -qE " ($bewachbar)@" <<<"$zeichen" || echo "fortified calls"
}

# A program whose only fault is what the compiler is told last.
bemerken() { # LACK FLAG...
    local mangel=$1
    shift
    g++ -x c++ - -x none -o "$ordner/probe" -O2 -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fPIE -pie \
        -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack "$@" 2>/dev/null <<<'
        #include <cstring>
        #ifdef BEIDES
        __asm__(".pushsection beides, \"awx\", @progbits\n.byte 0\n.popsection");
        #endif
        int main(int anzahl, char** worte) { char text[8]; strcpy(text, worte[anzahl - 1]); return text[0]; }'
    [ "$(maengel "$ordner/probe")" = "$mangel" ] ||
        fehlschlag "with ${*:-nothing} it sees that \"$(maengel "$ordner/probe")\" is missing, not \"$mangel\""
}

bemerken ""
bemerken "PIE" -fno-pie -no-pie
bemerken "RELRO" -Wl,-z,norelro
bemerken "BIND_NOW" -Wl,-z,lazy
bemerken "a stack that cannot be run" -Wl,-z,execstack
bemerken "stack protector" -fno-stack-protector
bemerken "fortified calls" -U_FORTIFY_SOURCE
bemerken "no memory both to write and to run" -DBEIDES

if [ "$1" = --ordner ]; then
    gelegt=$2
else
    gelegt=$ordner/gelegt
    cmake --install "$1" --prefix "$gelegt" >/dev/null
fi
programme=$(find "$gelegt" -type f -exec sh -c 'head -c 4 "$1" | grep -q "^.ELF"' sh {} \; -print)
grep -q '/gamepad-konfic$' <<<"$programme" || fehlschlag "the program is not there"
while IFS= read -r programm; do
    mangel=$(maengel "$programm")
    [ -z "$mangel" ] || fehlschlag "$(basename "$programm") lacks: $(paste -sd, <<<"$mangel")"
done <<<"$programme"
exit $fehler
