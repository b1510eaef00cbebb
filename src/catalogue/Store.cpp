#include "catalogue/Store.h"

#include "platform/ErrorText.h"
#include "tape/Prompt.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSqlError>
#include <QStringList>
#include <iterator>
#include <memory>
#include <vector>

namespace cintal {

namespace {

const char* kConnection = "cintal";

// Text columns that the program compares or sorts fold case, as the store
// the collection came from did.
const char* kSchema[] = {
    "CREATE TABLE Titles ("
    " TitleId INTEGER PRIMARY KEY AUTOINCREMENT,"
    " Name TEXT COLLATE NOCASE,"
    " Year TEXT,"
    " IdPub INTEGER DEFAULT 0,"
    " Type TEXT,"
    " HaveIt INTEGER DEFAULT 0,"
    " Author TEXT,"
    " Estado INTEGER DEFAULT 0,"
    " OrigenInfo INTEGER DEFAULT 0,"
    " Currah TEXT)",
    "CREATE TABLE tFiles ("
    " FileId INTEGER PRIMARY KEY AUTOINCREMENT,"
    " TitleId INTEGER DEFAULT 0,"
    " FileName TEXT COLLATE NOCASE,"
    " Extension TEXT COLLATE NOCASE,"
    " PathIndex INTEGER DEFAULT 0,"
    " Origscreen INTEGER DEFAULT 0,"
    " Memory INTEGER,"
    " Players INTEGER,"
    " FileSize INTEGER,"
    " Origin TEXT,"
    " IdLang TEXT,"
    " LoadSchema TEXT,"
    " HaveIt INTEGER DEFAULT 0,"
    " Joysticks TEXT,"
    " AYSound INTEGER DEFAULT 0,"
    " MultiLoad INTEGER DEFAULT 0,"
    " InnerPath TEXT,"
    " Crc32 TEXT,"
    " Md5 TEXT,"
    " Sha1 TEXT,"
    " DiskSize INTEGER,"
    " DiskTime INTEGER)",
    "CREATE TABLE Paths (PathIndex INTEGER PRIMARY KEY, GameDir TEXT COLLATE NOCASE)",
    "CREATE TABLE Publishers (IdPub INTEGER PRIMARY KEY, PublisherName TEXT COLLATE NOCASE)",
    "CREATE INDEX tFilesTitle ON tFiles (TitleId)",
    "CREATE INDEX tFilesFile ON tFiles (FileName, Extension, PathIndex)",
    "CREATE INDEX TitlesNamePub ON Titles (Name, IdPub)",
};

// The DAT files loaded, their games and roms, and which rom each file row
// is. Catalogues made before them gain them quietly: nothing else changes.
const char* kDatSchema[] = {
    "CREATE TABLE IF NOT EXISTS Dats (DatId INTEGER PRIMARY KEY AUTOINCREMENT,"
    " Name TEXT COLLATE NOCASE, Description TEXT, Version TEXT, Category TEXT)",
    "CREATE TABLE IF NOT EXISTS DatGames (GameId INTEGER PRIMARY KEY AUTOINCREMENT,"
    " DatId INTEGER, Name TEXT)",
    "CREATE TABLE IF NOT EXISTS DatRoms (RomId INTEGER PRIMARY KEY AUTOINCREMENT,"
    " GameId INTEGER, DatId INTEGER, Name TEXT, Size INTEGER, Crc32 TEXT, Md5 TEXT, Sha1 TEXT)",
    "CREATE TABLE IF NOT EXISTS FileMatches (FileId INTEGER, DatId INTEGER, RomId INTEGER,"
    " Rank INTEGER, PRIMARY KEY (FileId, RomId))",
    "CREATE INDEX IF NOT EXISTS DatGamesDat ON DatGames (DatId)",
    "CREATE INDEX IF NOT EXISTS DatRomsGame ON DatRoms (GameId)",
    "CREATE INDEX IF NOT EXISTS DatRomsDat ON DatRoms (DatId)",
    "CREATE INDEX IF NOT EXISTS DatRomsSha1 ON DatRoms (Sha1)",
    "CREATE INDEX IF NOT EXISTS DatRomsMd5 ON DatRoms (Md5)",
    "CREATE INDEX IF NOT EXISTS DatRomsCrc ON DatRoms (Crc32, Size)",
    "CREATE INDEX IF NOT EXISTS FileMatchesDat ON FileMatches (DatId)",
    "CREATE INDEX IF NOT EXISTS FileMatchesRom ON FileMatches (RomId)",
};

// Statements kept prepared, by their text. They belong to the connection and
// go before it closes.
QHash<QString, QSqlQuery*> prepared;

// Qt spells out a placeholder's name for every value bound by position, which
// costs more than running a look-up: the kept statements name theirs once.
QString Placeholder(int i) {
    static QStringList names;
    while (names.size() <= i)
        names << QStringLiteral(":v%1").arg(names.size());
    return names[i];
}

// The statement with each "?" named in order. The program's statements hold
// no "?" inside a quoted text.
QString Named(const QString& sql) {
    QString named;
    int n = 0;
    for (const QChar c : sql) {
        if (c == QLatin1Char('?'))
            named += Placeholder(n++);
        else
            named += c;
    }
    return named;
}

bool quiet = false;
QString lastError;
int failures = 0;
int depth = 0;

const QStringList kTables = {"Titles", "tFiles", "Paths", "Publishers"};

// Columns that catalogues made before files inside archives and content
// hashes lack. InnerPath is the path inside the archive that FileName and
// Extension name (empty for a plain file); DiskSize and DiskTime are the size
// and modification time on disk when the hashes were taken.
const char* kLaterColumns[][2] = {
    {"InnerPath", "TEXT"}, {"Crc32", "TEXT"},       {"Md5", "TEXT"},
    {"Sha1", "TEXT"},      {"DiskSize", "INTEGER"}, {"DiskTime", "INTEGER"},
};

// Adds what an old catalogue lacks, all or nothing. upgraded says whether
// anything was added.
bool Upgrade(QSqlDatabase& db, bool& upgraded, QString* reason) {
    upgraded = false;
    QSqlQuery q(db);
    if (!q.exec("PRAGMA table_info(tFiles)")) {
        if (reason) *reason = ErrorText(q.lastError());
        return false;
    }
    QStringList have;
    while (q.next())
        have << q.value(1).toString().toLower();
    q.finish();
    QStringList missing;
    for (const auto& c : kLaterColumns)
        if (!have.contains(QString::fromLatin1(c[0]).toLower()))
            missing << QStringLiteral("ALTER TABLE tFiles ADD COLUMN %1 %2").arg(c[0], c[1]);
    if (!q.exec(
            "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'FileMatches'") ||
        !q.next()) {
        if (reason) *reason = ErrorText(q.lastError());
        return false;
    }
    const bool datTables = q.value(0).toInt() > 0;
    q.finish();
    const bool columns = !missing.isEmpty();
    if (!datTables)
        for (const char* sql : kDatSchema)
            missing << QString::fromLatin1(sql);
    if (missing.isEmpty()) return true;
    if (!db.transaction()) {
        if (reason) *reason = ErrorText(db.lastError());
        return false;
    }
    for (const QString& sql : std::as_const(missing)) {
        if (!q.exec(sql)) {
            if (reason) *reason = ErrorText(q.lastError());
            q.finish();
            db.rollback();
            return false;
        }
    }
    q.finish();
    if (!db.commit()) {
        if (reason) *reason = ErrorText(db.lastError());
        db.rollback();
        return false;
    }
    upgraded = columns;
    return true;
}

bool Pragmas(const QSqlDatabase& db, QString* reason) {
    QSqlQuery q(db);
    for (const char* p :
         {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL", "PRAGMA busy_timeout=5000"}) {
        if (!q.exec(QString::fromLatin1(p))) {
            if (reason) *reason = ErrorText(q.lastError());
            return false;
        }
    }
    return true;
}

} // namespace

bool Store::CreateEmpty(const QString& path, QString* reason) {
    if (QFileInfo::exists(path)) {
        if (reason) *reason = QStringLiteral("ya existe el archivo");
        return false;
    }
    // The user's data folder of an installed program may not exist yet.
    QDir().mkpath(QFileInfo(path).absolutePath());
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "cintal-create");
        db.setDatabaseName(path);
        if (!db.open()) {
            if (reason) *reason = ErrorText(db.lastError());
            ok = false;
        } else {
            QSqlQuery q(db);
            db.transaction();
            std::vector<const char*> all(std::begin(kSchema), std::end(kSchema));
            all.insert(all.end(), std::begin(kDatSchema), std::end(kDatSchema));
            for (const char* sql : all) {
                if (!q.exec(QString::fromLatin1(sql))) {
                    if (reason) *reason = ErrorText(q.lastError());
                    ok = false;
                    break;
                }
            }
            if (ok)
                db.commit();
            else
                db.rollback();
            q.finish();
            db.close();
        }
    }
    QSqlDatabase::removeDatabase("cintal-create");
    if (!ok) QFile::remove(path);
    return ok;
}

bool Store::Open(const QString& path, QString* reason) {
    Close();
    // The driver would quietly make a missing file: look first.
    QFileInfo info(path);
    if (!info.exists() || !info.isFile()) {
        if (reason) *reason = QStringLiteral("no existe el archivo");
        return false;
    }
    QString why;
    bool upgraded = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", kConnection);
        db.setDatabaseName(path);
        if (!db.open()) {
            why = ErrorText(db.lastError());
        } else {
            QSqlQuery q(db);
            QStringList found;
            if (!q.exec("SELECT name FROM sqlite_master WHERE type = 'table'")) {
                why = ErrorText(q.lastError());
            } else {
                while (q.next())
                    found << q.value(0).toString().toLower();
                for (const QString& t : kTables) {
                    if (!found.contains(t.toLower())) {
                        why = QStringLiteral("falta la tabla %1").arg(t);
                        break;
                    }
                }
            }
            q.finish();
            if (why.isEmpty()) Pragmas(db, &why);
            if (why.isEmpty()) Upgrade(db, upgraded, &why);
        }
    }
    if (why.isEmpty()) {
        if (upgraded)
            Ask("El catálogo se ha puesto al día: ahora guarda los archivos que hay dentro de "
                "archivos comprimidos y el tamaño, CRC32, MD5 y SHA1 de cada archivo.",
                {}, Icon::Information);
        return true;
    }
    if (reason) *reason = why;
    Close();
    return false;
}

void Store::Close() {
    depth = 0;
    qDeleteAll(prepared);
    prepared.clear();
    if (QSqlDatabase::contains(kConnection)) {
        {
            QSqlDatabase db = QSqlDatabase::database(kConnection, false);
            if (db.isOpen()) db.close();
        }
        QSqlDatabase::removeDatabase(kConnection);
    }
}

bool Store::IsOpen() {
    return QSqlDatabase::contains(kConnection) &&
           QSqlDatabase::database(kConnection, false).isOpen();
}

QSqlDatabase Store::Db() {
    return QSqlDatabase::database(kConnection, false);
}

QSqlQuery Store::NewQuery() {
    QSqlQuery q(Db());
    q.setForwardOnly(true);
    return q;
}

bool Store::Exec(QSqlQuery& query, const QString& sql, const QVariantList& values) {
    if (!IsOpen()) {
        ReportError(QStringLiteral("el catálogo no está abierto"));
        return false;
    }
    if (!query.prepare(sql)) {
        ReportError(ErrorText(query.lastError()));
        return false;
    }
    for (const QVariant& v : values)
        query.addBindValue(v);
    if (!query.exec()) {
        ReportError(ErrorText(query.lastError()));
        return false;
    }
    return true;
}

bool Store::Run(const QString& sql, const QVariantList& values) {
    QSqlQuery* q = Cached(sql, values);
    if (!q) return false;
    q->finish();
    return true;
}

QSqlQuery* Store::Cached(const QString& sql, const QVariantList& values) {
    QSqlQuery* q = prepared.value(sql);
    if (!q) {
        if (!IsOpen()) {
            ReportError(QStringLiteral("el catálogo no está abierto"));
            return nullptr;
        }
        auto made = std::make_unique<QSqlQuery>(Db());
        made->setForwardOnly(true);
        if (!made->prepare(Named(sql))) {
            ReportError(ErrorText(made->lastError()));
            return nullptr;
        }
        q = made.release();
        prepared.insert(sql, q);
    }
    for (int i = 0; i < values.size(); ++i)
        q->bindValue(Placeholder(i), values[i]);
    if (!q->exec()) {
        ReportError(ErrorText(q->lastError()));
        q->finish();
        return nullptr;
    }
    return q;
}

qint64 Store::LastInsertId(const QSqlQuery& query) {
    return query.lastInsertId().toLongLong();
}

// Transactions nest: the rows of one scanned file go in one transaction,
// and the register operations it calls may open their own inside it.
bool Store::Begin() {
    if (depth++ > 0) return true;
    if (!Db().transaction()) {
        depth = 0;
        ReportError(ErrorText(Db().lastError()));
        return false;
    }
    return true;
}

bool Store::Commit() {
    if (depth == 0) return true;
    if (--depth > 0) return true;
    if (!Db().commit()) {
        ReportError(ErrorText(Db().lastError()));
        Db().rollback();
        return false;
    }
    return true;
}

void Store::Rollback() {
    if (depth == 0) return;
    depth = 0;
    Db().rollback();
}

QString Store::LastError() {
    return lastError;
}

int Store::Failures() {
    return failures;
}

QuietErrors::QuietErrors() : previous(quiet) {
    quiet = true;
}

QuietErrors::~QuietErrors() {
    quiet = previous;
}

void Store::ReportError(const QString& reason) {
    lastError = reason;
    ++failures;
    if (quiet) return;
    Ask(("Error en el catálogo: " + reason).toStdString(), {}, Icon::Critical);
}

} // namespace cintal
