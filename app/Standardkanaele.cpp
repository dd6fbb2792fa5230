// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Standardkanaele.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

void standardkanaeleSichern() {
    int kanal = 0;
    do // the lowest number that is free
        kanal = open("/dev/null", O_RDWR);
    while (kanal >= 0 && kanal <= STDERR_FILENO);
    if (kanal >= 0)
        close(kanal);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
