#include "cli/ReorganiseCommands.h"

#include "cli/CatalogueCommands.h"

#include "catalogue/Comunes.h"
#include "catalogue/Store.h"
#include "maintenance/Renamer.h"
#include "maintenance/Reorganiser.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <ostream>

namespace cintal::cli {

int Reorganise(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db, folder, subFolder = QStringLiteral("Programas");
    SortBy order = SortBy::Single;
    bool heldOnly = false, dryRun = false, catalogue = true;
    const char* usage = "Uso: cintal-cli reorganise CARPETA [--subfolder NOMBRE] "
                        "[--order single|initial|year|publisher] [--held-only] [--dry-run] "
                        "[--no-catalogue] [--yes] [--db CATÁLOGO]\n";
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--db" && i + 1 < args.size()) {
            db = QString::fromStdString(args[++i]);
        } else if (a == "--subfolder" && i + 1 < args.size()) {
            subFolder = QString::fromStdString(args[++i]).left(30);
        } else if (a == "--order" && i + 1 < args.size()) {
            const std::string o = args[++i];
            if (o == "single")
                order = SortBy::Single;
            else if (o == "initial")
                order = SortBy::Initial;
            else if (o == "year")
                order = SortBy::Year;
            else if (o == "publisher")
                order = SortBy::Publisher;
            else {
                err << "cintal-cli: orden desconocido " << o << "\n" << usage;
                return 2;
            }
        } else if (a == "--held-only") {
            heldOnly = true;
        } else if (a == "--dry-run") {
            dryRun = true;
        } else if (a == "--no-catalogue") {
            catalogue = false;
        } else if (a == "--yes") {
            // The prompt of the command line answers from it.
        } else if (folder.isEmpty() && !a.empty() && a[0] != '-') {
            folder = QString::fromStdString(a);
        } else {
            err << "cintal-cli: argumento inesperado " << a << "\n" << usage;
            return 2;
        }
    }
    if (folder.isEmpty()) {
        err << usage;
        return 2;
    }
    if (!QFileInfo(folder).isDir()) {
        err << "No existe la carpeta " << folder.toStdString() << "\n";
        return 2;
    }
    if (!OpenCatalogue(db, err)) return 2;
    std::vector<ReorgTitle> titles;
    if (!LoadReorgTitles(heldOnly, titles)) return 2;
    const QString target = Reorganiser::Target(QFileInfo(folder).absoluteFilePath(), subFolder);
    Reorganiser reorganiser;
    if (!dryRun && QFileInfo(target).isDir() &&
        Ask("El directorio ya existe. ¿desea continuar?", {}, Icon::Critical, Buttons::YesNo) ==
            Button::No)
        return 1;
    reorganiser.Plan(target, order, titles);
    if (dryRun) {
        for (const ReorgStep& s : reorganiser.steps)
            out << s.Text().toStdString() << "\n";
    } else if (reorganiser.Run(catalogue) == Reorganiser::Result::FolderFailed) {
        return 1;
    }
    const ReorgCounters& c = reorganiser.counters;
    out << "Títulos: " << Number(c.Titulos).toStdString() << "\n"
        << "Archivos movidos: " << Number(c.Movidos).toStdString() << "\n"
        << "Archivos laterales movidos: " << Number(c.Laterales).toStdString() << "\n"
        << "Omitidos: " << Number(c.Omitidos).toStdString() << "\n";
    for (const QString& note : reorganiser.notes)
        err << note.toStdString() << "\n";
    return 0;
}

} // namespace cintal::cli

namespace cintal::cli {

int Rename(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db, newBase;
    qint64 fileId = 0;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--db" && i + 1 < args.size()) {
            db = QString::fromStdString(args[++i]);
        } else if (a == "--file" && i + 1 < args.size()) {
            fileId = QString::fromStdString(args[++i]).toLongLong();
        } else if (newBase.isEmpty() && !a.empty() && a[0] != '-') {
            newBase = QString::fromStdString(a);
        } else {
            err << "cintal-cli: argumento inesperado " << a << "\n";
            return 2;
        }
    }
    if (fileId <= 0 || newBase.isEmpty()) {
        err << "Uso: cintal-cli rename --file FILEID NUEVO [--db CATÁLOGO]\n";
        return 2;
    }
    if (!OpenCatalogue(db, err)) return 2;
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT FileName, Extension, PathIndex FROM tFiles WHERE FileId = ?",
                     {fileId}))
        return 2;
    if (!q.next()) {
        err << "No hay ningún archivo con FileId " << fileId << "\n";
        return 1;
    }
    const qint64 index = NumberOf(q.value(2));
    Renamer renamer;
    renamer.Load(Comunes::PathTable.Dir(index), TextOf(q.value(0)) + "." + TextOf(q.value(1)),
                 index);
    const QString result = renamer.Rename(newBase);
    if (result == Renamer::kFallido) return 1;
    out << result.toStdString() << "\n";
    return 0;
}

} // namespace cintal::cli
