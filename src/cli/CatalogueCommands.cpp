#include "cli/CatalogueCommands.h"

#include "acquisition/Scanner.h"
#include "acquisition/WosImporter.h"
#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "platform/Spanish.h"

#include <QFileInfo>
#include <QString>
#include <ostream>

namespace cintal::cli {

namespace {

// Reads "--db FILE" from args; false (with a message) on anything else.
bool DbOption(const std::vector<std::string>& args, QString& db, std::ostream& err) {
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--db" && i + 1 < args.size()) {
            db = QString::fromStdString(args[++i]);
        } else {
            err << "cintal-cli: argumento inesperado " << args[i] << "\n";
            return false;
        }
    }
    if (db.isEmpty()) db = Comunes::DefaultDbPath();
    return true;
}

// "VERB FOLDER [--db FILE]": the folder must exist; false (with a message)
// on anything else.
bool FolderArguments(const std::vector<std::string>& args, const char* verb, QString& db,
                     QString& folder, std::ostream& err) {
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--db" && i + 1 < args.size())
            db = QString::fromStdString(args[++i]);
        else if (folder.isEmpty() && !args[i].empty() && args[i][0] != '-')
            folder = QString::fromStdString(args[i]);
        else {
            err << "cintal-cli: argumento inesperado " << args[i] << "\n";
            return false;
        }
    }
    if (folder.isEmpty()) {
        err << "Uso: cintal-cli " << verb << " CARPETA [--db CATÁLOGO]\n";
        return false;
    }
    if (!QFileInfo(folder).isDir()) {
        err << "No existe la carpeta " << folder.toStdString() << "\n";
        return false;
    }
    return true;
}

} // namespace

bool OpenCatalogue(QString db, std::ostream& err) {
    if (db.isEmpty()) db = Comunes::DefaultDbPath();
    QString reason;
    if (Comunes::InitGlobals(db, &reason)) return true;
    err << "No se puede abrir el catálogo " << db.toStdString() << ": " << reason.toStdString()
        << "\n";
    return false;
}

int Init(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db;
    if (!DbOption(args, db, err)) return 2;
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
    QString db;
    if (!DbOption(args, db, err)) return 2;
    if (!OpenCatalogue(db, err)) return 1;
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
    QString db, title, file;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--db" && i + 1 < args.size())
            db = QString::fromStdString(args[++i]);
        else if (args[i] == "--title" && i + 1 < args.size())
            title = QString::fromStdString(args[++i]);
        else if (file.isEmpty() && !args[i].empty() && args[i][0] != '-')
            file = QString::fromStdString(args[i]);
        else {
            err << "cintal-cli: argumento inesperado " << args[i] << "\n";
            return 2;
        }
    }
    bool numeric = false;
    const qint64 titleId = title.toLongLong(&numeric);
    if (!numeric || titleId <= 0 || file.isEmpty()) {
        err << "Uso: cintal-cli add --title ID ARCHIVO [--db CATÁLOGO]\n";
        return 2;
    }
    if (!OpenCatalogue(db, err)) return 1;
    // The file's full path, as the file dialog would give it: an existing file
    // and an existing title, as the window can only offer.
    const QString path = QFileInfo(file).absoluteFilePath();
    if (!QFileInfo(path).isFile()) {
        err << "No existe el archivo " << path.toStdString() << "\n";
        return 2;
    }
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT TitleId FROM Titles WHERE TitleId = ?", {titleId})) return 2;
    if (!q.next()) {
        err << "No existe el título " << titleId << "\n";
        return 2;
    }
    q.finish();
    const int failures = Store::Failures();
    if (Comunes::AddFileToTitle(titleId, path)) {
        out << "Archivo Agregado\n";
        return 0;
    }
    if (Store::Failures() != failures) return 2;
    out << "Ya existe\n";
    return 1;
}

int Scan(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db, folder;
    if (!FolderArguments(args, "scan", db, folder, err)) return 2;
    if (!OpenCatalogue(db, err)) return 2;
    Scanner scanner;
    const Scanner::Result result = scanner.Run(QFileInfo(folder).absoluteFilePath());
    const ScanCounters& c = scanner.counters;
    out << "Total encontrados: " << Number(c.Total).toStdString() << "\n"
        << "Total procesados: " << Number(c.Parcial).toStdString() << "\n"
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
    if (!FolderArguments(args, "import", db, folder, err)) return 2;
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

} // namespace cintal::cli
