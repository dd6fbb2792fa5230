// SPDX-License-Identifier: GPL-3.0-or-later
// The mark of a run as a lock on a file that all copies of one user find, whatever their data folders are.
//
// Who runs has a shared lock. Whether another one has, too, shows by asking what would stand against an
// exclusive lock, after the own one is laid: of two copies that start at once each sees the other. The file
// is empty and stays where it is; a lock goes with its descriptor, so a dead process has none.
#pragma once

#include "platform/Laufmarke.h"

#include <string>

class Dateimarke final : public Laufmarke {
public:
    explicit Dateimarke(std::string pfad);
    ~Dateimarke() override;

    bool setzen() override;
    void loesen() override;

    /// Where the copies of this user look: in $XDG_RUNTIME_DIR, else in /tmp under a name of this user's.
    static std::string pfad();

private:
    const std::string pfad_;
    int datei_ = -1;
};
