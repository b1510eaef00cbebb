#pragma once
// The DAT files in the store, which of their roms each catalogued file is,
// and what the collection has and lacks of each.

#include "catalogue/DatFile.h"
#include "platform/Hashes.h"

#include <QSet>
#include <QString>
#include <optional>
#include <vector>

namespace cintal {

struct DatInfo {
    qint64 id = 0;
    QString name, version;
    qint64 entries = 0; // games
};

// A file row and the game it is in the first DAT that knows it.
struct Identified {
    qint64 fileId = 0;
    QString path;      // as FileHashes::RowPath gives it
    QString game, dat; // empty when no DAT knows the file
};

struct HaveLine {
    QString game;
    QString path; // the file that is its first rom; empty when it's missing
    QString innerPath;
    qint64 fileId = 0;
    QString romName;
};

struct HaveReport {
    QString dat;
    std::vector<HaveLine> lines; // in the DAT's order
    qint64 have = 0;
    // "66,7": the share held, with one decimal.
    QString Percent() const;
};

// How a file's hashes meet a rom's: 3 by SHA1, 2 by MD5, 1 by CRC32 and
// size, 0 not at all. A stronger hash that both have and that differs
// rules out a match by a weaker one.
int MatchRank(const QString& fileSha1, const QString& fileMd5, const QString& fileCrc,
              qint64 fileSize, const DatRom& rom);

namespace Dats {

// Keeps the DAT, in place of the one of the same name if there was one, and
// identifies every file against the DATs again: all of it or nothing.
bool Add(const Dat& dat, qint64* id = nullptr);
std::optional<std::vector<DatInfo>> List();
// found says whether there was such a DAT.
bool Remove(qint64 id, bool& found);

// Every file row matched again against every DAT.
bool Identify();
// One file row matched again, after its hashes changed to these; a new row
// has no matches to forget.
bool IdentifyFile(qint64 fileId, const platform::ContentHashes& hashes, bool newRow = false);

// Every file row, by FileId, with what it is.
std::optional<std::vector<Identified>> Identifications();

// The titles with a file that no DAT knows; nothing after a store failure.
std::optional<QSet<qint64>> TitlesWithUnknownFiles();

// The games of the DAT of that name (ignoring case), each had or missing;
// found says whether there was such a DAT.
std::optional<HaveReport> Report(const QString& datName, bool& found);
// The report as CSV: "Estado;Juego;Ruta" and a line per game.
QString Csv(const HaveReport& report);

} // namespace Dats

} // namespace cintal
