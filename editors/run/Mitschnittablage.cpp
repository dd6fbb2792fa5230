// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Mitschnittablage.h"

#include "editors/common/Formhilfen.h"
#include "editors/common/Nebenarbeit.h"
#include "engine/mitschnitt/Laufmitschnitt.h"
#include "engine/mitschnitt/Mitschnitttext.h"
#include "engine/run/GobalVariable.h"
#include "store/files/Dateiersatz.h"

#include <QDateTime>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view ENDUNG = ".spur";
constexpr const char* ORDNER = "Mitschnitte";
constexpr std::string_view ZEITPUNKT = "yyyy-MM-dd HH.mm.ss"; // as the toolkit writes it

// A file name has 255 bytes; date, number, ending and what a replacement appends take the rest.
constexpr std::size_t HOECHSTLAENGE = 160;

// What some file system or shell takes for something else.
constexpr std::string_view UNTAUGLICH = "/\\:*?\"<>|";

bool tauglich(char zeichen) {
    const auto byte = static_cast<unsigned char>(zeichen);
    return byte >= ' ' && byte != 0x7f && UNTAUGLICH.find(zeichen) == std::string_view::npos;
}

// Not in the middle of a letter.
std::string gekuerzt(std::string text, std::size_t laenge) {
    if (text.size() <= laenge)
        return text;
    while (laenge > 0 && (static_cast<unsigned char>(text[laenge]) & 0xC0U) == 0x80U)
        --laenge;
    text.resize(laenge);
    return text;
}

// Takes the name, so that nobody else's file has it; false with errno where that can't be.
bool belegt(const fs::path& pfad) {
    const int deskriptor = open(pfad.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (deskriptor < 0)
        return false;
    close(deskriptor);
    return true;
}

Mitschnittablauf misslungen(const QString& grund) {
    return {"", "Der Mitschnitt ist nicht gespeichert: " + grund};
}

QString systemgrund(int nummer) {
    switch (nummer) {
    case ENOSPC:
    case EDQUOT:
        return "Der Datenträger ist voll.";
    case EACCES:
    case EPERM:
    case EROFS:
        return QString("In den Ordner „%1“ darf nicht geschrieben werden.").arg(ORDNER);
    case ENOTDIR:
        return QString("„%1“ ist kein Ordner.").arg(ORDNER);
    default:
        return QString("Das System meldet „%1“.")
            .arg(QString::fromStdString(std::generic_category().message(nummer)));
    }
}

Mitschnittablauf abgelegt(const std::string& ordner, const std::string& name, const std::string& inhalt) {
    if (inhalt.empty())
        return misslungen("Es ist nichts aufgenommen.");
    return mitschnittAblegen(ordner, name, inhalt);
}

/// What the name of a record of this `Schema` begins with.
std::string namensanfang(const std::string& schema) {
    auto name = schema;
    for (auto& zeichen : name)
        if (!tauglich(zeichen))
            zeichen = '_';
    name = gekuerzt(std::move(name), HOECHSTLAENGE);
    if (name.empty() || name.front() == '.' || name.front() == '-')
        name.insert(name.begin(), '_'); // else it hides, or is an option of a command
    return name + " ";
}

struct Fund {
    Mitschnittdatei datei;
    int nummer = 1; ///< of those of one second
};

/// A name as mitschnittname and mitschnittAblegen make them; `rest` is what follows the name of the `Schema`.
std::optional<Fund> fundAus(const fs::path& pfad, const std::string& rest) {
    static const std::regex FORM(R"((\d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d)(?: \(([1-9]\d?)\))?\.spur)");
    std::smatch teile;
    if (!std::regex_match(rest, teile, FORM))
        return std::nullopt;
    return Fund{{pfad.string(), teile[1]}, teile[2].matched ? std::stoi(teile[2]) : 1};
}

std::vector<Fund> gleichnamige(const fs::path& ordner, const std::string& anfang) {
    std::vector<Fund> gefundene;
    std::error_code grund;
    for (fs::directory_iterator stelle(ordner, grund), ende; !grund && stelle != ende;
         stelle.increment(grund)) {
        const auto name = stelle->path().filename().string();
        std::error_code keine;
        if (!name.starts_with(anfang) || !stelle->is_regular_file(keine))
            continue;
        if (auto fund = fundAus(stelle->path(), name.substr(anfang.size())))
            gefundene.push_back(std::move(*fund));
    }
    return gefundene;
}

bool beginntMit(const std::string& pfad, const std::string& erwartetes) {
    std::ifstream strom(pfad, std::ios::binary);
    std::string anfang(erwartetes.size(), '\0');
    return strom.read(anfang.data(), static_cast<std::streamsize>(anfang.size())) && anfang == erwartetes;
}

} // namespace

std::string mitschnittordner(const std::string& datenbankPfad) {
    return (fs::path(datenbankPfad).parent_path() / ORDNER).string();
}

std::string mitschnittname(const std::string& schema, const std::string& zeitpunkt) {
    return namensanfang(schema) + zeitpunkt + std::string(ENDUNG);
}

std::optional<Mitschnittdatei> letzterMitschnitt(const std::string& ordner, const std::string& schema) {
    auto gefundene = gleichnamige(ordner, namensanfang(schema));
    std::ranges::sort(gefundene, std::greater(),
                      [](const auto& fund) { return std::pair(fund.datei.zeitpunkt, fund.nummer); });
    // Two `Schema`s may share the name of a file, not the first line.
    const auto eigener = std::ranges::find_if(
        gefundene, [&](const auto& fund) { return beginntMit(fund.datei.pfad, mitschnittkennung(schema)); });
    return eigener != gefundene.end() ? std::optional(eigener->datei) : std::nullopt;
}

Mitschnittablauf mitschnittAblegen(const std::string& ordner, const std::string& name,
                                   const std::string& inhalt) {
    std::error_code grund;
    fs::create_directories(ordner, grund);
    if (grund)
        return misslungen(systemgrund(grund.value()));
    const auto stamm = name.substr(0, name.size() - ENDUNG.size());
    constexpr int VERSUCHE = 99;
    auto gewaehlt = name;
    for (int nummer = 2; !belegt(fs::path(ordner) / gewaehlt); ++nummer) {
        if (errno != EEXIST || nummer > VERSUCHE)
            return misslungen(systemgrund(errno));
        gewaehlt = stamm + " (" + std::to_string(nummer) + ")" + std::string(ENDUNG);
    }
    const auto pfad = fs::path(ordner) / gewaehlt;
    errno = 0;
    if (!dateiErsetzen(pfad.string(), inhalt)) {
        const int nummer = errno;
        fs::remove(pfad, grund); // what took its name
        return misslungen(nummer != 0 ? systemgrund(nummer) : QString("Der Datenträger nimmt ihn nicht an."));
    }
    return {qt(gewaehlt), ""};
}

Mitschnittablage::Mitschnittablage(Laufmitschnitt& mitschnitt, const GobalVariable& global)
    : mitschnitt_(mitschnitt), global_(global), schreiber_(new Nebenarbeit(this)) {}

Mitschnittablage::~Mitschnittablage() = default;

namespace {

struct Ablageauftrag {
    std::string ordner;
    std::string name;
    std::function<std::string()> text;

    Mitschnittablauf ausfuehren() const { return abgelegt(ordner, name, text()); }
};

Ablageauftrag auftrag(Laufmitschnitt& mitschnitt, const GobalVariable& global) {
    const auto jetzt = QDateTime::currentDateTime();
    return {mitschnittordner(global.DatenbankPfad),
            mitschnittname(mitschnitt.schema(), jetzt.toString(qt(ZEITPUNKT)).toStdString()),
            mitschnitt.abzug(jetzt.toString(Qt::ISODate).toStdString())};
}

} // namespace

void Mitschnittablage::speichern() {
    if (unterwegs_)
        return;
    unterwegs_ = true;
    const auto ablauf = std::make_shared<Mitschnittablauf>(misslungen("Der Speicher reicht nicht."));
    schreiber_->auftrag(
        [einer = auftrag(mitschnitt_, global_), ablauf] {
            *ablauf = einer.ausfuehren();
            return ablauf->fehler.isEmpty();
        },
        [this, ablauf](bool) {
            unterwegs_ = false;
            emit fertig(ablauf->name, ablauf->fehler);
        });
}

Mitschnittablauf Mitschnittablage::gleichSpeichern() {
    schreiber_->ausarbeiten();
    try {
        return auftrag(mitschnitt_, global_).ausfuehren();
    } catch (const std::bad_alloc&) {
        return misslungen("Der Speicher reicht nicht.");
    }
}

void Mitschnittablage::ausarbeiten() {
    schreiber_->ausarbeiten();
}
