// Writes the demo catalogue "cintal.mdb" through the store layer: a file row
// for every tape, snapshot, disk and recording of the demo collection under
// its title, a few titles whose files are gone, and the few hundred titles of
// the demo listing pages, imported as a collector would import them. Then
// checks that every picture in the side folders is found by a title as the
// main window looks for it. The same file on every run.
//
//   cintal-demo-catalogue CATALOGUE DEMO_DIR LISTINGS_DIR

#include "DemoDat.h"
#include "ListingPages.h"
#include "acquisition/Scanner.h"
#include "acquisition/WosImporter.h"
#include "catalogue/Comunes.h"
#include "catalogue/Files.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <set>

using namespace cintal;

namespace {

// What the collector noted by hand: the title and release of the files whose
// format carries no archive texts, and corrections to what some tapes say.
// Keyed by the path below the demo folder. A null text was not noted.
struct Noted {
    const char* file;
    const char* title;
    const char* year;
    const char* publisher;
    const char* type;
    int memory;  // 0: not noted
    int players; // 0: not noted
    const char* origin;
    const char* lang;
    const char* joysticks;
    bool ay, multiload;
};
const Noted kNoted[] = {
    {"Juegos/Mision Rescate.z80", "Misión: Rescate?", "1987", "Lince Soft", "Arcade", 48, 1,
     "Original Release", "SPA", "Kempston, Sinclair", false, false},
    {"Juegos/Dragon de Fuego.sna", "Dragón de Fuego", "1986", "Bytes del Sur", "Arcade", 48, 1,
     "Hacked Version", "ENG", "Kempston", false, false},
    {"Juegos/Comando Tigre.z80", "Comando Tigre", "1989", "Topacio Soft", "Arcade", 128, 2,
     "Original Release", "SPA", "Kempston, Sinclair, Cursor", true, true},
    {"Juegos/Cavernas Abisales.slt", "Cavernas Abisales", "1990", "Erizo Soft", "Arcade", 48, 1,
     "Compilation", "POR", "Sinclair", false, true},
    {"Juegos/LABERINT.SP", "Laberinto del Minotauro", "1984", "Microbyte Ediciones", "Puzzle", 48,
     1, "Type-In", "SPA", "", false, false},
    // The same title as the tape in Juegos: one title, files in two folders.
    {"Varios/Castillo Sombrio.z80", "Castillo Sombrío", nullptr, nullptr, nullptr, 48, 1,
     "Re-Release", "ENG", "Kempston", false, false},
    {"Varios/Rally del Desierto.voc", "Rally del Desierto", "1988", "Zafiro Software", "Deporte", 0,
     2, "Magazine Cover Tape", "ITA", nullptr, false, false},
    {"Discos/El Templo Perdido.dsk", "El Templo Perdido", "1990", "Topacio Soft", "Aventur", 128, 1,
     "Original Release", "FRE", "Kempston", true, true},
    {"Discos/Batalla Naval.trd", "Batalla Naval", "1991", "Lince Soft", "Estrate", 128, 2,
     "Demo version", "GER", "Kempston, Sinclair", true, false},
    {"Juegos/RANAS SALTARINAS.tap", nullptr, nullptr, nullptr, nullptr, 48, 1, "Incomplete", "XX",
     nullptr, false, false},
    {"Utilidades/Curso de BASIC.tap", nullptr, nullptr, nullptr, nullptr, 0, 0, "", "SPA", nullptr,
     false, false},
    {"Varios/Tetrix.tap", nullptr, "1990", "Grupo Eco", "Puzzle", 48, 1, "Original Release", "XX",
     nullptr, false, false},
    {"Varios/Roto.tap", nullptr, nullptr, nullptr, nullptr, 0, 0, "Buggered / Corrupt", "", nullptr,
     false, false},
};

const Noted* Find(const QString& relative) {
    for (const Noted& n : kNoted)
        if (relative == QString::fromUtf8(n.file)) return &n;
    return nullptr;
}

// A noted text, or what the file itself said.
QString Or(const char* noted, const QString& otherwise) {
    return noted ? QString::fromUtf8(noted) : otherwise;
}

bool Insert(const QString& sql, const QVariantList& values, qint64* id = nullptr) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, sql, values)) return false;
    if (id) *id = Store::LastInsertId(q);
    return true;
}

// The publisher's IdPub, registered as the scan registers one when new.
qint64 PublisherId(const QString& name) {
    const QString wanted = name.trimmed();
    if (wanted.isEmpty()) return 0;
    if (const qint64 known = Comunes::FindPublisher(wanted); known >= 0) return known;
    const qint64 id = Records::AddPublisher(wanted);
    Comunes::LoadPublishers();
    return id;
}

// The folder's PathIndex, registered as the scan registers one when new.
qint64 PathId(const QString& dir) {
    if (!Records::FindPathIndex(dir)) Records::AddPath(dir);
    return Records::FindPathIndex(dir);
}

qint64 AddTitle(const QString& name, const QString& year, qint64 pub, const QString& type,
                bool haveIt, const QVariant& estado, const QString& author = {}) {
    qint64 id = 0;
    Insert("INSERT INTO Titles (Name, Year, IdPub, Type, HaveIt, Author, Estado) "
           "VALUES (?, ?, ?, ?, ?, ?, ?)",
           {StoredTitleName(name), year.left(4), pub, type.left(7), haveIt ? 1 : 0, author, estado},
           &id);
    return id;
}

QString FromTape(const std::string& cp1252) {
    return Comunes::FromTape(cp1252).trimmed();
}

// A row of tFiles to write; what is left unset is stored as NULL.
struct NewFile {
    qint64 title = 0;
    QString name{}, extension{};
    qint64 path = 0;
    QVariant memory{}, players{}, size{};
    QString origin{}, lang{}, schema{};
    QVariant joysticks{};
    bool ay = false, multiload = false, haveIt = true;
};

bool AddFile(const NewFile& r) {
    return Insert("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, Memory, Players, "
                  "FileSize, Origin, IdLang, LoadSchema, HaveIt, Joysticks, AYSound, MultiLoad) "
                  "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                  {r.title, r.name, r.extension, r.path, r.memory, r.players, r.size, r.origin,
                   r.lang, r.schema, r.haveIt ? 1 : 0, r.joysticks, r.ay ? 1 : 0,
                   r.multiload ? 1 : 0});
}

// Looks for every title's side files from every folder of its files, as the
// main window does, and reports the pictures that no title finds: a name
// that doesn't match its title is a mistake of the demo, not a case to show.
// Counts the titles that have a picture of each kind.
bool CheckSideFiles(const QString& demo, int counts[4]) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT Titles.TitleId, Titles.Name, Paths.GameDir FROM tFiles "
                        "JOIN Titles ON Titles.TitleId = tFiles.TitleId "
                        "JOIN Paths ON Paths.PathIndex = tFiles.PathIndex"))
        return false;
    std::set<QString> found;
    std::set<qint64> titles[4];
    constexpr SideKind kKinds[4] = {SideKind::Screen, SideKind::Inlay, SideKind::Map,
                                    SideKind::CodeSheet};
    while (q.next()) {
        const QString base = SideBaseName(TextOf(q.value(1)));
        for (int kind = 0; kind < 4; ++kind) {
            const QString path = FindSideFile(TextOf(q.value(2)), kKinds[kind], base);
            if (path.isEmpty()) continue;
            found.insert(QFileInfo(path).canonicalFilePath());
            titles[kind].insert(NumberOf(q.value(0)));
        }
    }
    for (int kind = 0; kind < 4; ++kind)
        counts[kind] = static_cast<int>(titles[kind].size());
    static const QStringList kSideFolders = {"scrshot", "inlay", "map", "codesheet"};
    bool ok = true;
    QDirIterator it(demo, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo fi(it.next());
        if (!kSideFolders.contains(fi.dir().dirName(), Qt::CaseInsensitive)) continue;
        if (found.count(fi.canonicalFilePath())) continue;
        std::fprintf(stderr, "Ningún título encuentra %s\n", qPrintable(fi.filePath()));
        ok = false;
    }
    return ok;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 4) {
        std::fprintf(
            stderr, "Uso: cintal-demo-catalogue CATÁLOGO CARPETA_DE_EJEMPLO CARPETA_DE_LISTADOS\n");
        return 2;
    }
    const QString db = QString::fromLocal8Bit(argv[1]);
    const QString demo = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    const QString listings = QDir(QString::fromLocal8Bit(argv[3])).absolutePath();
    QFile::remove(db);
    QString reason;
    if (!Store::CreateEmpty(db, &reason) || !Comunes::InitGlobals(db, &reason)) {
        std::fprintf(stderr, "No se puede crear %s: %s\n", qPrintable(db), qPrintable(reason));
        return 1;
    }
    ScriptedPrompt quiet; // the damaged demo tapes speak up; nobody is there to answer
    PromptScope scope(quiet);
    Store::Begin();

    for (const char* p : listing::kDemoPublishers)
        PublisherId(QString::fromUtf8(p));

    // The tapes come in as a collector's would: through the disk scan.
    Scanner scanner;
    scanner.Run(demo);
    std::printf("Búsqueda en %s: %lld cintas, %lld títulos nuevos, %lld avisos\n", qPrintable(demo),
                static_cast<long long>(scanner.counters.Total),
                static_cast<long long>(scanner.counters.Creada),
                static_cast<long long>(scanner.warnings.size()));

    // Every file of the demo collection under its title: the one its tape
    // names, the one noted for it, or else its file name. Files that name the
    // same title share it, whatever their folders.
    static const QStringList kFormats = {"tzx", "tap", "z80", "sna", "sp",
                                         "voc", "slt", "dsk", "trd"};
    QStringList files;
    QDirIterator it(demo, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    files.sort();
    // Found as the store compares names, ignoring case: "RANAS SALTARINAS.tap"
    // joins the title its tape "Ranas Saltarinas" made.
    auto titleNamed = [](const QString& name) -> qint64 {
        QSqlQuery q = Store::NewQuery();
        Store::Exec(q, "SELECT TitleId FROM Titles WHERE Name = ? ORDER BY TitleId LIMIT 1",
                    {name});
        return q.next() ? NumberOf(q.value(0)) : 0;
    };
    int n = 0;
    for (const QString& file : files) {
        const QFileInfo fi(file);
        const QString ext = fi.suffix().toLower();
        if (!kFormats.contains(ext)) continue;
        const Noted* noted = Find(QDir(demo).relativeFilePath(file));
        const bool tape = ext == "tzx" || ext == "tap";
        TZXTape reader;
        reader.FileName = file.toStdString();
        if (ext == "tzx") reader.ReadTape();
        const ArchiveInfo& info = reader.ArchiveInfo();
        QString name = FromTape(info.iName);
        if (name.isEmpty()) name = fi.completeBaseName();
        if (noted && noted->title) name = QString::fromUtf8(noted->title);
        name = StoredTitleName(name);

        ++n;
        if (ext == "tzx") {
            // Scanned already: only what the collector noted by hand is added.
            const QVariant memory =
                noted && noted->memory ? QVariant(noted->memory) : QVariant(n % 3 == 0 ? 128 : 48);
            Insert(
                "UPDATE tFiles SET Memory = ?, Players = coalesce(?, Players), "
                "Origin = coalesce(?, Origin), IdLang = coalesce(?, IdLang), Joysticks = ?, "
                "AYSound = ?, MultiLoad = ? "
                "WHERE FileName = ? AND Extension = 'tzx' AND PathIndex = ?",
                {memory, noted && noted->players ? QVariant(noted->players) : QVariant(),
                 noted && noted->origin ? QVariant(QString::fromUtf8(noted->origin)) : QVariant(),
                 noted && noted->lang ? QVariant(QString::fromUtf8(noted->lang)) : QVariant(),
                 noted && noted->joysticks ? QVariant(QString::fromUtf8(noted->joysticks))
                                           : QVariant(),
                 noted && noted->ay ? 1 : 0, noted && noted->multiload ? 1 : 0,
                 fi.completeBaseName(), PathId(fi.absolutePath())});
            continue;
        }
        qint64 title = titleNamed(name);
        if (title == 0) {
            const qint64 pub = PublisherId(noted ? Or(noted->publisher, FromTape(info.iPublisher))
                                                 : FromTape(info.iPublisher));
            const QString type = noted && noted->type ? QString::fromUtf8(noted->type)
                                                      : FromTape(info.iType).left(3);
            title = AddTitle(
                name, noted ? Or(noted->year, FromTape(info.iYear)) : FromTape(info.iYear), pub,
                type, true, QVariant(static_cast<int>((n - 1) % 7)), FromTape(info.iAuthor));
        }
        NewFile row;
        row.title = title;
        row.name = fi.completeBaseName();
        row.extension = ext;
        row.path = PathId(fi.absolutePath());
        row.size = fi.size();
        if (noted && noted->memory)
            row.memory = noted->memory;
        else if (tape)
            row.memory = n % 3 == 0 ? 128 : 48;
        if (noted && noted->players) row.players = noted->players;
        row.origin = noted ? Or(noted->origin, FromTape(info.iOrigin)) : FromTape(info.iOrigin);
        const QString lang = FromTape(info.iLang).left(3).toUpper();
        row.lang = noted ? Or(noted->lang, lang) : lang;
        row.schema = FromTape(info.iSchema);
        if (noted && noted->joysticks) row.joysticks = QString::fromUtf8(noted->joysticks);
        row.ay = noted && noted->ay;
        row.multiload = noted && noted->multiload;
        AddFile(row);
    }

    // Titles whose files are gone: the rows are there, the files are not.
    const qint64 lost = AddTitle("Cinta Extraviada", "1986", 3, "Arcade", true, 2);
    AddFile({.title = lost,
             .name = "Cinta Extraviada",
             .extension = "tzx",
             .path = PathId(demo + "/Perdidos")});
    // Its snapshot lost, its screen still beside where it was.
    const qint64 ghost =
        AddTitle("Nave Fantasma", "1988", PublisherId("Zafiro Software"), "Aventur", true, 3);
    AddFile({.title = ghost,
             .name = "Nave Fantasma",
             .extension = "sna",
             .path = PathId(demo + "/Varios"),
             .memory = 48,
             .players = 1,
             .size = 49179,
             .origin = "Re-Release",
             .lang = "POR"});
    // Two rows, neither file on disk. The first is marked as not owned, and
    // the file grid takes its colours from the first row.
    const qint64 sun =
        AddTitle("Guerreros del Sol", "1989", PublisherId("Topacio Soft"), "Arcade", true, 1);
    AddFile({.title = sun,
             .name = "Guerreros del Sol",
             .extension = "tzx",
             .path = PathId(demo + "/Juegos"),
             .memory = 48,
             .players = 2,
             .size = 48211,
             .origin = "Original Release",
             .lang = "SPA",
             .haveIt = false});
    AddFile({.title = sun,
             .name = "Guerreros del Sol",
             .extension = "trd",
             .path = PathId(demo + "/Discos"),
             .memory = 128,
             .players = 2,
             .size = 163840,
             .origin = "Incomplete",
             .lang = ""});

    // The titles the collector doesn't have come from the saved listing
    // pages, through the same import as "Importa listado WOS".
    WosImporter importer;
    if (importer.Run(listings) != WosImporter::Result::Done) {
        std::fprintf(stderr, "No se pudieron importar los listados de %s\n", qPrintable(listings));
        return 1;
    }
    std::printf("Listados de %s: %lld páginas, %lld títulos nuevos, %lld existentes, %lld "
                "avisos\n",
                qPrintable(listings), static_cast<long long>(importer.counters.Paginas),
                static_cast<long long>(importer.counters.Nuevos),
                static_cast<long long>(importer.counters.Existentes),
                static_cast<long long>(importer.warnings.size()));
    if (!Store::Commit()) return 1;
    if (!demo::WriteAndLoadDat(demo, reason)) {
        std::fprintf(stderr, "No se pudo cargar el DAT de ejemplo: %s\n", qPrintable(reason));
        return 1;
    }
    int counts[4] = {};
    const bool matched = CheckSideFiles(demo, counts);
    Store::Close();
    if (!matched) {
        QFile::remove(db);
        return 1;
    }
    std::printf("Catálogo de ejemplo: %s; títulos con pantalla: %d, con encarte: %d, con mapa: "
                "%d, con hoja de códigos: %d\n",
                qPrintable(db), counts[0], counts[1], counts[2], counts[3]);
    return 0;
}
