// Writes the demo catalogue "cintal.mdb" through the store layer: a title and
// a file row for every tape of the demo collection, and a few hundred more
// titles, owned or not, with every source code, accents, apostrophes and
// double quotes. The same file on every run.
//
//   cintal-demo-catalogue CATALOGUE DEMO_DIR

#include "catalogue/Comunes.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "tape/Cp1252.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <map>

using namespace cintal;

namespace {

const char* kPublishers[] = {
    "Dinamic",         "Topo Soft",   "Ópera Soft", "Zigurat",       "Erbe",
    "Made in Spain",   "Iber Soft",   "Positive",   "System 4",      "MCM",
    "Ocean",           "Imagine",     "Gremlin",    "Hewson",        "Mastertronic",
    "Codemasters",     "Firebird",    "Bug-Byte",   "Quicksilva",    "Durell",
    "Melbourne House", "Microsphere", "Hi-Tec",     "Ediciones Año", "Software Niño",
};

const char* kFirst[] = {"El Castillo", "La Cripta",    "Operación", "Misión",     "El Secreto",
                        "La Leyenda",  "Comando",      "Galaxia",   "Ciudad",     "El Valle",
                        "Star",        "Dragon",       "Cosmic",    "Jungle",     "Turbo",
                        "Mega",        "Dr. Wilson's", "Jack's",    "L'Aventure", "Capitán"};
const char* kSecond[] = {"Perdida", "del Dragón", "Tormenta", "Sombría", "de Cristal",
                         "Maldita", "Núñez",      "Force",    "Quest",   "Runner",
                         "Patrol",  "Escape",     "Revenge",  "Island",  "Fever",
                         "Ñu",      "Año Cero",   "2",        "10",      "de Hierro"};
const char* kTypes[] = {"Arcade",  "Aventur", "Estrate", "Deporte",
                        "Utilida", "Puzzle",  "Simulad", "Educati"};

// A small deterministic sequence, so that every run writes the same rows.
unsigned next = 12345;
unsigned Rand(unsigned n) {
    next = next * 1103515245u + 12345u;
    return (next >> 16) % n;
}

bool Insert(const QString& sql, const QVariantList& values, qint64* id = nullptr) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, sql, values)) return false;
    if (id) *id = Store::LastInsertId(q);
    return true;
}

qint64 PublisherId(std::map<QString, qint64>& ids, const QString& name) {
    if (name.trimmed().isEmpty()) return 0;
    const QString key = name.trimmed().toLower();
    auto it = ids.find(key);
    if (it != ids.end()) return it->second;
    const qint64 id = static_cast<qint64>(ids.size()) + 1;
    Insert("INSERT INTO Publishers (IdPub, PublisherName) VALUES (?, ?)", {id, name.trimmed()});
    ids[key] = id;
    return id;
}

qint64 PathId(std::map<QString, qint64>& ids, const QString& dir) {
    auto it = ids.find(dir);
    if (it != ids.end()) return it->second;
    // Leave gaps in the numbers, as a catalogue that lost folders has.
    const qint64 id = static_cast<qint64>(ids.size()) * 2 + 1;
    Insert("INSERT INTO Paths (PathIndex, GameDir) VALUES (?, ?)", {id, dir});
    ids[dir] = id;
    return id;
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
    return QString::fromStdString(Cp1252ToUtf8(cp1252)).trimmed();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "Uso: cintal-demo-catalogue CATÁLOGO CARPETA_DE_EJEMPLO\n");
        return 2;
    }
    const QString db = QString::fromLocal8Bit(argv[1]);
    const QString demo = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    QFile::remove(db);
    QString reason;
    if (!Store::CreateEmpty(db, &reason) || !Store::Open(db, &reason)) {
        std::fprintf(stderr, "No se puede crear %s: %s\n", qPrintable(db), qPrintable(reason));
        return 1;
    }
    ScriptedPrompt quiet; // the damaged demo tapes speak up; nobody is there to answer
    PromptScope scope(quiet);
    Store::Begin();

    std::map<QString, qint64> pubs, paths;
    for (const char* p : kPublishers)
        PublisherId(pubs, QString::fromUtf8(p));

    // Every file of the demo collection, under a title made from its tape.
    QStringList files;
    QDirIterator it(demo, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    files.sort();
    int n = 0;
    for (const QString& file : files) {
        const QFileInfo fi(file);
        const QString ext = fi.suffix();
        if (ext.compare("tzx", Qt::CaseInsensitive) && ext.compare("tap", Qt::CaseInsensitive))
            continue;
        TZXTape tape;
        tape.FileName = file.toStdString();
        if (ext.compare("tzx", Qt::CaseInsensitive) == 0) tape.ReadTape();
        const ArchiveInfo& info = tape.ArchiveInfo();
        QString name = FromTape(info.iName);
        if (name.isEmpty()) name = fi.completeBaseName();
        const qint64 pub = PublisherId(pubs, FromTape(info.iPublisher));
        const qint64 title =
            AddTitle(name, FromTape(info.iYear), pub, FromTape(info.iType).left(3), true,
                     QVariant(static_cast<int>(n++ % 7)), FromTape(info.iAuthor));
        Insert("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, Memory, FileSize, "
               "Origin, IdLang, LoadSchema, HaveIt) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, 1)",
               {title, fi.completeBaseName(), ext.toLower(), PathId(paths, fi.absolutePath()),
                n % 3 == 0 ? 128 : 48, fi.size(), FromTape(info.iOrigin),
                FromTape(info.iLang).left(3).toUpper(), FromTape(info.iSchema)});
    }

    // A file row whose file is gone: the title is owned but its tape missing.
    const qint64 lost = AddTitle("Cinta Extraviada", "1986", 3, "Arcade", true, 2);
    Insert("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) "
           "VALUES (?, ?, ?, ?, 1)",
           {lost, "Cinta Extraviada", "tzx", PathId(paths, demo + "/Perdidos")});

    // Titles from listings: some owned, most not, every source code, and a few
    // names with the characters that trip a store up.
    AddTitle("The \"Last\" Ninja", "1987", PublisherId(pubs, "System 3"), "Arcade", false, 4);
    AddTitle("Jack's \"Big\" Day Out", "1985", 11, "Arcade", false, 1);
    AddTitle("Ábaco Mágico", "1984", 2, "Educati", false, 5);
    AddTitle("abadía del crimen, La", "1988", 3, "Aventur", false, 4);
    AddTitle("Título sin año ni empresa", "", 0, "", false, QVariant());
    AddTitle("Fuente desconocida (código 9)", "1990", 5, "Puzzle", false, 9);
    for (int i = 0; i < 320; ++i) {
        const QString name = QString::fromUtf8(kFirst[Rand(std::size(kFirst))]) + " " +
                             QString::fromUtf8(kSecond[Rand(std::size(kSecond))]) +
                             (Rand(4) == 0 ? QStringLiteral(" %1").arg(i % 7 + 2) : QString());
        const bool owned = Rand(3) == 0;
        AddTitle(name, Rand(10) ? QString::number(1982 + Rand(11)) : QString(),
                 Rand(12) ? 1 + Rand(std::size(kPublishers)) : 0,
                 QString::fromUtf8(kTypes[Rand(std::size(kTypes))]), owned,
                 Rand(9) ? QVariant(static_cast<int>(Rand(7))) : QVariant());
    }
    if (!Store::Commit()) return 1;
    Store::Close();
    std::printf("Catálogo de ejemplo: %s\n", qPrintable(db));
    return 0;
}
