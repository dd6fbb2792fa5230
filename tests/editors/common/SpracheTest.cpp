// SPDX-License-Identifier: GPL-3.0-or-later
// German throughout, in whatever locale the session is: the tests of `Landessprache` run in this process and,
// each time in another locale, in processes of their own, together with forms that show and store numbers.
#include "app/Sprache.h"
#include "editors/common/Formhilfen.h"
#include "tests/editors/common/Formtest.h"

#include <QCoreApplication>
#include <QDate>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QProcess>

#include <clocale>
#include <cstdlib>

namespace {

constexpr const char* VERLANGTE = "GPK_TEST_LOCALE"; // names the locale to the process of its own

QStringList texteDesKontextmenues() {
    QLineEdit feld;
    const std::unique_ptr<QMenu> menue(feld.createStandardContextMenu());
    QStringList texte;
    for (const auto* eintrag : menue->actions())
        if (!eintrag->isSeparator())
            texte << eintrag->text().section('\t', 0, 0);
    return texte;
}

/// The texts of the buttons of the one box that `zeigen` shows.
template <class Zeigen> QStringList knopftexte(Zeigen&& zeigen) {
    QStringList texte;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        for (const auto* knopf : box->buttons())
            texte << knopf->text();
        box->reject();
    });
    takt.start(0);
    zeigen();
    return texte;
}

} // namespace

TEST(Landessprache, DerProzessHatDieVerlangteLocale) {
    const QByteArray eigene = std::setlocale(LC_TIME, nullptr);
    EXPECT_EQ(eigene, qEnvironmentVariableIsSet(VERLANGTE) ? qgetenv(VERLANGTE) : eigene);
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST(Landessprache, KnoepfeSindDeutsch) {
    EXPECT_EQ(knopftexte([] { frage(nullptr, "?", ""); }), (QStringList{"&Ja", "&Nein"}));
    EXPECT_EQ(knopftexte([] { meldung(nullptr, "!", ""); }), QStringList{"OK"});
}

TEST(Landessprache, KontextmenuesSindDeutsch) {
    EXPECT_EQ(texteDesKontextmenues(), (QStringList{"&Rückgängig", "Wieder&herstellen", "&Ausschneiden",
                                                    "&Kopieren", "Einf&ügen", "Löschen", "Alles auswählen"}));
}

TEST(Landessprache, ZahlenUndTageWerdenGeschriebenWieInDeutschland) {
    EXPECT_EQ(QLocale().toString(1234567.5, 'f', 2), "1.234.567,50");
    EXPECT_EQ(QLocale().toString(QDate(2024, 3, 9), QLocale::ShortFormat), "09.03.24");
    QLineEdit feld;
    EXPECT_EQ(feld.locale(), QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(feld.layoutDirection(), Qt::LeftToRight);
}

TEST(Landessprache, DieFunktionenVonCSchreibenUndLesenDenPunkt) {
    EXPECT_EQ(std::strtod("2.5", nullptr), 2.5);
    EXPECT_EQ(std::to_string(2.5), "2.500000");
    EXPECT_EQ(QString::asprintf("%.1f", 2.5), "2.5");
}

TEST(Sprache, OhneDasPaketMitDenUebersetzungenBleibtAllesAndereDeutsch) {
    const Testordner leer;
    QLocale::setDefault(QLocale::c());
    const Sprache sprache(QString::fromStdString(leer.pfad().string()));
    EXPECT_FALSE(sprache.uebersetzt());
    EXPECT_EQ(QLocale().toString(0.5), "0,5");
}

TEST(Sprache, DasPaketIstDa) {
    EXPECT_TRUE(Sprache(Sprache::uebersetzungen()).uebersetzt());
}

namespace {

class InDerLocale : public ::testing::TestWithParam<const char*> {
protected:
    /// Makes the locale where only this test finds it; gives what the environment then has to say.
    QProcessEnvironment umgebung() {
        const QString name = GetParam();
        auto umgebung = QProcessEnvironment::systemEnvironment();
        umgebung.insert("LC_ALL", name);
        umgebung.insert(VERLANGTE, name);
        for (const auto* geerbt : {"GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX", "LANGUAGE"})
            umgebung.remove(geerbt);
        if (name.startsWith("C"))
            return umgebung;
        const auto ordner = QString::fromStdString(ordner_.pfad().string());
        umgebung.insert("LOCPATH", ordner);
        EXPECT_EQ(QProcess::execute("localedef", {"-i", name.section('.', 0, 0), "-f", "UTF-8",
                                                  "--no-archive", ordner + "/" + name}),
                  0);
        return umgebung;
    }

private:
    Testordner ordner_;
};

} // namespace

TEST_P(InDerLocale, IstAllesWieInJederAnderen) {
    QProcess kind;
    kind.setProcessEnvironment(umgebung());
    kind.setProcessChannelMode(QProcess::MergedChannels);
    kind.start(QCoreApplication::applicationFilePath(),
               {"--gtest_filter=Landessprache.*:UebersichtForm.*Dateidialog*:LaufFensterForm."
                "BehaeltDieLeisten*:SchubreglerAktionTest.EinHierGemachter*"});
    ASSERT_TRUE(kind.waitForFinished(120000));
    const auto ausgabe = kind.readAll();
    EXPECT_EQ(kind.exitCode(), 0) << ausgabe.toStdString();
    EXPECT_TRUE(ausgabe.contains("[  PASSED  ]")) << ausgabe.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Jede, InDerLocale,
                         ::testing::Values("C", "C.UTF-8", "en_US.UTF-8", "de_DE.UTF-8", "ar_EG.UTF-8"));
