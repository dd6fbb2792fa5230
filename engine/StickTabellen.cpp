#include "engine/StickTabellen.h"

#include "engine/Felder.h"

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
        if (!gelesen()) {
            auto satz = zeile(1);
            StickGrundzeilenAnlegen(datenbank_, satz, schemaName_);
            if (!gelesen())
                throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz, "Kein aktueller Datensatz.");
        }
        return std::move(tabellen_);
    }

private:
    // False when a row is missing: rows can't be laid while reading, so the reading starts anew after that.
    bool gelesen() {
        bool vollstaendig = false;
        datenbank_.inEinemLesezug([&] {
            tabellen_.StickAktionen = aktionen();
            vollstaendig = linien();
        });
        return vollstaendig;
    }

    std::string aktionen() {
        const std::string tabelle = "tblStickAktion" + zusatz_;
        auto satz = datenbank_.OpenRecordset(
            anweisung("SELECT * FROM " + tabelle + " WHERE (" + tabelle + ".Schemaname)= '", schemaName_,
                      "' AND (" + tabelle + ".Umschalt)= " + std::to_string(Umschalt_) +
                          " Order by tblstickAktion" + zusatz_ + ".Links;"));
        if (satz.get_EOF())
            return "";
        std::string text;
        for (; !satz.get_EOF(); satz.MoveNext()) {
            text += ';';
            for (const char* richtung : RICHTUNGSNAMEN)
                text += alsText(satz.get_Value(richtung));
            text += '+' + alsText(satz.get_Value("Aktion"));
        }
        return text + ';';
    }

    bool linien() {
        std::array<std::string, RICHTUNGEN> gesammelt;
        for (int i = 1; i <= ZEILEN_JE_STICK; ++i) {
            const auto satz = zeile(i);
            if (satz.get_EOF())
                return false;
            if (i == ZEILEN_JE_STICK) // holds no lines
                tabellen_.StickSperre = linienwert(satz.get_Value("Links"));
            else if (!linienEinerZeile(satz, gesammelt))
                i = ZEILEN_JE_STICK - 1; // rows behind the first empty one are never read
        }
        for (std::size_t richtung = 0; richtung < RICHTUNGSNAMEN.size(); ++richtung)
            tabellen_.StickLinien[richtung] = linienliste(gesammelt[richtung]);
        return true;
    }

    // Whether the row holds any line in this layer.
    bool linienEinerZeile(const Recordset& satz, std::array<std::string, RICHTUNGEN>& gesammelt) const {
        bool eine = false;
        for (std::size_t richtung = 0; richtung < RICHTUNGSNAMEN.size(); ++richtung) {
            const auto wert =
                alsZahl(satz.get_Value(std::string(RICHTUNGSNAMEN[richtung]) + ebenenendung(Umschalt_)));
            if (wert == 0)
                continue; // leaves no gap: the lines of a direction close up
            gesammelt[richtung] += std::to_string(wert) + ';';
            eine = true;
        }
        return eine;
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

std::optional<std::int32_t> zahlOderNichts(const std::string& text) {
    try {
        return feldzahl(std::string_view(text));
    } catch (const LaufzeitFehler&) {
        return std::nullopt;
    }
}

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

Linie::Linie(std::string text) : text_(std::move(text)), wert_(zahlOderNichts(text_)) {}

// Reads the text once more, for what is wrong with it.
std::int32_t Linie::keineLinie() const {
    try {
        return feldzahl(std::string_view(text_));
    } catch (const LaufzeitFehler& fehler) {
        throw LaufzeitFehler(fehler.nummer(), std::string("Linie des Sticks: ") + fehler.what());
    }
}

Linienliste linienliste(std::string_view gesammelt) {
    Linienliste liste;
    // At most one piece less than there are characters: that is one for "5;".
    const std::size_t grenze = gesammelt.empty() ? 0 : gesammelt.size() - 1;
    while (liste.size() < grenze) {
        const auto ende = gesammelt.find(';');
        const bool letztes = ende == std::string_view::npos || liste.size() + 1 == grenze;
        liste.emplace_back(std::string(letztes ? gesammelt : gesammelt.substr(0, ende)));
        if (letztes)
            break;
        gesammelt.remove_prefix(ende + 1);
    }
    return liste;
}

Sticktabellen StickTabellenLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                                 int Umschalt) {
    return Leser(datenbank, schemaName, seite, Umschalt).lesen();
}

Database& Stickdatenbank::offen(const std::string& pfad) {
    if (!datenbank_ || pfad_ != pfad) {
        datenbank_.emplace(OpenDatabase(pfad));
        pfad_ = pfad;
    }
    return *datenbank_;
}
