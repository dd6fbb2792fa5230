// SPDX-License-Identifier: GPL-3.0-or-later
// The watcher: lets go what the program holds down in the X server when it dies, however it dies. An X server
// keeps a key down for ever when the client that pressed it is simply gone.
//
// Started by the program with the sheet and the line (Waechterblatt.h). It sleeps until the line or the
// connection to the server ends, and ends with the first of the two.
//
// What the program has sent last may still lie before the server when the program is dead already. So it
// waits until the server has done away with the dead client, which shows by the window of its own going.
#include "platform/waechter/Drucklage.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

namespace {

using Uhr = std::chrono::steady_clock;
using std::chrono::milliseconds;
constexpr unsigned LEBENSREST = 3; // seconds; with a server that does not answer
constexpr milliseconds GEDULD{50}; // with one that does not get to the dead client
constexpr milliseconds LANGE_GEDULD = std::chrono::seconds{LEBENSREST};
constexpr unsigned ERSTER_KNOPF = Waechterblatt::TASTEN;

// While a server is waited for that does not answer: without the program that is not for ever.
void programmSuchen(int) {
    char wort = 0;
    if (recv(LEITUNGSKANAL, &wort, 1, MSG_PEEK | MSG_DONTWAIT) == 0)
        _exit(1);
    alarm(LEBENSREST);
}

// Without a server nothing is down.
int serverVerloren(Display*) {
    _exit(0);
}

// Xlib gives its handlers nothing to know an object by.
bool fensterUnbekannt = false;
int fehlerMerken(Display*, XErrorEvent* fehler) {
    fensterUnbekannt |= fehler->error_code == BadWindow;
    return 0;
}

const Waechterblatt* blattOeffnen() {
    const auto* blatt = static_cast<const Waechterblatt*>(
        mmap(nullptr, sizeof(Waechterblatt), PROT_READ, MAP_SHARED, BLATTKANAL, 0));
    return blatt != MAP_FAILED && blatt->kennung == Waechterblatt::KENNUNG ? blatt : nullptr;
}

class Wache {
public:
    Wache(Display* anzeige, const Waechterblatt& blatt) : anzeige_(anzeige), blatt_(blatt) {}

    void halten() {
        alarm(0);
        const char bereit = leitungswort::BEREIT;
        send(LEITUNGSKANAL, &bereit, 1, MSG_NOSIGNAL);
        while (leitungSteht())
            ereignisseLesen();
        alarm(LEBENSREST);
        abschied();
    }

private:
    /// Sleeps until something comes.
    bool leitungSteht() {
        std::array<pollfd, 2> wege{{{LEITUNGSKANAL, POLLIN, 0}, {ConnectionNumber(anzeige_), POLLIN, 0}}};
        poll(wege.data(), wege.size(), -1);
        if (wege[0].revents == 0)
            return true;
        char wort = 0;
        if (recv(LEITUNGSKANAL, &wort, 1, 0) <= 0)
            return false;
        alarm(LEBENSREST);
        loslassen();
        alarm(0);
        return true;
    }

    void abschied() {
        if (vermerkte().none())
            return;
        XSelectInput(anzeige_, blatt_.fenster, StructureNotifyMask);
        XFlush(anzeige_);
        if (!fensterFort(GEDULD)) {
            loslassen();
            fensterFort(LANGE_GEDULD);
        }
        loslassen();
        XSync(anzeige_, False);
    }

    /// Waits until the server has done all that the dead client has sent; false if that takes too long.
    bool fensterFort(milliseconds geduld) {
        const auto ende = Uhr::now() + geduld;
        while (ereignisseLesen(), !fensterFort_ && !fensterUnbekannt) {
            const auto rest = std::chrono::ceil<milliseconds>(ende - Uhr::now()).count();
            if (rest <= 0)
                return false;
            pollfd weg{ConnectionNumber(anzeige_), POLLIN, 0};
            poll(&weg, 1, static_cast<int>(rest));
        }
        return true;
    }

    void ereignisseLesen() {
        while (XPending(anzeige_) > 0) {
            XEvent ereignis;
            XNextEvent(anzeige_, &ereignis);
            fensterFort_ |=
                ereignis.type == DestroyNotify && ereignis.xdestroywindow.window == blatt_.fenster;
        }
    }

    /// Lets go what is noted and really down, and not by hand: a note whose press never went out would take
    /// what the user holds. A key that both hold goes up when the user lets go.
    void loslassen() {
        const auto vermerkt = vermerkte();
        if (vermerkt.none())
            return;
        const auto [durchXtest, vonHand] = drucklage(anzeige_);
        loesen(vermerkt & durchXtest & ~vonHand);
    }

    /// What may be down: what was released last may never have come to the server.
    Stellenmenge vermerkte() const {
        auto menge = gelesen(blatt_.unten);
        if (Waechterblatt::jetzt() - blatt_.zuletzt <= Waechterblatt::RUECKSTAND)
            menge |= gelesen(blatt_.geloest);
        return menge;
    }

    static Stellenmenge gelesen(const Waechterblatt::Stellen& worte) {
        Stellenmenge menge;
        for (std::size_t stelle = 0; stelle < Waechterblatt::STELLEN; ++stelle)
            menge[stelle] =
                (worte[stelle / Waechterblatt::JE_WORT] >> stelle % Waechterblatt::JE_WORT & 1U) != 0;
        return menge;
    }

    void loesen(const Stellenmenge& stellen) {
        for (unsigned stelle = 0; stelle < Waechterblatt::STELLEN; ++stelle)
            if (stellen[stelle] && stelle < ERSTER_KNOPF)
                XTestFakeKeyEvent(anzeige_, stelle, False, CurrentTime);
            else if (stellen[stelle])
                XTestFakeButtonEvent(anzeige_, stelle - ERSTER_KNOPF, False, CurrentTime);
        XFlush(anzeige_);
    }

    Display* anzeige_;
    const Waechterblatt& blatt_;
    bool fensterFort_ = false;
};

} // namespace

int main() {
    // Who asks the program to end asks all of its group; what it holds then it lets go itself.
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE})
        std::signal(signal, SIG_IGN);
    std::signal(SIGALRM, programmSuchen);
    alarm(LEBENSREST);
    const auto* blatt = blattOeffnen();
    Display* anzeige = blatt != nullptr && chdir("/") == 0 ? XOpenDisplay(nullptr) : nullptr;
    int unbenutzt = 0;
    if (anzeige == nullptr || !XTestQueryExtension(anzeige, &unbenutzt, &unbenutzt, &unbenutzt, &unbenutzt))
        return 1;
    XSetIOErrorHandler(serverVerloren);
    XSetErrorHandler(fehlerMerken);
    XTestGrabControl(anzeige, True); // a server grab does not hold us up
    drucklage(anzeige);              // asks for what is asked but once
    Wache(anzeige, *blatt).halten();
    _exit(0);
}
