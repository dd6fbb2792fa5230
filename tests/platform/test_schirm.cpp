// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the screen: the contract on the fake, on an X server and through a portal on a bus of our own,
// then how each of the real ones fails.
#include "platform/linux/Portalaufnahme.h"
#include "platform/linux/Qtaufnahme.h"
#include "platform/linux/Schirmwahl.h"
#include "platform/probe/ProbeSchirm.h"
#include "tests/hilfen/Bus.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/Vollbild.h"
#include "tests/hilfen/XServer.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QImage>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr int GEDULD_MS = 20000;
constexpr int BREITE = 640;
constexpr int HOEHE = 480;

QImage alsQImage(const Schirmbild& bild) {
    return bild.leer()
               ? QImage()
               : QImage(bild.pixel.get(), bild.breite, bild.hoehe, bild.zeile, QImage::Format_RGB32).copy();
}

enum class Antwort { Bild, Absage, Fehler, Keine };

/// The portal as its documentation tells it.
class ProbePortal final : public QDBusVirtualObject {
public:
    explicit ProbePortal(QDBusConnection bus) : bus_(std::move(bus)) {
        EXPECT_TRUE(bus_.registerVirtualObject("/org/freedesktop/portal/desktop", this));
        EXPECT_TRUE(bus_.registerService("org.freedesktop.portal.Desktop"));
    }
    ~ProbePortal() override { bus_.unregisterObject("/org/freedesktop/portal/desktop"); }

    void gehen() { bus_.unregisterService("org.freedesktop.portal.Desktop"); }
    void antworten() {
        auto signal = QDBusMessage::createSignal(pfad_, "org.freedesktop.portal.Request", "Response");
        signal << uint(antwort == Antwort::Bild ? 0 : 1)
               << QVariantMap{{"uri", QUrl::fromLocalFile(QString::fromStdString(datei)).toString()}};
        bus_.send(signal);
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& ruf, const QDBusConnection&) override {
        if (ruf.interface() != "org.freedesktop.portal.Screenshot" || ruf.member() != "Screenshot" ||
            ruf.signature() != "sa{sv}")
            return false;
        ++anfragen;
        if (antwort == Antwort::Fehler)
            return bus_.send(ruf.createErrorReply(QDBusError::AccessDenied, "no"));
        QVariantMap wahl;
        qvariant_cast<QDBusArgument>(ruf.arguments()[1]) >> wahl;
        EXPECT_FALSE(wahl.value("interactive", true).toBool());
        const auto marke =
            altesPortal ? QString("alt%1").arg(anfragen) : wahl.value("handle_token").toString();
        pfad_ =
            "/org/freedesktop/portal/desktop/request/" + ruf.service().mid(1).replace('.', '_') + "/" + marke;
        bus_.send(ruf.createReply(QVariant::fromValue(QDBusObjectPath(pfad_))));
        if (antwort != Antwort::Keine && !altesPortal)
            antworten();
        return true;
    }

    Antwort antwort = Antwort::Bild;
    bool altesPortal = false; ///< it names the request by itself
    std::string datei;
    int anfragen = 0;

private:
    QDBusConnection bus_;
    QString pfad_;
};

struct MitProbe {
    MitProbe() {
        schirm.farbe = 0x123456;
        schirm.breite = BREITE;
        schirm.hoehe = HOEHE;
        erwartet.fill(0x123456);
    }
    QImage erwartet{BREITE, HOEHE, QImage::Format_RGB32};
    ProbeSchirm schirm;
};

struct MitX {
    QImage erwartet = rauschen({BREITE, HOEHE});
    Vollbild vollbild{erwartet};
    Qtaufnahme schirm;
};

struct MitPortal {
    MitPortal() { legen(); }
    void legen() {
        portal.datei = ordner.pfad() / "Bildschirm foto.png";
        erwartet.save(QString::fromStdString(portal.datei), "PNG");
    }
    const Testordner ordner; // below the folder for what is passing
    Bus bus;
    QImage erwartet = rauschen({BREITE, HOEHE});
    ProbePortal portal{bus.verbindung()};
    Portalaufnahme schirm{bus.verbindung()};
};

/// Gives a variable of the environment another value for as long as it lives.
class Umgebung {
public:
    Umgebung(const char* name, const char* wert) : name_(name), vorher_(qgetenv(name)) {
        qputenv(name, wert);
    }
    ~Umgebung() { vorher_.isNull() ? qunsetenv(name_) : qputenv(name_, vorher_); }
    Umgebung(const Umgebung&) = delete;
    Umgebung& operator=(const Umgebung&) = delete;

private:
    const char* name_;
    QByteArray vorher_;
};

/// Takes pictures and keeps what comes.
struct Nehmer {
    Schirmaufnahme::Empfaenger empfaenger() {
        return [this](const Schirmbild& bild) { bilder.push_back(alsQImage(bild)); };
    }
    bool warten(std::size_t anzahl) const {
        return QTest::qWaitFor([&] { return bilder.size() >= anzahl; }, GEDULD_MS);
    }
    std::vector<QImage> bilder;
};

template <typename Backend> class SchirmVertrag : public testing::Test {
protected:
    Backend backend;
    Nehmer nehmer;
};
using Backends = testing::Types<MitProbe, MitX, MitPortal>;
TYPED_TEST_SUITE(SchirmVertrag, Backends);

} // namespace

TYPED_TEST(SchirmVertrag, EinBildHatJedesPixelDesBildschirmsUndKommtEinmal) {
    this->backend.schirm.aufnehmen(this->nehmer.empfaenger());
    ASSERT_TRUE(this->nehmer.warten(1));
    EXPECT_EQ(this->nehmer.bilder[0].size(), QSize(BREITE, HOEHE));
    EXPECT_TRUE(this->nehmer.bilder[0] == this->backend.erwartet);
    QCoreApplication::processEvents();
    EXPECT_EQ(this->nehmer.bilder.size(), 1U);
}

namespace {

TEST(AmXServer, ZeigtWasJetztZuSehenIst) {
    MitX x;
    Nehmer nehmer;
    x.schirm.aufnehmen(nehmer.empfaenger());
    QImage gruen(BREITE / 2, HOEHE, QImage::Format_RGB32);
    gruen.fill(Qt::green);
    const Vollbild davor(gruen);
    x.schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_EQ(nehmer.bilder.size(), 2U);
    EXPECT_TRUE(nehmer.bilder[0] == x.erwartet);
    EXPECT_EQ(nehmer.bilder[1].pixel(0, 0), qRgb(0, 255, 0));
    EXPECT_EQ(nehmer.bilder[1].pixel(BREITE - 1, 0), x.erwartet.pixel(BREITE - 1, 0));
}

class AmPortal : public testing::Test, protected MitPortal {
protected:
    Nehmer nehmer;
    bool dateiDa() const { return std::filesystem::exists(portal.datei); }
};

TEST_F(AmPortal, EineVergaenglicheDateiWirdEntferntUndEineEigeneBleibt) {
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(1));
    EXPECT_FALSE(dateiDa());
    const Testordner anderswo;
    const Umgebung fluechtig("TMPDIR", ordner.pfad().c_str());
    portal.datei = anderswo.pfad() / "Bild.png";
    erwartet.save(QString::fromStdString(portal.datei), "PNG");
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(2));
    EXPECT_TRUE(nehmer.bilder[1] == erwartet);
    EXPECT_TRUE(dateiDa());
}

TEST_F(AmPortal, AbsageFehlerUndUnlesbareDateiGebenKeinBild) {
    portal.antwort = Antwort::Absage;
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(1));
    portal.antwort = Antwort::Fehler;
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(2));
    portal.antwort = Antwort::Bild;
    dateiSchreiben(portal.datei, "no picture");
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(3));
    EXPECT_TRUE(dateiDa()) << "what is no picture is none that may go";
    portal.datei = "";
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(4));
    EXPECT_THAT(nehmer.bilder, testing::Each(testing::Property(&QImage::isNull, true)));
    EXPECT_EQ(portal.anfragen, 4);
}

TEST_F(AmPortal, WasKeineDateiIstHaeltNichtAuf) {
    portal.datei = ordner.pfad() / "rohr.png";
    ASSERT_EQ(mkfifo(portal.datei.c_str(), 0600), 0);
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(1));
    portal.datei = ordner.pfad();
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(2));
    EXPECT_THAT(nehmer.bilder, testing::Each(testing::Property(&QImage::isNull, true)));
}

TEST_F(AmPortal, EinAeltererDerDieAnfrageSelbstBenenntWirdVerstanden) {
    portal.altesPortal = true;
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(QTest::qWaitFor([this] { return portal.anfragen == 1; }, GEDULD_MS));
    // It asks its user first; when we are listening at the new path shows by the answer that comes.
    ASSERT_TRUE(QTest::qWaitFor(
        [this] {
            portal.antworten();
            return nehmer.bilder.size() == 1;
        },
        GEDULD_MS));
    EXPECT_TRUE(nehmer.bilder[0] == erwartet);
}

TEST_F(AmPortal, GehtDasPortalSoKommtKeinBild) {
    portal.antwort = Antwort::Keine;
    schirm.aufnehmen(nehmer.empfaenger());
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(QTest::qWaitFor([this] { return portal.anfragen == 2; }, GEDULD_MS));
    EXPECT_TRUE(nehmer.bilder.empty());
    portal.gehen();
    ASSERT_TRUE(nehmer.warten(2));
    EXPECT_TRUE(nehmer.bilder[0].isNull() && nehmer.bilder[1].isNull());
    schirm.aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(nehmer.warten(3)) << "nobody is there";
    EXPECT_TRUE(nehmer.bilder[2].isNull());
}

TEST_F(AmPortal, NachDemEndeKommtNichtsMehr) {
    auto andere = std::make_unique<Portalaufnahme>(bus.verbindung());
    portal.antwort = Antwort::Keine;
    andere->aufnehmen(nehmer.empfaenger());
    ASSERT_TRUE(QTest::qWaitFor([this] { return portal.anfragen == 1; }, GEDULD_MS));
    andere.reset();
    portal.antwort = Antwort::Bild;
    portal.antworten();
    schirm.aufnehmen(nehmer.empfaenger()); // its answer comes behind the one that nobody hears
    ASSERT_TRUE(nehmer.warten(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(nehmer.bilder.size(), 1U);
}

TEST(Schirmwahl, UnterXNimmtQtUndUnterWaylandOhneBusAuch) {
    const auto istQt = [] { return dynamic_cast<Qtaufnahme*>(schirmaufnahmeWaehlen().get()) != nullptr; };
    EXPECT_TRUE(istQt());
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_TRUE(istQt());
    qunsetenv("WAYLAND_DISPLAY");
}

} // namespace

int main(int anzahl, char** worte) {
    testing::InitGoogleMock(&anzahl, worte);
    const XServer server("640x480x24");
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QGuiApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
