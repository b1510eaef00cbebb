#include "cli/CatalogueCommands.h"

#include "acquisition/Scanner.h"
#include "acquisition/WosImporter.h"
#include "catalogue/Comunes.h"
#include "catalogue/FileHashes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "cli/Arguments.h"
#include "platform/Spanish.h"

#include <QFileInfo>
#include <QString>
#include <ostream>

namespace cintal::cli {

namespace {

// "VERB [--db FILE]": the catalogue given, or empty for the program's own.
int DbOption(const std::vector<std::string>& args, const char* usage, QString& db,
             std::ostream& out, std::ostream& err) {
    Arguments a;
    const int status = Stop(a.Parse(args, {{{"--db", true}}, 0, 0, usage}, out, err));
    db = QString::fromStdString(a.Value("--db"));
    return status;
}

// "VERB [--db FILE]" with the catalogue opened: -1 to go on, else the exit
// status, with the reason on err.
int OpenDbOption(const std::vector<std::string>& args, const char* usage, std::ostream& out,
                 std::ostream& err) {
    QString db;
    if (const int status = DbOption(args, usage, db, out, err); status >= 0) return status;
    return OpenCatalogue(db, err) ? -1 : 2;
}

// "VERB FOLDER [--db FILE]": -1 to go on, else the exit status, with the
// reason on err.
int FolderArguments(const std::vector<std::string>& args, const char* verb, QString& db,
                    QString& folder, std::ostream& out, std::ostream& err) {
    const std::string usage = std::string("Uso: cintal-cli ") + verb + " CARPETA [--db CATÁLOGO]\n";
    Arguments a;
    if (const int status = Stop(a.Parse(args, {{{"--db", true}}, 1, 1, usage.c_str()}, out, err));
        status >= 0)
        return status;
    db = QString::fromStdString(a.Value("--db"));
    folder = QString::fromStdString(a.words[0]);
    if (!QFileInfo(folder).isDir()) {
        err << "No existe la carpeta " << folder.toStdString() << "\n";
        return 1;
    }
    return -1;
}

} // namespace

bool OpenCatalogue(QString db, std::ostream& err) {
    const bool own = db.isEmpty();
    if (own) db = Comunes::DefaultDbPath();
    QString reason;
    if (Comunes::InitGlobals(db, &reason)) return true;
    err << "No se puede abrir el catálogo " << db.toStdString() << ": " << reason.toStdString()
        << "\n";
    // A first run without a catalogue of its own: where the answer is.
    if (own && !QFileInfo::exists(db)) err << "Para crear uno vacío: cintal-cli init\n";
    return false;
}

int CatalogueChange::Open(const std::vector<std::string>& args, const CommandSpec& spec,
                          std::initializer_list<const char*> idOptions, std::ostream& out) {
    if (const int status = Stop(a.Parse(args, spec, out, err)); status >= 0) return status;
    for (const char* option : idOptions) {
        ids.push_back(IdOf(a.Value(option)));
        if (ids.back() <= 0) {
            err << spec.usage;
            return 2;
        }
    }
    prompt.emplace(err, a.Has("--yes"));
    scope.emplace(*prompt);
    return OpenCatalogue(QString::fromStdString(a.Value("--db")), err) ? -1 : 2;
}

int Init(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db;
    if (const int status = DbOption(args, "Uso: cintal-cli init [--db ARCHIVO]\n", db, out, err);
        status >= 0)
        return status;
    if (db.isEmpty()) db = Comunes::DefaultDbPath();
    QString reason;
    if (!Store::CreateEmpty(db, &reason)) {
        err << "No se puede crear el catálogo " << db.toStdString() << ": " << reason.toStdString()
            << "\n";
        return 1;
    }
    out << "Catálogo creado: " << db.toStdString() << "\n";
    return 0;
}

int Titles(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (const int status = OpenDbOption(args, "Uso: cintal-cli titles [--db ARCHIVO]\n", out, err);
        status >= 0)
        return status;
    std::vector<TitleRow> rows;
    if (!LoadTitles(kOrderByName, rows)) return 2;
    for (const TitleRow& r : rows) {
        out << EstadoText(r).toStdString() << '\t' << r.Name.toStdString() << '\t'
            << r.Year.toStdString() << '\t' << Comunes::PublisherName(r.IdPub).toStdString() << '\t'
            << r.Type.toStdString() << '\t' << (r.HaveIt ? 1 : 0) << '\n';
    }
    return 0;
}

int Add(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    const char* usage = "Uso: cintal-cli add --title ID ARCHIVO [--db CATÁLOGO]\n";
    if (const int status =
            Stop(a.Parse(args, {{{"--db", true}, {"--title", true}}, 1, 1, usage}, out, err));
        status >= 0)
        return status;
    const QString db = QString::fromStdString(a.Value("--db"));
    const QString file = QString::fromStdString(a.words[0]);
    const qint64 titleId = IdOf(a.Value("--title"));
    if (titleId <= 0) {
        err << usage;
        return 2;
    }
    if (!OpenCatalogue(db, err)) return 2;
    // The file's full path, as the file dialog would give it: an existing file
    // and an existing title, as the window can only offer.
    const QString path = QFileInfo(file).absoluteFilePath();
    if (!QFileInfo(path).isFile()) {
        err << "No existe el archivo " << path.toStdString() << "\n";
        return 1;
    }
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT TitleId FROM Titles WHERE TitleId = ?", {titleId})) return 2;
    if (!q.next()) {
        err << "No existe el título " << titleId << "\n";
        return 1;
    }
    q.finish();
    switch (Records::AddFileToTitle(titleId, path)) {
    case Records::RecordChange::Done:
        out << "Archivo Agregado\n";
        return 0;
    case Records::RecordChange::Unchanged:
        out << "Ya existe\n";
        return 1;
    case Records::RecordChange::Failed:
        break;
    }
    return 2;
}

int Scan(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db, folder;
    if (const int status = FolderArguments(args, "scan", db, folder, out, err); status >= 0)
        return status;
    if (!OpenCatalogue(db, err)) return 2;
    Scanner scanner;
    const Scanner::Result result = scanner.Run(QFileInfo(folder).absoluteFilePath());
    const ScanCounters& c = scanner.counters;
    out << "Total encontrados: " << Number(c.Total).toStdString() << "\n"
        << "Total procesados: " << Number(c.Parcial).toStdString() << "\n"
        << "Archivos comprimidos: " << Number(c.Comprimidos).toStdString() << "\n"
        << "Cintas dentro de comprimidos: " << Number(c.Interiores).toStdString() << "\n"
        << "A entradas nuevas: " << Number(c.Creada).toStdString() << "\n"
        << "A entradas existentes: " << Number(c.Agregada).toStdString() << "\n"
        << "Archivos omitidos: " << Number(c.Omitida).toStdString() << "\n"
        << "Compañías agregadas: " << Number(c.NwComp).toStdString() << "\n"
        << "Tiempo empleado: " << Scanner::FormatElapsed(scanner.elapsedMs).toStdString() << "\n"
        << scanner.Estado.toStdString() << "\n";
    for (const ScanWarning& w : scanner.warnings)
        err << w.path.toStdString() << ": " << w.text.toStdString() << "\n";
    return result == Scanner::Result::StoreFailed ? 2 : 0;
}

int Import(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db, folder;
    if (const int status = FolderArguments(args, "import", db, folder, out, err); status >= 0)
        return status;
    const QString root = QFileInfo(folder).absoluteFilePath();
    if (!WosImporter::IsListingRoot(root)) {
        err << "La carpeta " << root.toStdString() << " no tiene legend.html\n";
        return 1;
    }
    if (!OpenCatalogue(db, err)) return 2;
    WosImporter importer;
    const WosImporter::Result result = importer.Run(root);
    const WosCounters& c = importer.counters;
    out << "Páginas leídas: " << Number(c.Paginas).toStdString() << "\n"
        << "Títulos nuevos: " << Number(c.Nuevos).toStdString() << "\n"
        << "Títulos existentes: " << Number(c.Existentes).toStdString() << "\n"
        << "Compañías agregadas: " << Number(c.NwComp).toStdString() << "\n"
        << "Tiempo empleado: " << Scanner::FormatElapsed(importer.elapsedMs).toStdString() << "\n";
    for (const ScanWarning& w : importer.warnings)
        err << w.path.toStdString() << ": " << w.text.toStdString() << "\n";
    return result == WosImporter::Result::StoreFailed ? 2 : 0;
}

int Hashes(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (const int status = OpenDbOption(args, "Uso: cintal-cli hashes [--db CATÁLOGO]\n", out, err);
        status >= 0)
        return status;
    int status = 0;
    const bool refreshed = FileHashes::Refresh([&](const QString& path, const QString& why) {
        err << path.toStdString() << ": " << why.toStdString() << "\n";
        status = 1;
    });
    const auto files = FileHashes::Load();
    if (!refreshed || !files) return 2;
    for (const HashedFile& f : *files)
        out << f.fileId << '\t' << f.size << '\t' << f.crc32.toStdString() << '\t'
            << f.md5.toStdString() << '\t' << f.sha1.toStdString() << '\t' << f.path.toStdString()
            << '\n';
    return status;
}

int Duplicates(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (const int status =
            OpenDbOption(args, "Uso: cintal-cli duplicates [--db CATÁLOGO]\n", out, err);
        status >= 0)
        return status;
    const auto files = FileHashes::Load();
    if (!files) return 2;
    int n = 0;
    for (const DuplicateGroup& g : GroupDuplicates(*files)) {
        out << "Grupo " << ++n << ": " << g.files.size() << " archivos, " << g.size << " bytes, "
            << g.sha1.toStdString() << '\n';
        for (const HashedFile* f : g.files)
            out << '\t' << f->fileId << '\t' << f->path.toStdString() << '\n';
    }
    return 0;
}

} // namespace cintal::cli
