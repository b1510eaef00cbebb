#include "catalogue/Dats.h"

#include "catalogue/FileHashes.h"
#include "catalogue/Store.h"
#include "platform/Spanish.h"

#include <QHash>
#include <QLocale>

namespace cintal {

int MatchRank(const QString& sha1, const QString& md5, const QString& crc, qint64 size,
              const DatRom& rom) {
    const auto differ = [](const QString& a, const QString& b) {
        return !a.isEmpty() && !b.isEmpty() && a != b;
    };
    if (!sha1.isEmpty() && sha1 == rom.sha1) return 3;
    if (differ(sha1, rom.sha1)) return 0;
    if (!md5.isEmpty() && md5 == rom.md5) return 2;
    if (differ(md5, rom.md5)) return 0;
    if (!crc.isEmpty() && crc == rom.crc32 && size == rom.size) return 1;
    return 0;
}

QString HaveReport::Percent() const {
    const double share = lines.empty() ? 0.0 : 100.0 * double(have) / double(lines.size());
    return SpanishLocale().toString(share, 'f', 1);
}

namespace {

QVariant OrNull(const QString& text) {
    return text.isEmpty() ? QVariant() : QVariant(text);
}

struct Rom {
    qint64 id, datId;
    DatRom hashes;
};

struct FileKey {
    qint64 fileId, size;
    QString crc32, md5, sha1;
};

struct Match {
    qint64 datId, romId;
    int rank;
};

// Every rom the file is, each by the strongest hash they share.
std::vector<Match> Matches(const FileKey& f, const std::vector<const Rom*>& candidates) {
    std::vector<Match> found;
    for (const Rom* r : candidates)
        if (const int rank = MatchRank(f.sha1, f.md5, f.crc32, f.size, r->hashes); rank > 0)
            found.push_back({r->datId, r->id, rank});
    return found;
}

Rom RomOf(const QSqlQuery& q) {
    Rom r{NumberOf(q.value(0)), NumberOf(q.value(1)), {}};
    r.hashes.size = q.value(2).isNull() ? -1 : NumberOf(q.value(2));
    r.hashes.crc32 = TextOf(q.value(3));
    r.hashes.md5 = TextOf(q.value(4));
    r.hashes.sha1 = TextOf(q.value(5));
    return r;
}

FileKey FileOf(const QSqlQuery& q) {
    return {NumberOf(q.value(0)), NumberOf(q.value(1)), TextOf(q.value(2)).toLower(),
            TextOf(q.value(3)).toLower(), TextOf(q.value(4)).toLower()};
}

bool Keep(qint64 fileId, const std::vector<Match>& matches) {
    for (const Match& m : matches)
        if (!Store::Run("INSERT OR IGNORE INTO FileMatches (FileId, DatId, RomId, Rank) "
                        "VALUES (?, ?, ?, ?)",
                        {fileId, m.datId, m.romId, m.rank}))
            return false;
    return true;
}

bool IdentifyAll() {
    std::vector<Rom> roms;
    {
        QSqlQuery q = Store::NewQuery();
        if (!Store::Exec(q, "SELECT RomId, DatId, Size, Crc32, Md5, Sha1 FROM DatRoms"))
            return false;
        while (q.next())
            roms.push_back(RomOf(q));
    }
    QHash<QString, std::vector<const Rom*>> bySha1, byMd5, byCrc;
    for (const Rom& r : roms) {
        if (!r.hashes.sha1.isEmpty()) bySha1[r.hashes.sha1].push_back(&r);
        if (!r.hashes.md5.isEmpty()) byMd5[r.hashes.md5].push_back(&r);
        if (!r.hashes.crc32.isEmpty())
            byCrc[r.hashes.crc32 + u':' + QString::number(r.hashes.size)].push_back(&r);
    }
    std::vector<FileKey> files;
    {
        QSqlQuery q = Store::NewQuery();
        if (!Store::Exec(q, "SELECT FileId, FileSize, Crc32, Md5, Sha1 FROM tFiles")) return false;
        while (q.next())
            files.push_back(FileOf(q));
    }
    if (!Store::Run("DELETE FROM FileMatches")) return false;
    std::vector<const Rom*> candidates;
    for (const FileKey& f : files) {
        candidates.clear();
        const auto add = [&](const QHash<QString, std::vector<const Rom*>>& map,
                             const QString& key) {
            if (key.isEmpty()) return;
            if (const auto found = map.constFind(key); found != map.cend())
                candidates.insert(candidates.end(), found->begin(), found->end());
        };
        add(bySha1, f.sha1);
        add(byMd5, f.md5);
        if (!f.crc32.isEmpty()) add(byCrc, f.crc32 + u':' + QString::number(f.size));
        if (!candidates.empty() && !Keep(f.fileId, Matches(f, candidates))) return false;
    }
    return true;
}

} // namespace

namespace Dats {

bool Add(const Dat& dat, qint64* id) {
    if (!Store::Begin()) return false;
    const auto fail = [] {
        Store::Rollback();
        return false;
    };
    for (const char* sql :
         {"DELETE FROM FileMatches WHERE DatId IN (SELECT DatId FROM Dats WHERE Name = ?)",
          "DELETE FROM DatRoms WHERE DatId IN (SELECT DatId FROM Dats WHERE Name = ?)",
          "DELETE FROM DatGames WHERE DatId IN (SELECT DatId FROM Dats WHERE Name = ?)",
          "DELETE FROM Dats WHERE Name = ?"})
        if (!Store::Run(QString::fromLatin1(sql), {dat.name})) return fail();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q,
                     "INSERT INTO Dats (Name, Description, Version, Category) VALUES (?, ?, ?, ?)",
                     {dat.name, dat.description, dat.version, dat.category}))
        return fail();
    const qint64 datId = Store::LastInsertId(q);
    for (const DatGame& g : dat.games) {
        QSqlQuery* game =
            Store::Cached("INSERT INTO DatGames (DatId, Name) VALUES (?, ?)", {datId, g.name});
        if (!game) return fail();
        const qint64 gameId = Store::LastInsertId(*game);
        game->finish();
        for (const DatRom& r : g.roms)
            if (!Store::Run("INSERT INTO DatRoms (GameId, DatId, Name, Size, Crc32, Md5, Sha1) "
                            "VALUES (?, ?, ?, ?, ?, ?, ?)",
                            {gameId, datId, r.name, r.size < 0 ? QVariant() : QVariant(r.size),
                             OrNull(r.crc32), OrNull(r.md5), OrNull(r.sha1)}))
                return fail();
    }
    if (!IdentifyAll() || !Store::Commit()) return fail();
    if (id) *id = datId;
    return true;
}

std::optional<std::vector<DatInfo>> List() {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT d.DatId, d.Name, d.Version, (SELECT count(*) FROM DatGames g "
                        "WHERE g.DatId = d.DatId) FROM Dats d ORDER BY d.DatId"))
        return std::nullopt;
    std::vector<DatInfo> dats;
    while (q.next())
        dats.push_back(
            {NumberOf(q.value(0)), TextOf(q.value(1)), TextOf(q.value(2)), NumberOf(q.value(3))});
    return dats;
}

bool Remove(qint64 id, bool& found) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT count(*) FROM Dats WHERE DatId = ?", {id}) || !q.next())
        return false;
    found = NumberOf(q.value(0)) > 0;
    q.finish();
    if (!found) return true;
    if (!Store::Begin()) return false;
    for (const char* sql :
         {"DELETE FROM FileMatches WHERE DatId = ?", "DELETE FROM DatRoms WHERE DatId = ?",
          "DELETE FROM DatGames WHERE DatId = ?", "DELETE FROM Dats WHERE DatId = ?"})
        if (!Store::Run(QString::fromLatin1(sql), {id})) {
            Store::Rollback();
            return false;
        }
    return Store::Commit();
}

bool Identify() {
    if (!Store::Begin()) return false;
    if (!IdentifyAll()) {
        Store::Rollback();
        return false;
    }
    return Store::Commit();
}

bool IdentifyFile(qint64 fileId, const platform::ContentHashes& h, bool newRow) {
    const FileKey f{fileId, h.size, h.crc32.toLower(), h.md5.toLower(), h.sha1.toLower()};
    QSqlQuery* q =
        Store::Cached("SELECT RomId, DatId, Size, Crc32, Md5, Sha1 FROM DatRoms WHERE Sha1 = ? "
                      "UNION SELECT RomId, DatId, Size, Crc32, Md5, Sha1 FROM DatRoms "
                      "WHERE Md5 = ? UNION SELECT RomId, DatId, Size, Crc32, Md5, Sha1 "
                      "FROM DatRoms WHERE Crc32 = ? AND Size = ?",
                      {OrNull(f.sha1), OrNull(f.md5), OrNull(f.crc32), f.size});
    if (!q) return false;
    std::vector<Rom> roms;
    while (q->next())
        roms.push_back(RomOf(*q));
    q->finish();
    std::vector<const Rom*> candidates;
    for (const Rom& r : roms)
        candidates.push_back(&r);
    return (newRow || Store::Run("DELETE FROM FileMatches WHERE FileId = ?", {fileId})) &&
           Keep(fileId, Matches(f, candidates));
}

std::optional<std::vector<Identified>> Identifications() {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT f.FileId, f.PathIndex, f.FileName, f.Extension, f.InnerPath, "
                        "g.Name, d.Name FROM tFiles f "
                        "LEFT JOIN FileMatches m ON m.FileId = f.FileId AND m.RomId = "
                        "(SELECT RomId FROM FileMatches WHERE FileId = f.FileId "
                        "ORDER BY DatId, Rank DESC, RomId LIMIT 1) "
                        "LEFT JOIN DatRoms r ON r.RomId = m.RomId "
                        "LEFT JOIN DatGames g ON g.GameId = r.GameId "
                        "LEFT JOIN Dats d ON d.DatId = m.DatId ORDER BY f.FileId"))
        return std::nullopt;
    std::vector<Identified> rows;
    platform::EntryFinder finder;
    while (q.next())
        rows.push_back({NumberOf(q.value(0)),
                        FileHashes::RowPath(NumberOf(q.value(1)), TextOf(q.value(2)),
                                            TextOf(q.value(3)), TextOf(q.value(4)), &finder),
                        TextOf(q.value(5)), TextOf(q.value(6))});
    return rows;
}

std::optional<QSet<qint64>> TitlesWithUnknownFiles() {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT DISTINCT f.TitleId FROM tFiles f WHERE NOT EXISTS "
                        "(SELECT 1 FROM FileMatches m WHERE m.FileId = f.FileId)"))
        return std::nullopt;
    QSet<qint64> titles;
    while (q.next())
        titles.insert(NumberOf(q.value(0)));
    return titles;
}

std::optional<HaveReport> Report(const QString& datName, bool& found) {
    HaveReport report;
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT DatId, Name FROM Dats WHERE Name = ? ORDER BY DatId DESC",
                     {datName}))
        return std::nullopt;
    found = q.next();
    if (!found) return report;
    const qint64 datId = NumberOf(q.value(0));
    report.dat = TextOf(q.value(1));
    q.finish();
    // A game is had when every one of its roms is: the line shows the file
    // of its first.
    if (!Store::Exec(q,
                     "SELECT g.GameId, g.Name, r.RomId, r.Name, f.FileId, f.PathIndex, "
                     "f.FileName, f.Extension, f.InnerPath FROM DatGames g "
                     "LEFT JOIN DatRoms r ON r.GameId = g.GameId "
                     // Only rows that still stand: deleting a file row leaves its matches.
                     "LEFT JOIN (SELECT x.RomId, min(x.FileId) AS FileId FROM FileMatches x "
                     "JOIN tFiles t ON t.FileId = x.FileId WHERE x.DatId = ? GROUP BY x.RomId) m "
                     "ON m.RomId = r.RomId "
                     "LEFT JOIN tFiles f ON f.FileId = m.FileId "
                     "WHERE g.DatId = ? ORDER BY g.GameId, r.RomId",
                     {datId, datId}))
        return std::nullopt;
    qint64 lastGame = -1;
    bool whole = false;
    const auto close = [&] {
        if (lastGame < 0) return;
        if (whole)
            ++report.have;
        else
            report.lines.back().path.clear(), report.lines.back().fileId = 0;
    };
    platform::EntryFinder finder;
    while (q.next()) {
        const qint64 gameId = NumberOf(q.value(0));
        const bool had = !q.value(4).isNull();
        if (gameId != lastGame) {
            close();
            lastGame = gameId;
            whole = had;
            HaveLine line{TextOf(q.value(1)),
                          {},
                          TextOf(q.value(8)),
                          NumberOf(q.value(4)),
                          TextOf(q.value(3))};
            if (had)
                line.path = FileHashes::RowPath(NumberOf(q.value(5)), TextOf(q.value(6)),
                                                TextOf(q.value(7)), line.innerPath, &finder);
            report.lines.push_back(std::move(line));
        } else {
            whole = whole && had;
        }
    }
    close();
    return report;
}

QString Csv(const HaveReport& report) {
    const auto cell = [](const QString& text) {
        if (!text.contains(u';') && !text.contains(u'"') && !text.contains(u'\n')) return text;
        return u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"';
    };
    QString csv = QStringLiteral("Estado;Juego;Ruta\r\n");
    for (const HaveLine& l : report.lines)
        csv += (l.path.isEmpty() ? QStringLiteral("Falta") : QStringLiteral("Tengo")) + u';' +
               cell(l.game) + u';' + cell(l.path) + QStringLiteral("\r\n");
    return csv;
}

} // namespace Dats

} // namespace cintal
