// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/StoerVfs.h"

#include <sqlite3.h>

#include <csignal>
#include <limits>
#include <unistd.h>

struct StoerVfs::Innen {
    sqlite3_vfs vfs{};
    sqlite3_vfs* echt = nullptr;
    int nochBis = std::numeric_limits<int>::max(); ///< steps until it begins; 0 or less: it has begun
    Eingriff eingriff = Eingriff::Defekt;
    int gesichert = 0;
    int gesperrt = 0;

    /// Counts a step; true when the disk steps in at it.
    bool schritt() { return --nochBis <= 0; }
};

namespace {

using Innen = StoerVfs::Innen;

/// Our file; the real one lies behind it in the same block of memory.
struct Datei {
    sqlite3_file kopf;
    Innen* innen;
    sqlite3_file* echt;
};

Datei& datei(sqlite3_file* f) {
    return *reinterpret_cast<Datei*>(f);
}
sqlite3_file* echt(sqlite3_file* f) {
    return datei(f).echt;
}
Innen& innen(sqlite3_vfs* vfs) {
    return *static_cast<Innen*>(vfs->pAppData);
}

/// The answer to a step at which the disk steps in, other than a write.
int antwort(Innen& i, int sonst) {
    if (i.eingriff == StoerVfs::Eingriff::Toeten)
        ::kill(::getpid(), SIGKILL);
    return sonst;
}

int schreiben(sqlite3_file* f, const void* daten, int laenge, sqlite3_int64 stelle) {
    Innen& i = *datei(f).innen;
    if (!i.schritt())
        return echt(f)->pMethods->xWrite(echt(f), daten, laenge, stelle);
    if (i.eingriff == StoerVfs::Eingriff::Voll)
        return SQLITE_FULL;
    if (i.eingriff == StoerVfs::Eingriff::Toeten)
        echt(f)->pMethods->xWrite(echt(f), daten, laenge / 2, stelle);
    return antwort(i, SQLITE_IOERR_WRITE);
}

/// Steps other than a write go on working on a full disk.
bool tritt(Innen& i) {
    return i.schritt() && i.eingriff != StoerVfs::Eingriff::Voll;
}

int kuerzen(sqlite3_file* f, sqlite3_int64 laenge) {
    if (tritt(*datei(f).innen))
        return antwort(*datei(f).innen, SQLITE_IOERR_TRUNCATE);
    return echt(f)->pMethods->xTruncate(echt(f), laenge);
}

int sichern(sqlite3_file* f, int art) {
    ++datei(f).innen->gesichert;
    if (tritt(*datei(f).innen))
        return antwort(*datei(f).innen, SQLITE_IOERR_FSYNC);
    return echt(f)->pMethods->xSync(echt(f), art);
}

int loeschen(sqlite3_vfs* vfs, const char* name, int ordnerSichern) {
    if (tritt(innen(vfs)))
        return antwort(innen(vfs), SQLITE_IOERR_DELETE);
    return innen(vfs).echt->xDelete(innen(vfs).echt, name, ordnerSichern);
}

int schliessen(sqlite3_file* f) {
    return echt(f)->pMethods->xClose(echt(f));
}
int lesen(sqlite3_file* f, void* ziel, int laenge, sqlite3_int64 stelle) {
    return echt(f)->pMethods->xRead(echt(f), ziel, laenge, stelle);
}
int groesse(sqlite3_file* f, sqlite3_int64* ziel) {
    return echt(f)->pMethods->xFileSize(echt(f), ziel);
}
int sperren(sqlite3_file* f, int art) {
    ++datei(f).innen->gesperrt;
    return echt(f)->pMethods->xLock(echt(f), art);
}
int entsperren(sqlite3_file* f, int art) {
    return echt(f)->pMethods->xUnlock(echt(f), art);
}
int gesperrt(sqlite3_file* f, int* ziel) {
    return echt(f)->pMethods->xCheckReservedLock(echt(f), ziel);
}
int steuern(sqlite3_file* f, int was, void* ziel) {
    return echt(f)->pMethods->xFileControl(echt(f), was, ziel);
}
int sektor(sqlite3_file* f) {
    return echt(f)->pMethods->xSectorSize(echt(f));
}
int eigenschaften(sqlite3_file* f) {
    return echt(f)->pMethods->xDeviceCharacteristics(echt(f));
}

constexpr sqlite3_io_methods METHODEN{
    1,       schliessen, lesen,         schreiben, kuerzen, sichern, groesse, sperren, entsperren, gesperrt,
    steuern, sektor,     eigenschaften, nullptr,   nullptr, nullptr, nullptr, nullptr, nullptr};

int oeffnen(sqlite3_vfs* vfs, const char* name, sqlite3_file* f, int art, int* artDanach) {
    Datei& neu = datei(f);
    neu.innen = &innen(vfs);
    neu.echt = reinterpret_cast<sqlite3_file*>(&neu + 1);
    const int nummer = innen(vfs).echt->xOpen(innen(vfs).echt, name, neu.echt, art, artDanach);
    neu.kopf.pMethods = neu.echt->pMethods ? &METHODEN : nullptr;
    return nummer;
}

} // namespace

StoerVfs::StoerVfs() : innen_(std::make_unique<Innen>()) {
    innen_->echt = sqlite3_vfs_find(nullptr);
    innen_->vfs = *innen_->echt;
    innen_->vfs.zName = "stoerung";
    innen_->vfs.pNext = nullptr;
    innen_->vfs.pAppData = innen_.get();
    innen_->vfs.szOsFile = static_cast<int>(sizeof(Datei)) + innen_->echt->szOsFile;
    innen_->vfs.xOpen = oeffnen;
    innen_->vfs.xDelete = loeschen;
    sqlite3_vfs_register(&innen_->vfs, 1);
}

StoerVfs::~StoerVfs() {
    sqlite3_vfs_unregister(&innen_->vfs);
}

void StoerVfs::stoereAb(int n, Eingriff eingriff) {
    innen_->nochBis = n;
    innen_->eingriff = eingriff;
}

void StoerVfs::stoereNicht() {
    innen_->nochBis = std::numeric_limits<int>::max();
}
bool StoerVfs::hatGestoert() const {
    return innen_->nochBis <= 0;
}
int StoerVfs::gesichert() const {
    return innen_->gesichert;
}
int StoerVfs::gesperrt() const {
    return innen_->gesperrt;
}
