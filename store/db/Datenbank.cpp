// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Datenbank.h"

#include "store/db/Verbindung.h"

std::string anweisung(std::string_view bisZumNamen, std::string_view name, std::string_view danach) {
    if (name.find('\'') != std::string_view::npos)
        throw LaufzeitFehler(Fehlernummer::Syntax, "Syntaxfehler in der Datenbankabfrage: der Name „" +
                                                       std::string(name) + "“ enthält einen Apostroph.");
    std::string text(bisZumNamen);
    text += name;
    text += danach;
    return text;
}

Database OpenDatabase(const std::string& pfad) {
    return {std::make_shared<Verbindung>(pfad), Dateiteil::Erste};
}

Database::Database(std::shared_ptr<Verbindung> verbindung, Dateiteil teil)
    : verbindung_(std::move(verbindung)), teil_(teil) {}
Database::Database(Database&&) noexcept = default;

Database& Database::operator=(Database&& andere) noexcept {
    if (this != &andere) {
        Close();
        verbindung_ = std::move(andere.verbindung_);
        teil_ = andere.teil_;
    }
    return *this;
}

Database::~Database() {
    Close();
}

Database Database::danebenOeffnen(const std::string& pfad) {
    const Dateiteil teil = offen().danebenOeffnen(pfad);
    return Database(verbindung_, teil);
}

Recordset Database::OpenRecordset(std::string_view source, std::initializer_list<std::string_view> spalten) {
    offen();
    return {verbindung_, teil_, source, spalten};
}

std::string Database::hinweis() {
    return offen().hinweis();
}

std::string Database::abbild() {
    return offen().abbild();
}

void Database::fortgangFragen(const Fortgang& weiter) {
    offen().fortgangFragen(weiter);
}

void Database::ohneVorlauf() noexcept {
    if (verbindung_)
        verbindung_->ohneVorlauf();
}

bool Database::istDieselbeDatei(const Database& andere) const {
    return verbindung_ == andere.verbindung_ && teil_ == andere.teil_;
}

void Database::Close() {
    if (verbindung_)
        verbindung_->schliessen(); // sets may still hold the connection: they find it closed
    verbindung_.reset();
}

Verbindung& Database::offen() const {
    if (!verbindung_)
        throw LaufzeitFehler(Fehlernummer::ObjektGeschlossen, "Die Datenbank ist geschlossen.");
    return *verbindung_;
}

void Database::beginnen() {
    offen().beginnen();
}
void Database::festschreiben() {
    offen().festschreiben();
}

void Database::verwerfen() noexcept {
    if (verbindung_)
        verbindung_->verwerfen();
}

void Database::mitschreiben() {
    offen().mitschreiben();
}

Zeilenschritt Database::mitgeschriebenes() {
    return offen().mitgeschriebenes();
}

void Database::mitschriftVerwerfen() noexcept {
    if (verbindung_)
        verbindung_->mitschriftVerwerfen();
}

void Database::lesenBeginnen() {
    offen().lesenBeginnen();
}
void Database::lesenBeenden() noexcept {
    if (verbindung_)
        verbindung_->lesenBeenden();
}
