// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the screen through the desktop's own portal: the real xdg-desktop-portal on a bus of the
// test's, with a backend that stands for the desktop behind it. That is a compositor's or a desktop's part;
// all between it and us is what users have.
#include "platform/linux/Portalaufnahme.h"
#include "tests/hilfen/Bus.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Hilfsprogramm.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/Vollbild.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QImage>
#include <QTest>
#include <QUrl>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int GEDULD_MS = 20000;
constexpr const char* NAME_DER_OBERFLAECHE = "org.freedesktop.impl.portal.desktop.probe";

// What a user does with what the desktop asks or shows; the numbers are those of the interface.
enum class Nutzer : uint { Ja = 0, Nein = 1, Anders = 2 };

QVariantMap version() {
    return {{"version", 2U}};
}

/// The desktop behind the portal: asks its user whether pictures may be taken, and takes them.
class Oberflaeche final : public QDBusVirtualObject {
public:
    explicit Oberflaeche(QDBusConnection bus) : bus_(std::move(bus)) {
        EXPECT_TRUE(bus_.registerVirtualObject("/org/freedesktop/portal/desktop", this));
        EXPECT_TRUE(bus_.registerService(NAME_DER_OBERFLAECHE));
    }
    ~Oberflaeche() override { bus_.unregisterObject("/org/freedesktop/portal/desktop"); }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& ruf, const QDBusConnection&) override {
        if (ruf.member() == "GetAll")
            return bus_.send(ruf.createReply(version()));
        if (ruf.member() == "AccessDialog") {
            ++fragen;
            return antworten(ruf, erlaubnis, {});
        }
        if (ruf.interface() != "org.freedesktop.impl.portal.Screenshot" || ruf.member() != "Screenshot")
            return false;
        ++bilder;
        if (!haengt)
            antworten(ruf, bild, {{"uri", QUrl::fromLocalFile(QString::fromStdString(datei)).toString()}});
        return true;
    }
    /// Dies: its connection to the bus breaks, whatever it still owes.
    void sterben() {
        const auto name = bus_.name();
        bus_ = QDBusConnection("keine"); // or else it would be held
        QDBusConnection::disconnectFromBus(name);
    }

    Nutzer erlaubnis = Nutzer::Ja;
    Nutzer bild = Nutzer::Ja;
    bool haengt = false; ///< it has not answered yet
    std::string datei;
    int fragen = 0;
    int bilder = 0;

private:
    bool antworten(const QDBusMessage& ruf, Nutzer ergebnis, const QVariantMap& werte) {
        return bus_.send(ruf.createReply({static_cast<uint>(ergebnis), werte}));
    }

    QDBusConnection bus_;
};

/// Takes a picture and keeps what comes.
struct Nehmer {
    void nehmen(Schirmaufnahme& schirm) {
        schirm.aufnehmen([this](const Schirmbild& bild) {
            bilder.push_back(bild.leer() ? QImage()
                                         : QImage(bild.pixel.get(), bild.breite, bild.hoehe, bild.zeile,
                                                  QImage::Format_RGB32)
                                               .copy());
        });
    }
    bool warten(std::size_t anzahl) const {
        return QTest::qWaitFor([&] { return bilder.size() >= anzahl; }, GEDULD_MS);
    }
    std::vector<QImage> bilder;
};

class AmEchtenPortal : public testing::Test {
protected:
    AmEchtenPortal() {
        dateiSchreiben(ordner_.pfad() / "probe.portal",
                       std::string("[portal]\nDBusName=") + NAME_DER_OBERFLAECHE +
                           "\nInterfaces=org.freedesktop.impl.portal.Screenshot;"
                           "org.freedesktop.impl.portal.Access;\nUseIn=probe\n");
        oberflaeche_.datei = ordner_.pfad() / "Bildschirmfoto vom Spiel.png";
        EXPECT_TRUE(erwartet_.save(QString::fromStdString(oberflaeche_.datei), "PNG"));
        // What the user has once said it keeps.
        gedaechtnis_.emplace(std::vector<std::string>{"/usr/libexec/xdg-permission-store"}, umgebung());
        EXPECT_TRUE(amBus("org.freedesktop.impl.portal.PermissionStore"));
        portal_.emplace(std::vector<std::string>{"/usr/libexec/xdg-desktop-portal"}, umgebung());
        EXPECT_TRUE(amBus("org.freedesktop.portal.Desktop"));
    }

    /// Waits until a name is on the bus, or has gone from it.
    bool amBus(const QString& name, bool da = true) {
        const auto steht = [&] { return beigaben_.interface()->isServiceRegistered(name).value() == da; };
        return QTest::qWaitFor(steht, GEDULD_MS);
    }
    bool gefragt(int anzahl) {
        return QTest::qWaitFor([&] { return oberflaeche_.bilder == anzahl; }, GEDULD_MS);
    }
    /// One more picture was asked for, and none came.
    void erwarteKeines() {
        const auto vorher = nehmer_.bilder.size();
        nehmer_.nehmen(schirm_);
        ASSERT_TRUE(nehmer_.warten(vorher + 1));
        EXPECT_TRUE(nehmer_.bilder.back().isNull());
    }
    bool dateiDa() const { return std::filesystem::exists(oberflaeche_.datei); }

    const Testordner ordner_; // below the folder for what is passing
    Bus bus_;
    QDBusConnection beigaben_ = bus_.verbindung();
    QImage erwartet_ = rauschen({640, 480});
    Oberflaeche oberflaeche_{bus_.verbindung()};
    std::optional<Hilfsprogramm> gedaechtnis_;
    std::optional<Hilfsprogramm> portal_;
    Portalaufnahme schirm_{bus_.verbindung()};
    Nehmer nehmer_;

    std::vector<std::pair<std::string, std::string>> umgebung() const {
        const std::string ordner = ordner_.pfad();
        return {{"DBUS_SESSION_BUS_ADDRESS", bus_.adresse().toStdString()},
                {"XDG_DESKTOP_PORTAL_DIR", ordner},
                {"XDG_CURRENT_DESKTOP", "probe"},
                {"XDG_RUNTIME_DIR", ordner},
                {"XDG_DATA_HOME", ordner},
                {"HOME", ordner},
                {"GIO_USE_VFS", "local"},
                {"GSETTINGS_BACKEND", "memory"}};
    }
};

TEST_F(AmEchtenPortal, NachDerErlaubnisKommenBilderOhneWeitereFrage) {
    for (std::size_t i = 1; i <= 2; ++i) {
        erwartet_.save(QString::fromStdString(oberflaeche_.datei), "PNG");
        nehmer_.nehmen(schirm_);
        ASSERT_TRUE(nehmer_.warten(i));
        EXPECT_TRUE(nehmer_.bilder.back() == erwartet_);
        EXPECT_FALSE(dateiDa()) << "nobody keeps it";
    }
    EXPECT_EQ(oberflaeche_.fragen, 1);
    EXPECT_EQ(oberflaeche_.bilder, 2);
}

TEST_F(AmEchtenPortal, WerDieErlaubnisVerweigertWirdNichtAufgenommen) {
    oberflaeche_.erlaubnis = Nutzer::Nein;
    erwarteKeines();
    erwarteKeines(); // the desktop knows by now
    EXPECT_EQ(oberflaeche_.fragen, 1);
    EXPECT_EQ(oberflaeche_.bilder, 0);
}

TEST_F(AmEchtenPortal, WerAbbrichtBekommtKeinBildUndDasNaechsteKommt) {
    for (const auto abbruch : {Nutzer::Nein, Nutzer::Anders}) {
        oberflaeche_.bild = abbruch;
        erwarteKeines();
    }
    oberflaeche_.bild = Nutzer::Ja;
    nehmer_.nehmen(schirm_);
    ASSERT_TRUE(nehmer_.warten(3));
    EXPECT_TRUE(nehmer_.bilder.back() == erwartet_);
}

TEST_F(AmEchtenPortal, StirbtDieOberflaecheSoKommtKeinBild) {
    oberflaeche_.haengt = true;
    nehmer_.nehmen(schirm_);
    ASSERT_TRUE(gefragt(1));
    EXPECT_TRUE(nehmer_.bilder.empty());
    oberflaeche_.sterben();
    ASSERT_TRUE(nehmer_.warten(1));
    EXPECT_TRUE(nehmer_.bilder.back().isNull());
    erwarteKeines();
}

TEST_F(AmEchtenPortal, StirbtDasPortalSoKommtKeinBild) {
    oberflaeche_.haengt = true;
    nehmer_.nehmen(schirm_);
    ASSERT_TRUE(gefragt(1));
    portal_->toeten();
    ASSERT_TRUE(nehmer_.warten(1));
    EXPECT_TRUE(nehmer_.bilder.back().isNull());
    erwarteKeines();
}

TEST_F(AmEchtenPortal, OhneOberflaecheDieBilderKannKommtKeinBild) {
    portal_->toeten();
    ASSERT_TRUE(amBus("org.freedesktop.portal.Desktop", false));
    std::filesystem::remove(ordner_.pfad() / "probe.portal");
    portal_.emplace(std::vector<std::string>{"/usr/libexec/xdg-desktop-portal"}, umgebung());
    ASSERT_TRUE(amBus("org.freedesktop.portal.Desktop"));
    erwarteKeines();
    EXPECT_EQ(oberflaeche_.bilder, 0);
}

} // namespace

int main(int anzahl, char** worte) {
    testing::InitGoogleMock(&anzahl, worte);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
