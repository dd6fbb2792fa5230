// SPDX-License-Identifier: GPL-3.0-or-later
// The forms on screens of several sizes, scales and window managers: each is wholly in sight, beside what
// opened it where there is room.
//
// Scale and screen are the application's for its life: each test has an X server and an application of its
// own.
#include "app/Anwendung.h"
#include "editors/common/Fensterplatz.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Fensterverwalter.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/XServer.h"

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int GEDULD_MS = 20000;
constexpr int LEISTENHOEHE = 48;
constexpr const char* KLAPPKNOPF = "Command1(1)"; // of a run: its window unfolds

enum class Verwaltung { Ohne, Openbox, OpenboxMitLeiste };
constexpr const char* VERWALTUNGEN[] = {"ohne", "Openbox", "OpenboxMitLeiste"};

struct Bildschirm {
    int breite;
    int hoehe;
    const char* masstab;
    Verwaltung verwaltung;
};
void PrintTo(const Bildschirm& schirm, std::ostream* strom) {
    *strom << schirm.breite << " by " << schirm.hoehe << ", scale " << schirm.masstab << ", "
           << VERWALTUNGEN[static_cast<int>(schirm.verwaltung)];
}
std::string bildschirmname(const Bildschirm& schirm) {
    std::string masstab = schirm.masstab;
    std::ranges::replace(masstab, '.', '_');
    return std::to_string(schirm.breite) + "Mal" + masstab +
           VERWALTUNGEN[static_cast<int>(schirm.verwaltung)];
}

std::vector<Bildschirm> alleBildschirme() {
    std::vector<Bildschirm> alle;
    for (const auto& [breite, hoehe] : {std::pair{1366, 768}, {1920, 1080}})
        for (const char* masstab : {"1", "1.5", "2"})
            for (const auto verwaltung :
                 {Verwaltung::Ohne, Verwaltung::Openbox, Verwaltung::OpenboxMitLeiste})
                alle.push_back({breite, hoehe, masstab, verwaltung});
    return alle;
}

/// The screen, who manages its windows, and the application there.
class Schreibtisch {
protected:
    explicit Schreibtisch(const Bildschirm& schirm)
        : server_(std::to_string(schirm.breite) + "x" + std::to_string(schirm.hoehe) + "x24") {
        if (schirm.verwaltung != Verwaltung::Ohne)
            verwalter_.emplace(server_.anzeige());
        if (schirm.verwaltung == Verwaltung::OpenboxMitLeiste)
            leiste_.emplace(server_.anzeige(), LEISTENHOEHE);
        qputenv("DISPLAY", server_.anzeige().c_str());
        qunsetenv("WAYLAND_DISPLAY");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("QT_SCALE_FACTOR", schirm.masstab);
        anwendung_.emplace(anzahl_, worte_);
        QApplication::setQuitOnLastWindowClosed(false);
    }

    XServer server_;
    std::optional<Fensterverwalter> verwalter_;
    std::optional<Leiste> leiste_;

private:
    int anzahl_ = 1;
    char name_[5] = "test";
    char* worte_[2] = {name_, nullptr};
    std::optional<Anwendung> anwendung_;
};

/// Counts how often a window changes its size while it is in sight.
class Groessenzaehler final : public QObject {
public:
    explicit Groessenzaehler(QWidget& form) : letzte_(form.size()) { form.installEventFilter(this); }
    bool eventFilter(QObject* form, QEvent* ereignis) override {
        if (ereignis->type() == QEvent::Resize && static_cast<QWidget*>(form)->isVisible())
            zaehlen(static_cast<QResizeEvent*>(ereignis)->size());
        return false;
    }
    int anzahl = 0;

private:
    void zaehlen(QSize groesse) {
        if (!gleichGross(groesse, letzte_)) // not what the scale rounds
            ++anzahl;
        letzte_ = groesse;
    }
    QSize letzte_;
};

/// A form and the button that opens it.
struct Formweg {
    const char* form;
    const char* knopf;
};
constexpr Formweg VOM_HAUPT[] = {{"frmJoyKonfic", "Command1(0)"}, {"frmJust", "Command1(1)"},
                                 {"frmJustr", "Command1(6)"},     {"SchubreglerKonfic", "Command4"},
                                 {"AchzenKalib", "Command3"},     {"Uebersicht", nullptr}};

class Fenster : private Schreibtisch, public Formtest, public ::testing::WithParamInterface<Bildschirm> {
protected:
    Fenster() : Schreibtisch(GetParam()) {
        Schemabau schema(datenbank_);
        schema.anlegen();
        Schemabau linien(datenbank_);
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            linien
                .ebenenlinien(seite, 1,
                              {{{20000, 45000, 21000, 46000},
                                {20000, 45000, 21000, 46000},
                                {20000, 45000, 21000, 46000}}})
                .leereLinienAb(seite, 2);
        linien.ergaenzen();
        starten();
        erwarteImBild(haupt());
    }

    static QWidget* offene(const QString& name) {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        return nullptr;
    }
    QWidget& oeffnen(const Formweg& weg) {
        if (weg.knopf)
            control<QPushButton>(haupt(), weg.knopf).click();
        else
            emit programm_->hauptform().uebersichtGewuenscht();
        return gezeigt(weg.form);
    }
    static QWidget& gezeigt(const char* name) {
        auto* form = offene(name);
        if (!form)
            throw std::runtime_error(std::string("no form ") + name);
        return *form;
    }

    QRect frei() const { return QGuiApplication::primaryScreen()->availableGeometry(); }
    /// The form is wholly on the free part of the screen, with its frame; by what the server says, too.
    void erwarteImBild(QWidget& form) {
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form, GEDULD_MS));
        const auto drin = [&] { return frei().contains(form.frameGeometry()) && serverSiehtEsGanz(form); };
        EXPECT_TRUE(QTest::qWaitFor(drin, GEDULD_MS)) << lage(form);
    }
    bool serverSiehtEsGanz(QWidget& form) const {
        const auto lage = fensterlage(server_.anzeige(), form.winId());
        const int leiste = leiste_ ? LEISTENHOEHE : 0;
        return lage.links >= 0 && lage.oben >= 0 && lage.links + lage.breite <= GetParam().breite &&
               lage.oben + lage.hoehe <= GetParam().hoehe - leiste;
    }
    std::string lage(const QWidget& form) const {
        const auto text = [](const QRect& r) {
            return QString("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).toStdString();
        };
        const auto dort = fensterlage(server_.anzeige(), const_cast<QWidget&>(form).winId());
        return form.objectName().toStdString() + " at " + text(form.frameGeometry()) + " on " + text(frei()) +
               ", by the server at " + text({dort.links, dort.oben, dort.breite, dort.hoehe});
    }

    /// Whether `form` would fit on one side of `oeffner`.
    bool platzNeben(const QWidget& oeffner, const QWidget& form) const {
        const auto dort = oeffner.frameGeometry();
        const auto groesse = form.frameGeometry().size();
        return groesse.width() <= std::max(frei().right() - dort.right(), dort.left() - frei().left()) ||
               groesse.height() <= std::max(frei().bottom() - dort.bottom(), dort.top() - frei().top());
    }
    /// Whether the screen has room for every form beside the main form.
    static bool istGross() { return GetParam().breite == 1920 && std::string(GetParam().masstab) == "1"; }

    static bool erreichbar(QWidget& form, QScrollArea* bereich, const QWidget& control, QPoint punkt) {
        if (!bereich)
            return form.rect().contains(control.mapTo(&form, punkt));
        const auto ort = control.mapTo(bereich->widget(), punkt);
        bereich->ensureVisible(ort.x(), ort.y(), 1, 1);
        return bereich->viewport()->rect().contains(control.mapTo(bereich->viewport(), punkt));
    }

    /// A form rolls only the way in which it has no room, with its bars.
    void erwarteNurNoetigeBalken(const QWidget& form, QScrollArea& bereich) const {
        auto& quer = *bereich.horizontalScrollBar();
        auto& hoch = *bereich.verticalScrollBar();
        const auto rahmen = form.frameGeometry().size() - form.size();
        const auto platz = frei().size() - rahmen - QSize(2, 2); // what the scale rounds
        const auto noetig = bereich.widget()->minimumSize();
        if (noetig.width() + hoch.sizeHint().width() <= platz.width()) {
            EXPECT_EQ(quer.maximum(), 0) << lage(form);
        }
        if (noetig.height() + quer.sizeHint().height() <= platz.height()) {
            EXPECT_EQ(hoch.maximum(), 0) << lage(form);
        }
    }

    /// Everything that takes the focus can be brought into sight, and shows its whole text.
    void erwarteErreichbar(QWidget& form) {
        auto* bereich = form.findChild<QScrollArea*>("Rollbereich");
        if (bereich)
            erwarteNurNoetigeBalken(form, *bereich);
        for (auto* control : form.findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus || !control->isVisible() || control == bereich)
                continue;
            for (const auto ecke : {control->rect().topLeft(), control->rect().bottomRight()})
                EXPECT_TRUE(erreichbar(form, bereich, *control, ecke))
                    << control->objectName().toStdString() << " of " << lage(form);
        }
        EXPECT_TRUE(beschnittene(form).empty()) << beschnittene(form)[0] << " of " << lage(form);
    }

    /// Both panels slide up, and what lies on them is on the plane.
    void erwarteTafelnErreichbar(QWidget& editor) {
        const auto& ebene = control<QWidget>(editor, "Stickebene");
        for (const char* name : {"Frame2", "Frame3"}) {
            auto& tafel = control<QWidget>(editor, name);
            EXPECT_TRUE(ebene.rect().contains(tafel.geometry())) << name << " as a strip";
            EXPECT_GE(tafel.height(), 11) << name;
            EXPECT_TRUE(frei().contains({tafel.mapToGlobal(QPoint()), tafel.size()})) << name;
            QMouseEvent bewegt(QEvent::MouseMove, QPointF(5, 5), tafel.mapToGlobal(QPointF(5, 5)),
                               Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(&tafel, &bewegt);
            vergehen(500);
            EXPECT_TRUE(ebene.rect().contains(tafel.geometry())) << name << " open";
            for (auto* control : tafel.findChildren<QWidget*>())
                EXPECT_TRUE(control->isHidden() ||
                            tafel.rect().contains({control->mapTo(&tafel, QPoint()), control->size()}))
                    << control->objectName().toStdString();
            EXPECT_TRUE(beschnittene(tafel).empty()) << beschnittene(tafel)[0];
        }
        EXPECT_FALSE(control<QWidget>(editor, "Frame2")
                         .geometry()
                         .intersects(control<QWidget>(editor, "Frame3").geometry()));
    }
};

class Stickeditor : public Fenster {};
class Formen : public Fenster {};

} // namespace

INSTANTIATE_TEST_SUITE_P(, Stickeditor, ::testing::ValuesIn(alleBildschirme()),
                         [](const auto& fall) { return bildschirmname(fall.param); });

TEST_P(Stickeditor, PasstMitBeidenStreifenAufDenSchirm) {
    for (const auto& weg : {VOM_HAUPT[1], VOM_HAUPT[2]}) {
        auto& editor = oeffnen(weg);
        const Groessenzaehler zaehler(editor);
        erwarteImBild(editor);
        EXPECT_LE(zaehler.anzahl, 1) << "its own frame may be wider than that of the main form";
        erwarteTafelnErreichbar(editor);
        const auto schirm = QGuiApplication::primaryScreen()->size();
        // The panels' width counts more than the shape; a pixel at each side may be rounding.
        if (editor.width() > editor.minimumWidth()) {
            EXPECT_NEAR(double(editor.width()) * schirm.height() / schirm.width(), editor.height(), 2)
                << lage(editor);
        }
        editor.close();
        ereignisse();
    }
}

INSTANTIATE_TEST_SUITE_P(, Formen, ::testing::ValuesIn(alleBildschirme()),
                         [](const auto& fall) { return bildschirmname(fall.param); });

TEST_P(Formen, LiegenNebenDemOeffnerWoPlatzIst) {
    int daneben = 0;
    for (const auto& weg : VOM_HAUPT) {
        auto& form = oeffnen(weg);
        erwarteImBild(form);
        const bool getrennt = !form.frameGeometry().intersects(haupt().frameGeometry());
        EXPECT_TRUE(getrennt || !platzNeben(haupt(), form)) << lage(form) << ", opened by " << lage(haupt());
        daneben += getrennt ? 1 : 0;
        form.close();
        ereignisse();
    }
    if (istGross()) {
        EXPECT_EQ(daneben, std::size(VOM_HAUPT));
    }
}

TEST_P(Formen, MehrereUeberdeckenSichNichtWoPlatzIst) {
    std::vector<QWidget*> offene{&haupt()};
    for (const auto* name : {"SchubreglerKonfic", "AchzenKalib"}) {
        offene.push_back(&oeffnen(*std::ranges::find(VOM_HAUPT, std::string(name), &Formweg::form)));
        erwarteImBild(*offene.back());
    }
    for (const auto* eine : offene)
        for (const auto* andere : offene)
            if (istGross() && eine != andere) {
                EXPECT_FALSE(eine->frameGeometry().intersects(andere->frameGeometry()))
                    << lage(*eine) << "; " << lage(*andere);
            }
}

TEST_P(Formen, SindGanzErreichbar) {
    erwarteErreichbar(haupt());
    for (const auto& weg : VOM_HAUPT) {
        auto& form = oeffnen(weg);
        erwarteImBild(form);
        if (!form.findChild<QWidget*>("Stickebene"))
            erwarteErreichbar(form);
        form.close();
        ereignisse();
    }
}

TEST_P(Formen, AuchBilderUndLaufStehenGanzAufDemSchirm) {
    auto& editor = oeffnen(VOM_HAUPT[1]);
    erwarteImBild(editor);
    control<QPushButton>(editor, "Command1(2)").click();
    auto& bilder = gezeigt("ScreenChecken");
    erwarteImBild(bilder);
    erwarteErreichbar(bilder);
    const auto& rahmen = control<QWidget>(bilder, "Shape1");
    const auto& bild = control<QWidget>(bilder, "Image1(0)");
    EXPECT_EQ(rahmen.parentWidget(), bild.parentWidget()) << "it goes along where the form rolls";
    EXPECT_TRUE(rahmen.geometry().contains(bild.geometry()));
    bilder.close();
    ereignisse();
    erwarteImBild(editor);
    control<QPushButton>(editor, "Command1(1)").click();
    auto& lauf = gezeigt("LaufFenster");
    erwarteImBild(lauf);
    EXPECT_TRUE(!lauf.frameGeometry().intersects(editor.frameGeometry()) || !platzNeben(editor, lauf))
        << lage(lauf) << ", opened by " << lage(editor);
    lauf.move(lauf.x(), frei().bottom() + 1 - lauf.frameGeometry().height());
    erwarteImBild(lauf);
    erwarteErreichbar(lauf);
    control<QPushButton>(lauf, KLAPPKNOPF).click();
    ereignisse();
    EXPECT_TRUE(control<QWidget>(lauf, "Text2").isVisible());
    erwarteImBild(lauf);
    erwarteErreichbar(lauf);
    control<QPushButton>(editor, "Command1(0)").click();
    ereignisse();
    erwarteImBild(haupt());
}

namespace {

class Minimiert : public Fenster {
protected:
    /// Whether the line of the pad looks at it.
    static bool fragt(QWidget& form) {
        return form.findChild<QWidget*>("Padzeile")->findChild<QTimer*>()->isActive();
    }
    void erwarteNurInSichtFragend(QWidget& form) {
        erwarteImBild(form);
        EXPECT_TRUE(fragt(form)) << lage(form);
        form.showMinimized();
        EXPECT_TRUE(QTest::qWaitFor([&] { return form.isMinimized() && !fragt(form); }, GEDULD_MS))
            << lage(form);
        form.showNormal();
        EXPECT_TRUE(QTest::qWaitFor([&] { return fragt(form); }, GEDULD_MS)) << lage(form);
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, Minimiert, ::testing::Values(Bildschirm{1366, 768, "1", Verwaltung::Openbox}),
                         [](const auto& fall) { return bildschirmname(fall.param); });

TEST_P(Minimiert, FragtKeineFormNachDemPad) {
    erwarteNurInSichtFragend(oeffnen(VOM_HAUPT[4]));
    auto& editor = oeffnen(VOM_HAUPT[1]);
    erwarteNurInSichtFragend(editor);
    control<QPushButton>(editor, "Command1(1)").click();
    erwarteNurInSichtFragend(gezeigt("LaufFenster"));
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    return RUN_ALL_TESTS();
}
