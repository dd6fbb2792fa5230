// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/exchange/Schemafund.h"

#include "base/Ebenennamen.h"
#include "base/LaufzeitFehler.h"
#include "editors/pictures/Bildleser.h"
#include "editors/stick/Ebenenbild.h"
#include "store/db/Datenbank.h"
#include "store/files/Bilddatei.h"
#include "store/schema/Schemauebernahme.h"
#include "store/schema/modLesen.h"

#include <QBuffer>

#include <filesystem>
#include <memory>
#include <utility>

namespace {

std::string endungVon(const Schemabild& bild) {
    return bildendungen()[static_cast<std::size_t>(bild.ebene) * 2 +
                          (bild.seite == Stickseite::Links ? 0 : 1)];
}

QByteArray bytesVon(const std::string& text) {
    return QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
}

std::string alsPng(const QImage& bild) {
    QByteArray bytes;
    QBuffer strom(&bytes);
    strom.open(QIODevice::WriteOnly);
    return bild.convertToFormat(QImage::Format_RGB888).save(&strom, "PNG") ? bytes.toStdString() : "";
}

void weiterOderEnde(const Fortgang& weiter) {
    if (weiter && !weiter())
        throw LaufzeitFehler(Fehlernummer::Abgebrochen, "Abgebrochen.");
}

/// As it will be stored, without what lets through what lies below. A large picture is made small by leaving
/// pixels out first: to look at each of them takes as long as to read it.
QImage verkleinert(const QImage& bild) {
    constexpr int GROB = 3;
    if (bild.isNull())
        return {};
    const auto klein = bild.size().boundedTo(VORSCHAUBILD);
    return bild.scaled(bild.size().boundedTo(klein * GROB))
        .convertToFormat(QImage::Format_RGB32)
        .scaled(klein, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::string bildwort(const Schemabild& bild) {
    std::string wort =
        bild.seite == Stickseite::Links ? "Das Bild zum linken Stick" : "Das Bild zum rechten Stick";
    wort += " auf der Ebene ";
    return wort += EBENENNAMEN[static_cast<std::size_t>(bild.ebene)];
}

Schemadaten datenVon(const Schemaplatz& platz, const std::string& schemaName) {
    Database datenbank = OpenDatabase(platz.datenbankPfad);
    Schemadaten daten;
    datenbank.inEinemLesezug([&] { daten = schemadatenLesen(datenbank, schemaName); });
    daten.achsen = achsenzeileLesen(platz.gamepadXml, schemaName);
    return daten;
}

} // namespace

Schemafund fundInDatei(const std::string& pfad, const Fortgang& weiter) {
    auto paket = schemadateiLesen(pfad);
    Schemafund fund{std::move(paket.name), std::move(paket.programm), std::move(paket.daten), {}, {}};
    for (auto& bild : paket.bilder) {
        weiterOderEnde(weiter);
        const auto endung = endungVon(bild);
        auto png = std::make_shared<const std::string>(std::move(bild.png));
        fund.vorschau[endung] = verkleinert(pngLesen(bytesVon(*png)));
        if (fund.vorschau[endung].isNull())
            throw LaufzeitFehler(Fehlernummer::FalscherTyp, bildwort(bild) + " ist beschädigt oder zu groß.");
        fund.bilder[endung] = [png] { return pngLesen(bytesVon(*png)); };
    }
    return fund;
}

std::vector<std::string> schemataIn(const std::string& datenbankPfad) {
    auto namen = SchemataLesen(datenbankPfad).SchemaNamen;
    namen.pop_back(); // the spare entry is no name
    return namen;
}

Schemaplatz platzNeben(const std::string& datenbankPfad) {
    const auto ordner = std::filesystem::absolute(datenbankPfad).parent_path();
    return {datenbankPfad, (ordner / "Bilder").string(), (ordner / "Gamepad.xml").string()};
}

Schemafund fundInDatenbank(const Schemaplatz& platz, const std::string& schemaName, const Fortgang& weiter) {
    Schemafund fund{schemaName, "", datenVon(platz, schemaName), {}, {}};
    schemadatenPruefen(fund.daten);
    for (const auto& endung : bildendungen()) {
        weiterOderEnde(weiter);
        const auto klein = verkleinert(BildLaden(platz.bilderPfad, schemaName + endung));
        if (klein.isNull())
            continue;
        fund.vorschau[endung] = klein;
        fund.bilder[endung] = [ordner = platz.bilderPfad, name = schemaName + endung] {
            return BildLaden(ordner, name);
        };
    }
    return fund;
}

void fundAufnehmen(const Schemaplatz& platz, const std::string& name, const Schemafund& fund,
                   const Fortgang& weiter) {
    std::vector<std::string> endungen;
    for (const auto& [endung, bild] : fund.bilder)
        endungen.push_back(endung);
    schemaAufnehmen(platz, name, fund.daten, endungen, [&](std::string_view endung) {
        weiterOderEnde(weiter);
        const auto inhalt = bitmap(fund.bilder.at(std::string(endung))());
        if (inhalt.isEmpty())
            throw LaufzeitFehler(Fehlernummer::EinAusgabe,
                                 "Das Bild „" + std::string(endung) + "“ lässt sich nicht mehr lesen.");
        return inhalt.toStdString();
    });
}

Schemapackung schemaPacken(const Schemaplatz& platz, const std::string& schemaName,
                           const std::string& programm, const Fortgang& weiter) {
    Schemapackung packung{{schemaName, programm, datenVon(platz, schemaName), {}}, {}};
    schemadatenPruefen(packung.paket.daten);
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts}) {
            Schemabild bild{ebene, seite, ""};
            const auto name = schemaName + endungVon(bild);
            if (bilddateien(platz.bilderPfad, name).empty())
                continue;
            weiterOderEnde(weiter);
            bild.png = alsPng(BildLaden(platz.bilderPfad, name));
            if (bild.png.empty())
                packung.unlesbareBilder.push_back(name);
            else
                packung.paket.bilder.push_back(std::move(bild));
        }
    return packung;
}
