// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what runs have counted, on the disk and beside the event loop: the main form comes back at once.
#pragma once

#include "editors/common/Nebenarbeit.h"
#include "engine/run/Streuzaehler.h"

#include <QObject>

struct GobalVariable;

class Streuschreiber final : public QObject, public Streuablage {
    Q_OBJECT

public:
    /// `global` is asked for the database when a run ends.
    explicit Streuschreiber(const GobalVariable& global);

    /// Adds it to the files of the `Schema`, if that is still there. A failure is told, once until it goes
    /// again.
    void ablegen(const std::string& schemaName, std::vector<Streulauf> laeufe) override;
    void abwarten() override { schreiber_.ausarbeiten(); }
    /// The `Schema` is deleted: also what was still being written goes.
    void schemaVergessen(const std::string& schemaName);

private:
    void melden(bool gelungen);

    const GobalVariable& global_;
    bool gesagt_ = false;
    Nebenarbeit schreiber_{nullptr};
};
