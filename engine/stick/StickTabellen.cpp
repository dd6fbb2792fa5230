// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/stick/StickTabellen.h"

#include "store/schema/StickLaufLesen.h"
#include "store/schema/modLesen.h"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

Sticktabellen StickTabellenLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                                 int Umschalt) {
    auto bild = StickLaufLesen(datenbank, schemaName, seite, Umschalt);
    Sticktabellen tabellen;
    for (std::size_t richtung = 0; richtung < bild.linien.size(); ++richtung)
        tabellen.StickLinien[richtung] = linienliste(bild.linien[richtung]);
    tabellen.StickAktionen = std::move(bild.aktionen);
    tabellen.StickSperre = bild.StickSperre;
    tabellen.zeilenFehlen = bild.zeilenFehlen;
    return tabellen;
}

namespace {

std::int64_t inNanosekunden(const timespec& zeit) {
    constexpr std::int64_t JE_SEKUNDE = 1'000'000'000;
    return std::int64_t{zeit.tv_sec} * JE_SEKUNDE + zeit.tv_nsec;
}

} // namespace

Stickdatenbank::Kennung Stickdatenbank::kennungVon(const std::string& pfad) {
    struct stat stand {};
    if (stat(pfad.c_str(), &stand) != 0)
        return {};
    return {stand.st_dev, stand.st_ino, inNanosekunden(stand.st_mtim)};
}

void Stickdatenbank::laufBeginnt() {
    // Writes of this program change the time, too: to open the same file once more does no harm.
    const bool ersetzt = kennung_ != kennungVon(pfad_);
    // A file that could only be read when it was opened can only be read through this connection for ever.
    const bool scheiterte = std::ranges::any_of(ungelegt_, [](const auto& fehler) { return !!fehler; });
    if (ersetzt || scheiterte)
        datenbank_.reset();
    ungelegt_ = {};
}

Database& Stickdatenbank::offen(const std::string& pfad) {
    if (!datenbank_ || pfad_ != pfad) {
        datenbank_.reset();
        kennung_ = kennungVon(pfad);
        datenbank_.emplace(OpenDatabase(pfad));
        datenbank_->ohneVorlauf();
        pfad_ = pfad;
    }
    return *datenbank_;
}

Sticktabellen Stickdatenbank::tabellen(const std::string& pfad, const std::string& schemaName,
                                       Stickseite seite, int Umschalt) {
    Database& datenbank = offen(pfad);
    auto tabellen = StickTabellenLesen(datenbank, schemaName, seite, Umschalt);
    auto& ungelegt = ungelegt_[static_cast<std::size_t>(seite)];
    // One try a run: the next change of layer has no time to wait for a locked file again.
    if (tabellen.zeilenFehlen && !ungelegt)
        try {
            StickGrundzeilenAnlegen(datenbank, seite, schemaName);
        } catch (const LaufzeitFehler& fehler) {
            ungelegt = fehler;
        }
    return tabellen;
}
