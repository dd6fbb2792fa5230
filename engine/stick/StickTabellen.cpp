#include "engine/stick/StickTabellen.h"

#include "formats/Aktionsliste.h"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace {

constexpr std::array<const char*, RICHTUNGEN> RICHTUNGSNAMEN{"Links", "Rechts", "Oben", "Unten"};

class Leser {
public:
    Leser(Database& datenbank, const std::string& schemaName, Stickseite seite, int Umschalt)
        : datenbank_(datenbank)
        , schemaName_(schemaName)
        , zusatz_(tabellenzusatz(seite))
        , Umschalt_(Umschalt) {}

    Sticktabellen lesen() {
        datenbank_.inEinemLesezug([&] {
            tabellen_.StickAktionen = aktionen();
            linien();
        });
        return std::move(tabellen_);
    }

private:
    std::string aktionen() {
        const std::string tabelle = "tblStickAktion" + zusatz_;
        auto satz = datenbank_.OpenRecordset(
            anweisung("SELECT * FROM " + tabelle + " WHERE (" + tabelle + ".Schemaname)= '", schemaName_,
                      "' AND (" + tabelle + ".Umschalt)= " + std::to_string(Umschalt_) +
                          " Order by tblstickAktion" + zusatz_ + ".Links;"));
        std::string liste;
        for (; !satz.get_EOF(); satz.MoveNext()) {
            std::string schluessel;
            for (const char* richtung : RICHTUNGSNAMEN)
                schluessel += alsText(satz.get_Value(richtung));
            eintragAnhaengen(liste, schluessel, alsText(satz.get_Value("Aktion")));
        }
        return liste;
    }

    void linien() {
        std::array<std::string, RICHTUNGEN> gesammelt;
        for (int i = 1; i <= ZEILEN_JE_STICK; ++i) {
            const auto satz = zeile(i);
            tabellen_.zeilenFehlen |= satz.get_EOF();
            if (i == ZEILEN_JE_STICK) // holds no lines
                tabellen_.StickSperre = satz.get_EOF() ? 0 : linienwert(satz.get_Value("Links"));
            else if (!linienEinerZeile(satz, i, gesammelt))
                i = ZEILEN_JE_STICK - 1; // rows behind the first empty one are never read
        }
        for (std::size_t richtung = 0; richtung < RICHTUNGSNAMEN.size(); ++richtung)
            tabellen_.StickLinien[richtung] = linienliste(gesammelt[richtung]);
    }

    // Whether the row holds any line in this layer.
    bool linienEinerZeile(const Recordset& satz, int index,
                          std::array<std::string, RICHTUNGEN>& gesammelt) const {
        bool eine = false;
        for (std::size_t richtung = 0; richtung < RICHTUNGSNAMEN.size(); ++richtung) {
            const auto wert = satz.get_EOF() ? grundlinie(index, richtung) : linie(satz, richtung);
            if (wert == 0)
                continue; // leaves no gap: the lines of a direction close up
            linieAnhaengen(gesammelt[richtung], wert);
            eine = true;
        }
        return eine;
    }

    std::int64_t linie(const Recordset& satz, std::size_t richtung) const {
        return alsZahl(satz.get_Value(std::string(RICHTUNGSNAMEN[richtung]) + ebenenendung(Umschalt_)));
    }

    // What stands in a row of a new stick.
    static std::int64_t grundlinie(int index, std::size_t richtung) {
        return index == 1 ? GRUNDLINIEN[richtung] : 0;
    }

    Recordset zeile(int index) {
        const std::string tabelle = "tblStick" + zusatz_;
        return datenbank_.OpenRecordset(
            anweisung("Select * from " + tabelle + " Where (" + tabelle + ".Schemaname) = '", schemaName_,
                      "' and (" + tabelle + ".Index) = " + std::to_string(index) + ";"));
    }

    Database& datenbank_;
    const std::string& schemaName_;
    std::string zusatz_;
    int Umschalt_;
    Sticktabellen tabellen_;
};

} // namespace

const char* ebenenendung(int Umschalt) {
    switch (Umschalt) {
    case 1:
        return "2";
    case 2:
        return "3";
    default:
        return "";
    }
}

Sticktabellen StickTabellenLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                                 int Umschalt) {
    return Leser(datenbank, schemaName, seite, Umschalt).lesen();
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
