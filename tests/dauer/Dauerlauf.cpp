// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Dauerlauf.h"

#include "store/files/Gamepadtabelle.h"
#include "tests/dauer/Prozesswerte.h"
#include "tests/hilfen/Dateien.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <regex>
#include <thread>

namespace {

constexpr double ANFANG = 0.1; // of the time, in which the program is killed, too
constexpr double ENDE = 0.92;
constexpr std::size_t MERKE = 40;
constexpr std::chrono::seconds WECKZEIT{1};

void schlafen(std::chrono::milliseconds dauer) {
    std::this_thread::sleep_for(dauer);
}

/// What a Schema of a long run has on its buttons; keys of all kinds, but no F4, which would close windows
/// with Alt.
std::string belegung(std::mt19937& zufall) {
    constexpr std::array<int, 14> CODES{65, 66, 87, 13, 16, 17, 18, 32, 37, 38, 39, 40, 112, 9};
    const auto taste = std::to_string(CODES[zufall() % CODES.size()]);
    switch (zufall() % 7) {
    case 0:
        return "3,0," + std::to_string(zufall() % 2) + "-0-0";
    case 1:
        return "4,0," + std::to_string(zufall() % 2) + "-0-0";
    case 2:
        return "5,0," + std::to_string(zufall() % 5) + "-0-0";
    case 3:
        return "1," + taste + ",1-20-30";
    default:
        return "1," + taste + ",0-0-0";
    }
}

std::string stickaktion(std::mt19937& zufall) {
    constexpr std::array<const char*, 8> AKTIONEN{"0,0,5,10",   "0,2,3,20",        "1,0", "1,3,120",
                                                  "2,0,87,0,0", "2,1,65,50,1,200", "5,1", "5,2,4,3"};
    return AKTIONEN[zufall() % AKTIONEN.size()];
}

/// The lines of a new stick and an action in each of its four outer fields.
std::string stickzeilen(const std::string& schema, std::mt19937& zufall) {
    constexpr std::array<const char*, 4> FELDER{"27072, 0, 0, 0", "0, 38399, 0, 0", "0, 0, 25941, 0",
                                                "0, 0, 0, 39679"};
    std::string sql;
    for (const char* zusatz : {"", "R"})
        for (int ebene = 0; ebene < 3; ++ebene)
            for (const char* feld : FELDER)
                sql += std::string("INSERT INTO tblStickAktion") + zusatz + " VALUES ('" + schema + "', " +
                       std::to_string(ebene) + ", " + feld + ", '" + stickaktion(zufall) + "');";
    return sql;
}

std::string schemazeilen(const std::string& schema, std::mt19937& zufall) {
    std::string spalten = "Schemaname";
    std::string werte = "'" + schema + "'";
    for (const int erste : {1, 101, 1001})
        for (int knopf = 0; knopf < 12; ++knopf) {
            spalten += ", btn" + std::to_string(erste + knopf);
            werte += ", '" + belegung(zufall) + "'";
        }
    return "INSERT INTO tblTastatur (" + spalten + ") VALUES (" + werte +
           "); INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('" + schema + "');" +
           stickzeilen(schema, zufall);
}

std::string ohneZahlen(std::string text) {
    std::ranges::replace_if(
        text, [](char zeichen) { return zeichen >= '0' && zeichen <= '9'; }, '#');
    return text;
}

bool passt(const std::string& ausgang, const std::string& erwartet) {
    return ausgang == erwartet || (erwartet == "exit" && ausgang.starts_with("exit "));
}

} // namespace

Dauerlauf::Dauerlauf(const std::filesystem::path& programm, double stunden, unsigned saat,
                     const std::string& weg)
    : ungestoert_(!weg.empty())
    , dauer_(stunden * 3600)
    , zeilenabstand_(std::clamp(dauer_ / 20, Sekunden(10), Sekunden(60)))
    , stoerabstand_(std::clamp(dauer_ / 60, Sekunden(3), Sekunden(30)))
    , zufall_(saat)
    , umgebung_(programm)
    , welt_(umgebung_.server.anzeige())
    , zug_(umgebung_.server.anzeige(), welt_, saat + 1, [this](const std::string& was) { merken(was); })
    , platz_{umgebung_, welt_, zufall_, nullptr, nullptr} {
    zug_.nur(weg);
    RoheVerbindung datenbank(umgebung_.datenbank().string());
    for (const char* schema : {"Alpha", "Beta", "Gamma"})
        datenbank.sql("BEGIN;" + schemazeilen(schema, zufall_) + "COMMIT;");
    std::printf("seed %u, %.2f h, disk of its own: %s\n", saat, stunden,
                umgebung_.platte.eigene() ? "yes" : "no, never full");
}

bool Dauerlauf::imLangenTeil() const {
    return ungestoert_ || (anteil() > ANFANG && anteil() < ENDE);
}

bool Dauerlauf::laufen() {
    anfang_ = naechsteStoerung_ = Uhr::now();
    naechsteZeile_ = anfang_ + std::chrono::duration_cast<Uhr::duration>(zeilenabstand_);
    std::printf("%6s %4s", "min", "life");
    for (const auto& groesse : MESSGROESSEN)
        std::printf(" %8s", groesse.name);
    std::printf(" %5s %5s %6s %6s %5s %5s %5s %s\n", "runs", "late", "latest", "steps", "plugs", "boxes",
                "bad", "faults");
    while (anteil() < 1) {
        try {
            dran_ = &programm_;
            if (!programm_)
                starten();
            stoeren();
            if (!programm_)
                continue;
            if (Uhr::now() > naechsteZeile_ && !stoerung_)
                messen();
            spielen();
        } catch (const Gegangen&) {
            gegangen(*dran_, "exit 0");
        } catch (const Stumm&) {
            stumm(*dran_);
        }
        std::fflush(stdout);
    }
    beenden();
    return schlussworte();
}

// --- the program ---

void Dauerlauf::starten() {
    ++leben_;
    merken("== start");
    programm_ = std::make_unique<Fernsteuerung>(umgebung_, "erstes");
    auto stand = programm_->stand();
    for (int versuch = 0; versuch < 50 && stand.fenster.empty(); ++versuch) {
        schlafen(std::chrono::milliseconds{100});
        stand = programm_->stand();
    }
    if (stand.fenster.empty())
        vorfall(&Vorfaelle::verweigerte, "start: no window after 5 s");
    programm_->befehl("pad 1");
}

void Dauerlauf::zweitesStarten() {
    ++zweite_;
    merken("== second copy");
    dran_ = &zweites_;
    zweites_ = std::make_unique<Fernsteuerung>(umgebung_, "zweites");
    zweitesBis_ = Uhr::now() + std::chrono::seconds(zug_.zufall(4, 15));
    zweites_->befehl("pad 1");
}

void Dauerlauf::zweitesBeenden() {
    merken("== second copy is ended");
    dran_ = &zweites_;
    zweites_->senden(SIGTERM);
    gegangen(zweites_, "exit 0");
    dran_ = &programm_;
}

void Dauerlauf::spielen() {
    zug_.auchHauptform(!imLangenTeil());
    if (zweites_ && Uhr::now() > zweitesBis_)
        return zweitesBeenden();
    if (!ungestoert_ && !zweites_ && zug_.zufall(1, 40) == 1)
        return zweitesStarten();
    dran_ = zweites_ && zug_.zufall(0, 1) == 0 ? &zweites_ : &programm_;
    zug_.tun(**dran_);
    protokollLesen(**dran_);
}

/// The process has ended, or is about to; as it was to end or otherwise.
void Dauerlauf::gegangen(std::unique_ptr<Fernsteuerung>& programm, const std::string& erwartet) {
    const auto ausgang = programm ? programm->ausgang() : "no start";
    if (programm)
        protokollLesen(*programm);
    if (ausgang.empty())
        vorfall(&Vorfaelle::haenger, "does not end, expected " + erwartet);
    else if (!passt(ausgang, erwartet))
        vorfall(&Vorfaelle::abstuerze, "ended by " + ausgang + ", expected " + erwartet);
    merken("== ended by " + ausgang);
    programm.reset();
    // What the other copy plays, that one holds.
    if (!programm_ && !zweites_)
        nichtsGehalten();
    dateienPruefen();
}

void Dauerlauf::stumm(std::unique_ptr<Fernsteuerung>& programm) {
    if (programm) {
        vorfall(&Vorfaelle::haenger, "no answer within 5 s");
        programm->senden(SIGABRT);
        gegangen(programm, "signal 6");
        return;
    }
    vorfall(&Vorfaelle::verweigerte, "no answer after the start");
}

void Dauerlauf::nichtsGehalten() {
    auto gehaltene = welt_.gehaltene();
    for (int versuch = 0; versuch < 50 && !gehaltene.empty(); ++versuch) {
        schlafen(std::chrono::milliseconds{10});
        gehaltene = welt_.gehaltene();
    }
    if (gehaltene.empty())
        return;
    std::string alle;
    for (const auto& eines : gehaltene)
        alle += " " + eines;
    vorfall(&Vorfaelle::haengende, "held after the end:" + alle);
    welt_.loslassen();
}

void Dauerlauf::dateienPruefen() {
    if (platz_.sperre)
        return; // by ourselves
    try {
        RoheVerbindung datenbank(umgebung_.datenbank().string());
        datenbank.sql("PRAGMA busy_timeout = 2000");
        const auto befund = datenbank.zeilen("PRAGMA integrity_check");
        if (befund != Tabellenbild{{"ok"}})
            vorfall(&Vorfaelle::schaeden, "Belegung.twk: " + befund.at(0).at(0));
    } catch (const std::runtime_error& fehler) {
        vorfall(&Vorfaelle::schaeden, std::string("Belegung.twk: ") + fehler.what());
    }
    if (std::filesystem::exists(umgebung_.gamepadXml()) && !gamepadAusXml(dateiLesen(umgebung_.gamepadXml())))
        vorfall(&Vorfaelle::schaeden, "Gamepad.xml does not parse");
}

void Dauerlauf::beenden() {
    stoerungEnden();
    try {
        if (zweites_)
            zweitesBeenden();
        dran_ = &programm_;
        if (!programm_)
            starten();
        messen();
        programm_->senden(SIGTERM);
        gegangen(programm_, "exit 0");
    } catch (const Gegangen&) {
        gegangen(*dran_, "exit 0");
    } catch (const Stumm&) {
        stumm(*dran_);
    }
}

// --- faults ---

const Stoerung& Dauerlauf::naechste() {
    const bool toedlich = !imLangenTeil() && anteil() > ANFANG / 4 && gestoert_ % 2 == 1;
    const auto& reihe = toedlich ? toedliche() : stoerungen();
    auto& stelle = toedlich ? getoetet_ : gestoert_;
    if (toedlich)
        ++gestoert_;
    return reihe[stelle++ % reihe.size()];
}

void Dauerlauf::stoeren() {
    if (ungestoert_ || Uhr::now() < naechsteStoerung_)
        return;
    if (stoerung_)
        return stoerungEnden();
    const auto& stoerung = naechste();
    ++stoerungszahl_[stoerung.name];
    merken(std::string("== fault: ") + stoerung.name);
    platz_.programm = programm_.get();
    stoerung.beginnen(platz_);
    if (stoerung.ende) {
        gegangen(programm_, stoerung.ende);
        naechsteStoerung_ = Uhr::now() + std::chrono::duration_cast<Uhr::duration>(stoerabstand_);
        return;
    }
    stoerung_ = &stoerung;
    naechsteStoerung_ = Uhr::now() + std::chrono::milliseconds(zug_.zufall(1000, 5000));
}

void Dauerlauf::stoerungEnden() {
    if (!stoerung_)
        return;
    merken(std::string("== mended: ") + stoerung_->name);
    const auto& stoerung = *stoerung_;
    stoerung_ = nullptr;
    naechsteStoerung_ = Uhr::now() + std::chrono::duration_cast<Uhr::duration>(stoerabstand_);
    platz_.programm = programm_.get();
    stoerung.beenden(platz_);
}

// --- what is told ---

void Dauerlauf::merken(const std::string& was) {
    std::array<char, 24> zeit{};
    std::snprintf(zeit.data(), zeit.size(), "%8.2f s ", Sekunden(Uhr::now() - anfang_).count());
    letzte_.push_back(zeit.data() + was);
    if (letzte_.size() > MERKE)
        letzte_.pop_front();
}

void Dauerlauf::vorfall(int Vorfaelle::*art, const std::string& was) {
    ++(vorfaelle_.*art);
    std::printf("!! %s\n", was.c_str());
    for (const auto& eines : letzte_)
        std::printf("      %s\n", eines.c_str());
    letzte_.clear();
}

void Dauerlauf::protokollLesen(Fernsteuerung& programm) {
    static const std::regex ENDE_EINES_LAUFS(
        "gamepad.zeit: Lauf zu Ende: ([0-9]+) .*, der späteste ([0-9]+) ms");
    for (const auto& zeile : programm.protokoll()) {
        std::smatch treffer;
        if (!std::regex_search(zeile, treffer, ENDE_EINES_LAUFS)) {
            ++fremdeZeilen_[ohneZahlen(zeile)];
            continue;
        }
        ++laeufe_;
        spaete_ += std::stoi(treffer[1]);
        spaeteste_ = std::max(spaeteste_, std::stoi(treffer[2]));
    }
}

void Dauerlauf::messen() {
    if (zweites_)
        zweitesBeenden();
    dran_ = &programm_;
    naechsteZeile_ = Uhr::now() + std::chrono::duration_cast<Uhr::duration>(zeilenabstand_);
    if (!zug_.ruhen(*programm_)) {
        std::string offene;
        for (const auto& fenster : programm_->stand().fenster)
            offene += " " + fenster.name + " (" + fenster.text + ")";
        return vorfall(&Vorfaelle::unruhen, "does not come to rest:" + offene);
    }
    schlafen(std::chrono::milliseconds{600}); // what is to be deleted later is
    programm_->befehl("leeren");
    const long schlaf = schlafzahl(programm_->kennung());
    schlafen(WECKZEIT);
    const long weckrufe = schlafzahl(programm_->kennung()) - schlaf;
    const auto stand = programm_->stand();
    const auto werte = prozesswerte(programm_->kennung());
    const auto* haupt = stand.offenes("frmHaupt");
    Messzeile zeile{Sekunden(Uhr::now() - anfang_).count() / 3600, leben_, {}};
    const auto setzen = [&](Groesse groesse, double wert) {
        zeile.werte.at(static_cast<std::size_t>(groesse)) = wert;
    };
    setzen(Groesse::Rss, static_cast<double>(werte.rss));
    setzen(Groesse::Eigen, static_cast<double>(werte.eigen));
    setzen(Groesse::Heap, stand.heap / 1024);
    setzen(Groesse::Dateien, static_cast<double>(werte.dateien));
    setzen(Groesse::Uhren, static_cast<double>(werte.uhren));
    setzen(Groesse::Faeden, static_cast<double>(werte.faeden));
    setzen(Groesse::Zeitgeber, stand.zeitgeber);
    setzen(Groesse::Widgets, stand.widgets);
    setzen(Groesse::Weckrufe, static_cast<double>(weckrufe) / static_cast<double>(WECKZEIT.count()));
    setzen(Groesse::XFenster, haupt ? welt_.fensterzahl(haupt->kennung) : 0);
    setzen(Groesse::XServer, static_cast<double>(prozesswerte(umgebung_.server.kennung()).rss));
    zeilen_.push_back(zeile);
    protokollLesen(*programm_);
    zeileDrucken(zeile);
}

void Dauerlauf::zeileDrucken(const Messzeile& zeile) {
    std::printf("%6.1f %4d", zeile.stunden * 60, zeile.leben);
    for (const double wert : zeile.werte)
        std::printf(" %8.0f", wert);
    int boxen = 0;
    for (const auto& [text, anzahl] : zug_.boxen())
        boxen += anzahl;
    const auto& v = vorfaelle_;
    std::printf(" %5d %5d %6d %6d %5d %5d %5d %zu\n", laeufe_, spaete_, spaeteste_, zug_.griffe(),
                zug_.stecker(), boxen,
                v.abstuerze + v.haenger + v.unruhen + v.haengende + v.schaeden + v.verweigerte, gestoert_);
    spaete_ = spaeteste_ = 0;
}

bool Dauerlauf::schlussworte() {
    const auto liste = [](const char* kopf, const std::map<std::string, int>& zahlen) {
        std::printf("%s\n", kopf);
        for (const auto& [was, anzahl] : zahlen)
            std::printf("  %5d  %s\n", anzahl, was.c_str());
    };
    liste("ways", zug_.wege());
    std::printf("  %5d  second copies\n", zweite_);
    liste("grips that found nothing", zug_.vergebliche());
    liste("faults", stoerungszahl_);
    liste("boxes", zug_.boxen());
    liste("other lines on stderr", fremdeZeilen_);
    bool gut = true;
    std::printf("verdict\n");
    for (const auto& befund : urteilen(zeilen_, vorfaelle_)) {
        std::printf("  %s %s\n", befund.verstoss ? "BAD" : "ok ", befund.text.c_str());
        gut = gut && !befund.verstoss;
    }
    std::printf("%s\n", gut ? "GOOD" : "BAD");
    return gut;
}
