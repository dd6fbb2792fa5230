// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/store/strom/Stromprobe.h"

#include "tests/store/strom/Mitschnitt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <set>
#include <string_view>
#include <unordered_map>

namespace {

constexpr std::array<std::size_t, 2> SEKTOREN{512, 4096};
constexpr int ALLE_BIS = 32;  ///< so many combinations are not drawn but gone through
constexpr int SCHICKSALE = 2; ///< all kept and all lost come before what is drawn
constexpr int JEDE_WIEVIELTE_ZWEIMAL = 8;
constexpr std::size_t FEHLER_GENUG = 5;

int umgebungszahl(const char* name, int sonst) {
    const char* wert = std::getenv(name);
    return wert ? std::atoi(wert) : sonst;
}

int probenJeSchritt() {
    static const int anzahl = umgebungszahl("STROM_PROBEN", 5);
    return anzahl;
}

bool gelingt(const Stromprobe& probe) {
    try {
        return probe.tat();
    } catch (const std::exception&) {
        return false;
    }
}

std::size_t abdruck(const Plattenbild& bild) {
    std::size_t summe = 0;
    for (const auto& [name, inhalt] : bild)
        summe = summe * 31 + std::hash<std::string_view>()(name) * 7 + std::hash<std::string_view>()(inhalt);
    return summe;
}

/// Goes through all answers that a row of draws can have, one row after the other.
class Reihum {
public:
    Los los() {
        stelle_ = 0;
        return [this](int n) {
            if (stelle_ == ziffern_.size())
                ziffern_.push_back({0, n});
            return ziffern_[stelle_++].first;
        };
    }
    bool weiter() {
        ziffern_.resize(stelle_);
        while (!ziffern_.empty() && ziffern_.back().first + 1 == ziffern_.back().second)
            ziffern_.pop_back();
        if (ziffern_.empty())
            return false;
        ++ziffern_.back().first;
        return true;
    }

private:
    std::vector<std::pair<int, int>> ziffern_; ///< an answer, and how many there are
    std::size_t stelle_ = 0;
};

/// Draws that mostly keep or mostly lose.
Los schiefesLos(std::mt19937& zufall) {
    constexpr std::array<unsigned, 5> VON_HUNDERT{3, 25, 50, 75, 97};
    const unsigned da = VON_HUNDERT.at(zufall() % VON_HUNDERT.size());
    const unsigned verloren = VON_HUNDERT.at(zufall() % VON_HUNDERT.size());
    return [&zufall, da, verloren](int n) {
        if (zufall() % 100 < da)
            return 0;
        if (zufall() % 100 < verloren)
            return 1;
        return 1 + static_cast<int>(zufall() % static_cast<unsigned>(n - 1));
    };
}

/// How many ways there are for what is not synced; more than ALLE_BIS is enough to know.
int wege(const Platte& platte, std::size_t sektor, std::mt19937& zufall) {
    int anzahl = 1;
    platte.nachStromausfall(
        sektor, false,
        [&](int n) {
            anzahl = std::min(anzahl * n, ALLE_BIS + 1);
            return 0;
        },
        zufall);
    return anzahl;
}

using Besuch = std::function<void(const Plattenbild&)>;

void jedePlatte(const Platte& platte, std::mt19937& zufall, const Besuch& besuchen) {
    for (const std::size_t sektor : SEKTOREN) {
        if (wege(platte, sektor, zufall) <= ALLE_BIS) {
            Reihum reihum;
            do
                besuchen(platte.nachStromausfall(sektor, false, reihum.los(), zufall));
            while (reihum.weiter());
            continue;
        }
        for (int i = 0; i < probenJeSchritt(); ++i) {
            const Los los = i < SCHICKSALE ? Los([i](int) { return i; }) : schiefesLos(zufall);
            besuchen(platte.nachStromausfall(sektor, zufall() % 4 == 0, los, zufall));
        }
    }
}

const char* wortFuer(Plattenschritt::Art art) {
    constexpr std::array<const char*, 8> WORTE{"make",        "write",  "shorten", "sync",
                                               "sync folder", "remove", "rename",  "swap"};
    return WORTE.at(static_cast<std::size_t>(art));
}

std::string kurz(const std::string& text) {
    constexpr std::size_t GENUG = 300;
    return text.size() <= GENUG ? text : text.substr(0, GENUG) + "...";
}

class Stromlauf {
public:
    explicit Stromlauf(const Stromprobe& probe)
        : probe_(probe)
        , anfang_(bildVon(probe.ordner))
        , zufall_(static_cast<unsigned>(umgebungszahl("STROM_SAAT", 4711))) {}

    Strombericht laufen() {
        zuvor();
        staende_.push_back(probe_.stand());
        staende_.insert(staende_.end(), probe_.dazwischen.begin(), probe_.dazwischen.end());
        aufzeichnen();
        bericht_.gesehen.resize(staende_.size());
        bericht_.schritte = static_cast<int>(schritte_.size() - erster_);
        Platte platte(anfang_);
        for (std::size_t n = 0; n < erster_; ++n)
            platte.tun(schritte_[n]);
        for (std::size_t n = erster_; n <= schritte_.size() && bericht_.fehler.size() < FEHLER_GENUG; ++n) {
            jedePlatte(platte, zufall_, [&](const Plattenbild& bild) { besehen(bild, n); });
            if (n < schritte_.size())
                platte.tun(schritte_[n]);
        }
        bericht_.platten = static_cast<int>(befunde_.size());
        bildLegen(probe_.ordner, anfang_);
        return std::move(bericht_);
    }

private:
    void zuvor() const {
        if (probe_.zuvor)
            probe_.zuvor();
    }

    void aufzeichnen() {
        bildLegen(probe_.ordner, anfang_);
        {
            Mitschnitt mitschnitt(probe_.ordner);
            zuvor();
            erster_ = mitschnitt.schritte().size();
            EXPECT_TRUE(gelingt(probe_)) << "undisturbed";
            schritte_ = mitschnitt.schritte();
            Plattenbild gesehen = bildVon(probe_.ordner);
            Platte platte(anfang_);
            for (const auto& schritt : schritte_)
                platte.tun(schritt);
            EXPECT_TRUE(platte.jetzt() == gesehen) << "a change has been missed";
        }
        staende_.push_back(probe_.stand());
        EXPECT_NE(staende_.front(), staende_.back());
    }

    /// Which state a disk shows; -1 for none.
    int befund(const Plattenbild& bild) {
        bildLegen(probe_.ordner, bild);
        gesagt_ = probe_.stand();
        const auto stelle = std::ranges::find(staende_, gesagt_);
        return stelle == staende_.end() ? -1 : static_cast<int>(stelle - staende_.begin());
    }

    void besehen(const Plattenbild& bild, std::size_t schritt) {
        const auto [stelle, neu] = befunde_.try_emplace(abdruck(bild), -1);
        if (neu) {
            stelle->second = befund(bild);
            if (stelle->second >= 0)
                ++bericht_.gesehen[static_cast<std::size_t>(stelle->second)];
            if (zufall_() % JEDE_WIEVIELTE_ZWEIMAL == 0)
                nocheinmal(bild, stelle->second, schritt);
        }
        const int letzter = static_cast<int>(staende_.size()) - 1;
        if (stelle->second < 0)
            melden(schritt, "half: " + kurz(gesagt_));
        else if (schritt == schritte_.size() && stelle->second != letzter)
            melden(schritt, "what has come back is not there");
    }

    /// The power goes again while the program brings a disk in order.
    void nocheinmal(const Plattenbild& bild, int erwartet, std::size_t schritt) {
        bildLegen(probe_.ordner, bild);
        std::vector<Plattenschritt> heilung;
        {
            Mitschnitt mitschnitt(probe_.ordner);
            probe_.stand();
            heilung = mitschnitt.schritte();
        }
        if (heilung.empty())
            return;
        Platte platte(bild);
        const auto bis = zufall_() % heilung.size() + 1;
        for (std::size_t n = 0; n < bis; ++n)
            platte.tun(heilung[n]);
        const auto zweite =
            platte.nachStromausfall(SEKTOREN[zufall_() % 2], false, schiefesLos(zufall_), zufall_);
        if (befund(zweite) != erwartet)
            melden(schritt, "a second power cut changes the state to " + kurz(gesagt_));
        ++bericht_.zweimal;
    }

    void melden(std::size_t schritt, const std::string& text) {
        std::string wo =
            "before step " + std::to_string(schritt + 1) + " of " + std::to_string(schritte_.size());
        if (schritt < schritte_.size())
            wo += std::string(" (") + wortFuer(schritte_[schritt].art) + " " +
                  std::filesystem::path(schritte_[schritt].name).filename().string() + ")";
        bericht_.fehler.push_back(wo + ": " + text);
    }

    const Stromprobe& probe_;
    const Plattenbild anfang_;
    std::mt19937 zufall_;
    std::vector<Plattenschritt> schritte_;
    std::size_t erster_ = 0; ///< step of what is looked at, behind those before it
    std::vector<std::string> staende_;
    std::unordered_map<std::size_t, int> befunde_;
    std::string gesagt_;
    Strombericht bericht_;
};

/// The names of the files, as far as nothing may be left over: what names the journals of two databases
/// SQLite leaves for good after some errors, as one of them might ask for it much later.
std::set<std::string> namenVon(const Plattenbild& bild) {
    std::set<std::string> namen;
    for (const auto& [name, inhalt] : bild)
        if (name.find("-mj") == std::string::npos)
            namen.insert(name);
    return namen;
}

/// What a step that fails leaves.
class Stoerlauf {
public:
    explicit Stoerlauf(const Stromprobe& probe) : probe_(probe), anfang_(bildVon(probe.ordner)) {
        staende_.push_back(probe.stand());
        staende_.insert(staende_.end(), probe.dazwischen.begin(), probe.dazwischen.end());
        bildLegen(probe.ordner, anfang_);
        EXPECT_TRUE(gelingt(probe));
        namenDanach_ = namenVon(bildVon(probe.ordner));
        staende_.push_back(probe.stand());
    }
    ~Stoerlauf() { bildLegen(probe_.ordner, anfang_); }
    Stoerlauf(const Stoerlauf&) = delete;
    Stoerlauf& operator=(const Stoerlauf&) = delete;

    void laufen(int nummer, bool dauernd) {
        int n = 1;
        while (!testing::Test::HasFailure() && anSchritt(n, nummer, dauernd))
            ++n;
        EXPECT_GT(n, nummer == EIO ? 2 : 1) << "hardly a step was disturbed";
    }

private:
    /// False when there was no such step.
    bool anSchritt(int n, int nummer, bool dauernd) {
        std::string wo = "step " + std::to_string(n);
        wo += std::string(" fails by ") + std::strerror(nummer) + (dauernd ? " from then on" : " once");
        SCOPED_TRACE(wo);
        bildLegen(probe_.ordner, anfang_);
        bool getan = false;
        bool gestoert = false;
        Platte platte(anfang_);
        {
            Mitschnitt mitschnitt(probe_.ordner);
            mitschnitt.scheitern(n, nummer, dauernd);
            getan = gelingt(probe_);
            gestoert = mitschnitt.gescheitert();
            for (const auto& schritt : mitschnitt.schritte())
                platte.tun(schritt);
        }
        const std::string stand = probe_.stand();
        pruefen(stand, getan);
        for (const bool allesVerloren : {true, false}) {
            SCOPED_TRACE(allesVerloren ? "and then all is lost that was not synced"
                                       : "and then some is lost");
            const Los los = allesVerloren ? Los([](int) { return 1; }) : schiefesLos(zufall_);
            bildLegen(probe_.ordner, platte.nachStromausfall(SEKTOREN[0], false, los, zufall_));
            pruefen(probe_.stand(), getan);
        }
        if (dauernd && stand == staende_.front()) {
            bildLegen(probe_.ordner, platte.jetzt());
            EXPECT_TRUE(gelingt(probe_)) << "once all works again";
            EXPECT_EQ(probe_.stand(), staende_.back());
            EXPECT_EQ(namenVon(bildVon(probe_.ordner)), namenDanach_);
        }
        return gestoert;
    }

    void pruefen(const std::string& stand, bool getan) const {
        EXPECT_TRUE(std::ranges::find(staende_, stand) != staende_.end()) << kurz(stand);
        EXPECT_TRUE(!getan || stand == staende_.back()) << "it was not told";
    }

    const Stromprobe& probe_;
    const Plattenbild anfang_;
    std::mt19937 zufall_{4711};
    std::vector<std::string> staende_;
    std::set<std::string> namenDanach_;
};

} // namespace

Strombericht stromausfaelle(const Stromprobe& probe) {
    return Stromlauf(probe).laufen();
}

void erwarteGanzOderGarNicht(const Stromprobe& probe) {
    const Strombericht bericht = stromausfaelle(probe);
    EXPECT_TRUE(bericht.fehler.empty()) << testing::PrintToString(bericht.fehler);
    EXPECT_GT(bericht.gesehen.front(), 0);
    EXPECT_GT(bericht.gesehen.back(), 0);
    EXPECT_GT(bericht.schritte, 1);
    if (std::getenv("STROM_BERICHT"))
        std::printf("%d steps, %d disks, seen %s, twice %d\n", bericht.schritte, bericht.platten,
                    testing::PrintToString(bericht.gesehen).c_str(), bericht.zweimal);
}

void erwarteGesagtUndNichtsVerloren(const Stromprobe& probe) {
    Stoerlauf lauf(probe);
    for (const int nummer : {EIO, ENOSPC})
        for (const bool dauernd : {false, true})
            lauf.laufen(nummer, dauernd);
}
