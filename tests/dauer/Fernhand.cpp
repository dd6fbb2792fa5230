// SPDX-License-Identifier: GPL-3.0-or-later
// The hand in the program: a library that is loaded into the shipped program (LD_PRELOAD), plugs a virtual
// pad in there and says what is on the screen, so that somebody outside can click on it. It changes nothing
// of the program but the time of day that it is told.
//
// It talks through the socket $DAUER_STECKDOSE, a line a request, lines ended by "." for an answer:
//   stand             what is open: W heap timers widgets
//                     F index name class active modal window text
//                     C form kind name x y width height text    what can be clicked on, in pixels
//   pad 1, pad 0      plugs the pad in, or pulls it
//   taste N 1         a button of SDL's, 1 down, 0 up
//   achse N WERT      an axis of SDL's
//   leeren            empties the toolkit's cache of pictures, which fills up to 10 MB and says nothing of
//   what grows uhr S             puts the time of day S seconds on
// A tabulator separates the fields of an answer.
#include "tests/ablauf/Spielpad.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmapCache>
#include <QScrollBar>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <malloc.h>
#include <memory>
#include <optional>
#include <sstream>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

std::atomic<std::time_t> zeitversatz{0};

template <class Funktion> Funktion* echte(const char* name) {
    return reinterpret_cast<Funktion*>(dlsym(RTLD_NEXT, name));
}

} // namespace

// --- the time of day ---

extern "C" int clock_gettime(clockid_t uhr, timespec* zeit) {
    static auto* const weiter = echte<int(clockid_t, timespec*)>("clock_gettime");
    const int ergebnis = weiter(uhr, zeit);
    if (uhr == CLOCK_REALTIME)
        zeit->tv_sec += zeitversatz;
    return ergebnis;
}

extern "C" int gettimeofday(timeval* zeit, void* zone) noexcept {
    static auto* const weiter = echte<int(timeval*, void*)>("gettimeofday");
    const int ergebnis = weiter(zeit, zone);
    zeit->tv_sec += zeitversatz;
    return ergebnis;
}

extern "C" std::time_t time(std::time_t* ziel) noexcept {
    timespec zeit{};
    clock_gettime(CLOCK_REALTIME, &zeit);
    if (ziel)
        *ziel = zeit.tv_sec;
    return zeit.tv_sec;
}

namespace {

// --- what is on the screen ---

constexpr int HOECHSTENS_ZEICHEN = 120;
constexpr int HOECHSTENS_CONTROLS = 400;

std::string text(const QString& roh) {
    return roh.simplified().left(HOECHSTENS_ZEICHEN).toStdString();
}

/// What stands on a control; nullopt for one that there is no use in clicking on.
std::optional<std::pair<char, QString>> art(const QWidget& control) {
    if (const auto* knopf = qobject_cast<const QAbstractButton*>(&control))
        return std::pair{'K', knopf->text()};
    if (const auto* feld = qobject_cast<const QLineEdit*>(&control))
        return std::pair{'T', feld->text()};
    if (const auto* liste = qobject_cast<const QComboBox*>(&control))
        return std::pair{'L', liste->currentText()};
    if (qobject_cast<const QScrollBar*>(&control))
        return std::pair{'R', QString()};
    if (control.objectName() == "Stickebene")
        return std::pair{'E', QString()};
    if (control.inherits("Schiebetafel")) // folds out when the pointer comes
        return std::pair{'S', QString()};
    if (control.objectName().isEmpty() ||
        !control.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).isEmpty())
        return std::nullopt;
    return std::pair{'S', QString()};
}

bool oben(const QWidget& control, QPoint dort) {
    const auto* getroffen = QApplication::widgetAt(dort);
    return getroffen && (getroffen == &control || control.isAncestorOf(getroffen));
}

void controlsSagen(std::ostringstream& antwort, const QWidget& fenster, int nummer) {
    int gesagte = 0;
    for (const auto* control : fenster.findChildren<QWidget*>()) {
        const auto was = control->isVisible() && control->isEnabled() ? art(*control) : std::nullopt;
        const auto mitte = control->mapToGlobal(control->rect().center());
        if (!was || gesagte > HOECHSTENS_CONTROLS || control->window() != &fenster || !oben(*control, mitte))
            continue;
        ++gesagte;
        const auto ecke = control->mapToGlobal(QPoint(0, 0));
        antwort << "C\t" << nummer << '\t' << was->first << '\t' << text(control->objectName()) << '\t'
                << ecke.x() << '\t' << ecke.y() << '\t' << control->width() << '\t' << control->height()
                << '\t' << text(was->second) << '\n';
    }
}

std::size_t zeitgeberVon(const QObject& objekt) {
    auto* verteiler = QAbstractEventDispatcher::instance();
    std::size_t anzahl =
        static_cast<std::size_t>(verteiler->registeredTimers(const_cast<QObject*>(&objekt)).size());
    for (const auto* kind : objekt.children())
        anzahl += zeitgeberVon(*kind);
    return anzahl;
}

void werteSagen(std::ostringstream& antwort) {
    const auto speicher = mallinfo2();
    std::size_t zeitgeber = zeitgeberVon(*qApp);
    for (const auto* fenster : QApplication::topLevelWidgets())
        if (!fenster->parent())
            zeitgeber += zeitgeberVon(*fenster);
    antwort << "W\t" << speicher.uordblks + speicher.hblkhd << '\t' << zeitgeber << '\t'
            << QApplication::allWidgets().size() << '\n';
}

std::string stand() {
    std::ostringstream antwort;
    werteSagen(antwort);
    int nummer = 0;
    for (auto* fenster : QApplication::topLevelWidgets()) {
        if (!fenster->isVisible())
            continue;
        const auto* box = qobject_cast<QMessageBox*>(fenster);
        antwort << "F\t" << nummer << '\t' << text(fenster->objectName()) << '\t'
                << (box ? "QMessageBox" : fenster->metaObject()->className()) << '\t'
                << fenster->isActiveWindow() << '\t' << (QApplication::activeModalWidget() == fenster) << '\t'
                << fenster->effectiveWinId() << '\t' << text(box ? box->text() : fenster->windowTitle())
                << '\n';
        // A form that a box keeps from working is not clicked on.
        if (!QApplication::activeModalWidget() || QApplication::activeModalWidget() == fenster ||
            QApplication::activePopupWidget() == fenster)
            controlsSagen(antwort, *fenster, nummer);
        ++nummer;
    }
    return antwort.str();
}

// --- the conversation ---

class Fernhand : public QObject {
public:
    explicit Fernhand(int leitung) : leitung_(leitung), melder_(leitung, QSocketNotifier::Read) {
        connect(&melder_, &QSocketNotifier::activated, this, [this] { lesen(); });
        // SDL must not be used after the program is through with it.
        connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { pad_.reset(); });
    }

private:
    void lesen() {
        std::array<char, 4096> stueck{};
        const auto gelesen = read(leitung_, stueck.data(), stueck.size());
        if (gelesen <= 0)
            return melder_.setEnabled(false);
        eingang_.append(stueck.data(), static_cast<std::size_t>(gelesen));
        for (auto ende = eingang_.find('\n'); ende != std::string::npos; ende = eingang_.find('\n')) {
            const auto zeile = eingang_.substr(0, ende);
            eingang_.erase(0, ende + 1);
            schreiben(antworten(zeile) + ".\n");
        }
    }

    void schreiben(const std::string& antwort) const {
        for (std::size_t fertig = 0; fertig < antwort.size();) {
            const auto mehr = send(leitung_, antwort.data() + fertig, antwort.size() - fertig, MSG_NOSIGNAL);
            if (mehr <= 0)
                return;
            fertig += static_cast<std::size_t>(mehr);
        }
    }

    std::string antworten(const std::string& zeile) {
        std::istringstream worte(zeile);
        std::string befehl;
        int erstes = 0;
        int zweites = 0;
        worte >> befehl >> erstes >> zweites;
        if (befehl == "stand")
            return stand();
        if (befehl == "leeren")
            QPixmapCache::clear();
        if (befehl == "uhr")
            zeitversatz = erstes;
        if (befehl == "pad")
            stecken(erstes != 0);
        if (befehl == "taste" && pad_)
            pad_->taste(static_cast<SDL_GameControllerButton>(erstes), zweites != 0);
        if (befehl == "achse" && pad_)
            pad_->achse(static_cast<SDL_GameControllerAxis>(erstes), static_cast<Sint16>(zweites));
        return {};
    }

    void stecken(bool an) {
        pad_.reset();
        if (an && SDL_WasInit(SDL_INIT_JOYSTICK) != 0)
            pad_.emplace();
    }

    int leitung_;
    QSocketNotifier melder_;
    std::string eingang_;
    std::optional<Spielpad> pad_;
};

int anklopfen(const char* pfad) {
    sockaddr_un adresse{};
    adresse.sun_family = AF_UNIX;
    std::strncpy(adresse.sun_path, pfad, sizeof adresse.sun_path - 1);
    const int leitung = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(leitung, reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse) == 0)
        return leitung;
    close(leitung);
    return -1;
}

void anfangen() {
    // What the program starts itself, a browser say, is left alone.
    unsetenv("LD_PRELOAD");
    const char* pfad = std::getenv("DAUER_STECKDOSE");
    if (!pfad)
        return;
    QTimer::singleShot(0, qApp, [wo = std::string(pfad)] {
        if (const int leitung = anklopfen(wo.c_str()); leitung >= 0)
            new Fernhand(leitung); // as long as the process
    });
}

Q_COREAPP_STARTUP_FUNCTION(anfangen)

} // namespace
