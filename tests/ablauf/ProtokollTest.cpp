// SPDX-License-Identifier: GPL-3.0-or-later
// The log: what each category tells on the real platform with a virtual pad, and that nobody hears anything
// who has not asked for it.
#include "app/Protokoll.h"
#include "tests/ablauf/Ablauf.h"
#include "tests/ablauf/Programmprozess.h"
#include "tests/hilfen/Dateien.h"

#include <QLibraryInfo>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QTimer>
#include <gmock/gmock.h>

#include <fcntl.h>
#include <fstream>
#include <regex>
#include <thread>

#include <X11/Xlib.h> // its macros come last
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

using Zeilen = std::vector<std::string>;
Zeilen gehoerte; // of the categories of this program

void hoeren(QtMsgType, const QMessageLogContext& woher, const QString& text) {
    if (QByteArray(woher.category).startsWith("gamepad."))
        gehoerte.push_back(std::string(woher.category) + ": " + text.toStdString());
}

class Protokoll : public Ablauf {
protected:
    Protokoll() : vorher_(qInstallMessageHandler(hoeren)) { gehoerte.clear(); }
    ~Protokoll() override {
        beenden();
        qInstallMessageHandler(vorher_);
        QLoggingCategory::setFilterRules("");
    }
    static void aufdrehen(const QString& kategorie) { QLoggingCategory::setFilterRules(kategorie + "=true"); }
    Zeilen neues() const { return std::exchange(gehoerte, {}); }

private:
    const QtMessageHandler vorher_;
};

/// How many windows the X server shows, of all or of those with a title.
int sichtbareFenster(const std::string& titel = "") {
    auto* anzeige = XOpenDisplay(nullptr);
    XGrabServer(anzeige); // none goes while it is looked at
    Window wurzel = 0;
    Window eltern = 0;
    Window* alle = nullptr;
    unsigned anzahl = 0;
    XQueryTree(anzeige, DefaultRootWindow(anzeige), &wurzel, &eltern, &alle, &anzahl);
    int sichtbare = 0;
    for (unsigned i = 0; i < anzahl; ++i) {
        XWindowAttributes angaben{};
        char* name = nullptr;
        XFetchName(anzeige, alle[i], &name);
        sichtbare += XGetWindowAttributes(anzeige, alle[i], &angaben) != 0 &&
                     angaben.map_state == IsViewable && (titel.empty() || (name && titel == name));
        if (name)
            XFree(name);
    }
    XFree(alle);
    XCloseDisplay(anzeige);
    return sichtbare;
}

void klicken(QPoint ort) {
    auto* anzeige = XOpenDisplay(nullptr);
    XTestFakeMotionEvent(anzeige, -1, ort.x(), ort.y(), CurrentTime);
    for (const int unten : {True, False})
        XTestFakeButtonEvent(anzeige, 1, unten, CurrentTime);
    XCloseDisplay(anzeige);
}

/// The program as a process; what it writes to its standard error output.
class Fehlerausgabe : public ::testing::Test {
protected:
    /// `inzwischen` happens while it is open.
    std::string nachStartUndEnde(
        const std::function<void()>& vorbereiten, const std::string& qtConf = "",
        const std::function<void()>& inzwischen = [] {}) {
        const auto datei = ordner_.pfad() / "stderr";
        Programmprozess prozess(datenbank_.ordner(), [&](const std::filesystem::path& programmordner) {
            if (!qtConf.empty())
                std::ofstream(programmordner / "qt.conf") << qtConf;
            const int nummer = open(datei.c_str(), O_WRONLY | O_CREAT, 0600);
            dup2(nummer, STDERR_FILENO);
            setenv("XDG_RUNTIME_DIR", ordner_.pfad().c_str(), 1);
            setenv("LC_ALL", "C.UTF-8", 1);
            setenv("QT_FORCE_STDERR_LOGGING", "1", 1);
            unsetenv("QT_LOGGING_RULES");
            vorbereiten();
        });
        EXPECT_TRUE(prozess.nimmtAn(SIGTERM));
        inzwischen();
        prozess.senden(SIGTERM);
        EXPECT_EQ(prozess.ausgang(), "exit 0");
        return dateiLesen(datei);
    }
    /// Where "Schema starten" stands on the screen: a process lays its form where this one does.
    QPoint schemaStarten() const {
        std::filesystem::current_path(datenbank_.ordner());
        Systemplattform system;
        auto plattform = system.plattform();
        plattform.gamepadXml = (ordner_.pfad() / "Gamepad.xml").string();
        Programm programm(plattform);
        programm.starten();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&programm.hauptform()));
        const auto* knopf = programm.hauptform().findChild<QPushButton*>("Command1(5)");
        std::filesystem::current_path("/");
        return knopf->mapToGlobal(knopf->rect().center());
    }
    Testordner ordner_;
    Testdatenbank datenbank_;
};

} // namespace

TEST_F(Protokoll, EsSchweigtWennNiemandFragt) {
    std::ofstream(datenbank_.ordner() / "gamecontrollerdb.txt") << "Gerede\n";
    starten(Schemabau(datenbank_));
    laeufeProtokollieren(programm_->laufsteuerung(), system_->zeitgeber());
    pad_.reset();
    takte(2);
    umschalten();
    EXPECT_THAT(neues(), IsEmpty());
}

TEST_F(Protokoll, DasPadWirdGenanntWennEsKommtUndGeht) {
    aufdrehen("gamepad.pad");
    starten(Schemabau(datenbank_));
    const std::string name = "„" + std::string(SDL_JoystickNameForIndex(0)) + "“";
    EXPECT_THAT(neues(), ElementsAre(AllOf(StartsWith("gamepad.pad: Gamepad da: " + name + ", GUID "),
                                           HasSubstr(", Zuordnung ")),
                                     "gamepad.pad: in Gebrauch: " + name + ", 1 von 1"));
    pad_.reset();
    takte(2);
    EXPECT_THAT(neues(),
                ElementsAre("gamepad.pad: Gamepad weg: " + name, "gamepad.pad: kein Gamepad in Gebrauch"));
    pad_.emplace();
    takte(2);
    EXPECT_EQ(neues().size(), 2U);
}

TEST_F(Protokoll, DieListeDesBenutzersWirdMitIhrenFehlernGenannt) {
    aufdrehen("gamepad.pad");
    std::ofstream(datenbank_.ordner() / "gamecontrollerdb.txt")
        << "# Pads\nGerede\n03000000c0de00000100000000000000,Pad,a:b0,\n";
    std::filesystem::current_path(datenbank_.ordner());
    programmStarten();
    const auto alle = neues();
    ASSERT_GE(alle.size(), 2U);
    EXPECT_EQ(alle[0], "gamepad.pad: gamecontrollerdb.txt Zeile 2 ausgelassen: sie beginnt nicht mit einer "
                       "Kennung aus 32 Hexadezimalziffern: Gerede");
    EXPECT_EQ(alle[1], "gamepad.pad: gamecontrollerdb.txt Zeilen übernommen: 1");
    EXPECT_EQ(system_->padliste().fehler.size(), 1U);
}

TEST_F(Protokoll, DieGewaehlteEingabeWirdGenanntUndWarumDieAnderenNichtDienen) {
    aufdrehen("gamepad.eingabe");
    starten(Schemabau(datenbank_));
    EXPECT_THAT(neues(),
                ElementsAre("gamepad.eingabe: dient nicht: uinput: Der X-Server liest keine Geräte des Kerns",
                            "gamepad.eingabe: gewählt: XTest"));
}

TEST_F(Protokoll, AmEndeEinesLaufsStehtWieVieleZeitgeberInIhmZuSpaetKamen) {
    aufdrehen("gamepad.zeit");
    starten(Schemabau(datenbank_)); // this run is not told of: the log listens from the next one on
    umschalten();
    laeufeProtokollieren(programm_->laufsteuerung(), system_->zeitgeber());
    const std::regex zeile("gamepad.zeit: Lauf zu Ende: ([0-9]+) Aufrufe mehr als 20 ms zu spät, "
                           "der späteste ([0-9]+) ms");
    // The number of late calls of a run that is held up for so long, and how late the latest was.
    const auto lauf = [&](std::chrono::milliseconds aufgehalten) {
        umschalten();
        takte(2);
        std::this_thread::sleep_for(aufgehalten);
        takte(2);
        umschalten();
        const auto alle = neues();
        std::smatch teile;
        EXPECT_EQ(alle.size(), 1U);
        if (alle.empty() || !std::regex_match(alle.back(), teile, zeile))
            throw std::runtime_error("no such line");
        return std::pair(std::stoi(teile[1]), std::stoi(teile[2]));
    };
    const auto [lange, spaetesterLange] = lauf(std::chrono::milliseconds{300});
    EXPECT_GE(lange, 1);
    EXPECT_GE(spaetesterLange, 290);
    const auto [kurze, spaetesterKurze] = lauf(std::chrono::milliseconds{50});
    EXPECT_GE(kurze, 1);
    EXPECT_GE(spaetesterKurze, 40);
    EXPECT_LT(spaetesterKurze, 290); // the first run's do not count
}

TEST_F(Protokoll, EinLaufDerNichtBeginntHatKeinEnde) {
    aufdrehen("gamepad.zeit");
    starten(Schemabau(datenbank_));
    umschalten();
    laeufeProtokollieren(programm_->laufsteuerung(), system_->zeitgeber());
    std::filesystem::remove(datenbank_.pfad());
    int boxen = 0;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            ++boxen;
            box->accept();
        }
    });
    takt.start(0);
    umschalten();
    EXPECT_EQ(boxen, 1);
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_THAT(neues(), IsEmpty());
}

TEST_F(Protokoll, DerVerlustDerEchtzeitStehtAufDerFehlerausgabe) {
    starten(Schemabau(datenbank_));
    auto plattform = system_->plattform();
    const bool gewaehrt = plattform.prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
    const auto datei = datenbank_.ordner() / "stderr";
    const int vorherige = dup(STDERR_FILENO);
    dup2(open(datei.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
    const auto ohnePause = [&] {
        laeufeProtokollieren(programm_->laufsteuerung(), system_->zeitgeber());
        plattform.prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
        const auto beginn = std::chrono::steady_clock::now();
        while (std::chrono::steady_clock::now() - beginn < std::chrono::milliseconds{300}) {
        }
        return dateiLesen(datei);
    };
    EXPECT_EQ(ohnePause(), "");
    aufdrehen("gamepad.zeit");
    EXPECT_EQ(ohnePause(),
              gewaehrt ? "gamepad.zeit: Echtzeit abgegeben, es wurde ohne Pause gerechnet\n" : "");
    dup2(vorherige, STDERR_FILENO);
}

TEST_F(Fehlerausgabe, DasProgrammSchreibtNichts) {
    EXPECT_EQ(nachStartUndEnde([] {}), "");
}

// The copy of the program lies alone, without its watcher.
TEST_F(Fehlerausgabe, QtLoggingRulesDrehtDasProtokollAuf) {
    std::ofstream(datenbank_.ordner() / "gamecontrollerdb.txt") << std::string("\xFF");
    EXPECT_EQ(nachStartUndEnde([] { setenv("QT_LOGGING_RULES", "gamepad.*=true", 1); }),
              "gamepad.eingabe: dient nicht: uinput: Der X-Server liest keine Geräte des Kerns\n"
              "gamepad.eingabe: gewählt: XTest\n"
              "gamepad.pad: gamecontrollerdb.txt wird nicht benutzt: sie ist kein Text in UTF-8 (Zeile 1)\n"
              "gamepad.eingabe: Der Tastenwächter startet nicht\n");
}

TEST_F(Fehlerausgabe, WerSieNichtLiestHaeltDasProgrammNichtAuf) {
    std::array<int, 2> rohr{};
    ASSERT_EQ(pipe2(rohr.data(), O_NONBLOCK | O_CLOEXEC), 0);
    const std::array<char, 4096> seite{};
    while (write(rohr[1], seite.data(), seite.size()) > 0) {
    }
    fcntl(rohr[1], F_SETFL, 0); // as a program has it
    EXPECT_EQ(nachStartUndEnde([&] {
                  dup2(rohr[1], STDERR_FILENO);
                  setenv("QT_LOGGING_RULES", "gamepad.*=true", 1);
              }),
              "");
    close(rohr[0]);
    close(rohr[1]);
}

TEST_F(Fehlerausgabe, DasProgrammErzaehltVonSeinenLaeufen) {
    Schemabau(datenbank_).anlegen();
    const auto ort = schemaStarten();
    const auto laufen = [&] {
        EXPECT_TRUE(Programmprozess::warten([] { return sichtbareFenster("Game-Pad-Konfic") == 1; }));
        klicken(ort);
        EXPECT_TRUE(Programmprozess::warten([] { return sichtbareFenster("Schema gestartet") == 1; }));
    };
    EXPECT_THAT(nachStartUndEnde([] { setenv("QT_LOGGING_RULES", "gamepad.zeit=true", 1); }, "", laufen),
                StartsWith("gamepad.zeit: Lauf zu Ende: "));
}

TEST_F(Fehlerausgabe, EineFehlerhafteListeWirdBeimStartInEinerBoxGenannt) {
    std::ofstream(datenbank_.ordner() / "gamecontrollerdb.txt") << "Gerede\n";
    const auto davor = sichtbareFenster();
    Programmprozess prozess(datenbank_.ordner());
    // The main form and the box.
    EXPECT_TRUE(Programmprozess::warten([&] { return sichtbareFenster() == davor + 2; }));
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

TEST_F(Fehlerausgabe, OhneDieDeutschenTexteDesWerkzeugkastensLaeuftEs) {
    const Testordner leer;
    const auto erweiterungen = QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString();
    EXPECT_EQ(nachStartUndEnde([] {}, "[Paths]\nTranslations = " + leer.pfad().string() +
                                          "\nPlugins = " + erweiterungen + "\n"),
              "");
}
