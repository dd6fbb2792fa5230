// SPDX-License-Identifier: GPL-3.0-or-later
// Somebody who presses anything anywhere, while another program locks the database now and then.
//
// What holds whatever is done: the program holds no lock while it waits for its user, neither beside its
// forms nor under a message box; so no file is told to be locked while nobody else locks it. And each error
// is told by the handler that met it: one that leaves it through the toolkit takes along what that holds.
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>

namespace {

/// More and others by hand: GPK_SCHRITTE=20000 GPK_SAAT=17.
int umgebungszahl(const char* name, int vorgabe) {
    const char* wert = std::getenv(name);
    return wert ? std::atoi(wert) : vorgabe;
}

/// Another program's hand on the database.
class Sperrer {
public:
    explicit Sperrer(const std::string& pfad) : pfad_(pfad), verbindung_(pfad) {}

    bool sperrt() const { return sperrt_; }
    void umschalten() {
        verbindung_.sql(sperrt_ ? "COMMIT" : "BEGIN EXCLUSIVE");
        sperrt_ = !sperrt_;
    }
    void erwarteFrei(const char* wo) {
        if (sperrt_)
            return;
        RoheVerbindung probe(pfad_);
        EXPECT_NO_THROW(probe.sql("BEGIN EXCLUSIVE")) << wo;
        ++proben_;
    }
    int proben() const { return proben_; }

private:
    const std::string pfad_;
    RoheVerbindung verbindung_;
    bool sperrt_ = false;
    int proben_ = 0;
};

class Zufall : public Formtest, public testing::WithParamInterface<unsigned> {
protected:
    Zufall() {
        std::filesystem::create_directory(datenbank_.ordner() / "Bilder");
        QImage leer(8, 6, QImage::Format_RGB32);
        leer.fill(Qt::gray);
        EXPECT_TRUE(leer.save(QString::fromStdString((datenbank_.ordner() / "Bilder/Joy2.bmp").string())));
        for (const char* name : {"S", "T"})
            Schemabau(datenbank_, name).taste(0, "1,65,0-0-0").taste(12, "1,66,0-0-0").anlegen();
        pad_.zustand = ProbeJoystick::inRuhe();
        QObject::connect(&boxtakt_, &QTimer::timeout, [this] { boxBeantworten(); });
        boxtakt_.start(0);
    }

    /// One of so many.
    int eines(int anzahl) { return static_cast<int>(zufall_() % static_cast<unsigned>(anzahl)); }
    template <class Liste> auto& eines(Liste& liste) {
        return liste[static_cast<decltype(liste.size())>(eines(static_cast<int>(liste.size())))];
    }

    void boxBeantworten() {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget()))
            return dialog->reject();
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        ++boxen_;
        sperrer_.erwarteFrei(box->text().toUtf8().constData());
        const bool gesperrt = box->text().contains("Laufzeitfehler 3218");
        EXPECT_TRUE(!gesperrt || gesperrtGewesen_)
            << schritt_ << " " << letzter_ << ": " << box->text().toStdString();
        auto knoepfe = box->buttons();
        eines(knoepfe)->click();
    }

    /// What somebody may press: all that is in sight and lets itself be used.
    std::vector<QWidget*> bedienbare() const {
        std::vector<QWidget*> alle;
        for (auto* fenster : QApplication::topLevelWidgets()) {
            if (!fenster->isVisible() || qobject_cast<QMessageBox*>(fenster))
                continue;
            for (auto* feld : fenster->findChildren<QWidget*>())
                if (feld->isVisible() && feld->isEnabled() &&
                    (!feld->objectName().isEmpty() || feld->focusPolicy() != Qt::NoFocus))
                    alle.push_back(feld);
        }
        return alle;
    }

    void druecken(QWidget& feld) {
        letzter_ = feld.window()->objectName().toStdString() + "/" + feld.objectName().toStdString();
        const QPointer<QWidget> da = &feld;
        if (auto* combo = qobject_cast<QComboBox*>(&feld)) {
            QTest::keyClick(combo, eines(2) ? Qt::Key_Down : Qt::Key_Up);
        } else if (auto* regler = qobject_cast<QAbstractSlider*>(&feld)) {
            regler->setValue(regler->minimum() + eines(1 + regler->maximum() - regler->minimum()));
        } else if (auto* text = qobject_cast<QLineEdit*>(&feld)) {
            constexpr Qt::Key TASTEN[] = {Qt::Key_1, Qt::Key_A, Qt::Key_Backspace, Qt::Key_Return,
                                          Qt::Key_Tab};
            text->setFocus();
            QTest::keyClick(text, TASTEN[eines(5)]);
        } else {
            const QPoint von(eines(std::max(1, feld.width())), eines(std::max(1, feld.height())));
            const QPoint nach(eines(std::max(1, feld.width())), eines(std::max(1, feld.height())));
            const auto knopf = eines(4) ? Qt::LeftButton : Qt::RightButton;
            QTest::mousePress(&feld, knopf, {}, von);
            if (da && eines(3) == 0)
                QTest::mouseMove(da, nach);
            if (da)
                QTest::mouseRelease(da, knopf, {}, von);
        }
    }

    void tun() {
        const int was = eines(100);
        if (was < 70) {
            const auto felder = bedienbare();
            if (!felder.empty())
                return druecken(*felder[static_cast<std::size_t>(eines(static_cast<int>(felder.size())))]);
        }
        letzter_ = "pad, time";
        if (was < 80)
            return tastenDruecken(eines(2) ? 0 : std::uint32_t{1} << eines(12));
        if (was < 84) {
            pad_.zustand.dwXpos = static_cast<std::uint32_t>(eines(65536));
            pad_.zustand.dwRpos = static_cast<std::uint32_t>(eines(65536));
            return;
        }
        if (was < 88)
            return schliessen();
        if (was < 91 && (sperrer_.sperrt() || eines(3) == 0)) {
            sperrer_.umschalten();
            gesperrtGewesen_ = true;
            return;
        }
        vergehen(eines(200));
    }

    void schliessen() {
        std::vector<QWidget*> fenster;
        for (auto* eines : QApplication::topLevelWidgets())
            if (eines->isVisible() && eines != &haupt())
                fenster.push_back(eines);
        if (!fenster.empty()) {
            letzter_ = "close";
            eines(fenster)->close();
        }
    }

    /// Only what a run could not keep is told later, at its end.
    void sperreVergessen() {
        if (!sperrer_.sperrt() && !laufFenster())
            gesperrtGewesen_ = false;
    }

    void gang(int schritte) {
        starten();
        for (schritt_ = 0; schritt_ < schritte && !HasFailure(); ++schritt_) {
            tun();
            ereignisse();
            sperrer_.erwarteFrei(letzter_.c_str());
            sperreVergessen();
            if (!haupt().isVisible() && !laufFenster() && bedienbare().empty())
                starten();
        }
        if (sperrer_.sperrt())
            sperrer_.umschalten();
        gesperrtGewesen_ = true;
    }

    std::mt19937 zufall_{GetParam() + static_cast<unsigned>(umgebungszahl("GPK_SAAT", 0))};
    Sperrer sperrer_{datenbank_.pfad()};
    QTimer boxtakt_;
    bool gesperrtGewesen_ = false;
    int schritt_ = 0;
    int boxen_ = 0;
    std::string letzter_;
};

TEST_P(Zufall, WerIrgendwoDruecktFindetNieEineEigeneSperre) {
    gang(umgebungszahl("GPK_SCHRITTE", 400));
    EXPECT_GT(sperrer_.proben(), schritt_ / 4);
    RecordProperty("boxen", boxen_);
    if (std::getenv("GPK_SCHRITTE"))
        std::printf("%d steps, %d boxes, %d looks\n", schritt_, boxen_, sperrer_.proben());
}

INSTANTIATE_TEST_SUITE_P(Gaenge, Zufall, testing::Range(1U, 4U));

} // namespace
