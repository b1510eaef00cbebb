#include "cli/ReorganiseCommands.h"

#include "cli/Arguments.h"
#include "cli/CatalogueCommands.h"
#include "cli/Commands.h"

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
    const char* usage = "Uso: cintal-cli reorganise CARPETA [--subfolder NOMBRE] "
                        "[--order single|initial|year|publisher] [--held-only] [--dry-run] "
                        "[--no-catalogue] [--yes] [--db CATÁLOGO]\n";
    Arguments a;
    if (const int status = Stop(a.Parse(args,
                                        {{{"--db", true},
                                          {"--subfolder", true},
                                          {"--order", true},
                                          {"--held-only"},
                                          {"--dry-run"},
                                          {"--no-catalogue"},
                                          {"--yes"}},
                                         1,
                                         1,
                                         usage},
                                        out, err));
        status >= 0)
        return status;
    const QString db = QString::fromStdString(a.Value("--db"));
    const QString folder = QString::fromStdString(a.words[0]);
    const QString subFolder = QString::fromStdString(a.Value("--subfolder", "Programas")).left(30);
    if (const QString why = Reorganiser::SubFolderRefusal(subFolder); !why.isEmpty()) {
        err << "cintal-cli: " << why.toStdString() << "\n";
        return 2;
    }
    const bool heldOnly = a.Has("--held-only"), dryRun = a.Has("--dry-run"),
               catalogue = !a.Has("--no-catalogue");
    SortBy order = SortBy::Single;
    const std::string o = a.Value("--order", "single");
    if (o == "initial")
        order = SortBy::Initial;
    else if (o == "year")
        order = SortBy::Year;
    else if (o == "publisher")
        order = SortBy::Publisher;
    else if (o != "single") {
        err << "cintal-cli: orden desconocido " << o << "\n" << usage;
        return 2;
    }
    if (!QFileInfo(folder).isDir()) {
        err << "No existe la carpeta " << folder.toStdString() << "\n";
        return 1;
    }
    CliPrompt prompt(err, a.Has("--yes"));
    PromptScope scope(prompt);
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
        << "Omitidos: " << Number(c.Omitidos).toStdString() << "\n"
        << "Fallidos: " << Number(c.Fallidos).toStdString() << "\n";
    for (const QString& note : reorganiser.notes)
        err << note.toStdString() << "\n";
    return c.Fallidos > 0 ? 1 : 0;
}

} // namespace cintal::cli

namespace cintal::cli {

int Rename(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    CatalogueChange change(err);
    if (const int status =
            change.Open(args,
                        {{{"--db", true}, {"--file", true}, {"--yes"}},
                         1,
                         1,
                         "Uso: cintal-cli rename --file FILEID NUEVO [--yes] [--db CATÁLOGO]\n"},
                        {"--file"}, out);
        status >= 0)
        return status;
    const qint64 fileId = change.ids[0];
    const QString newBase = QString::fromStdString(change.a.words[0]);
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(
            q, "SELECT FileName, Extension, PathIndex, InnerPath FROM tFiles WHERE FileId = ?",
            {fileId}))
        return 2;
    if (!q.next()) {
        err << "No hay ningún archivo con FileId " << fileId << "\n";
        return 1;
    }
    const qint64 index = NumberOf(q.value(2));
    Renamer renamer;
    renamer.Load(Comunes::PathTable.Dir(index), TextOf(q.value(0)) + "." + TextOf(q.value(1)),
                 index, TextOf(q.value(3)));
    const QString result = renamer.Rename(newBase);
    if (result == Renamer::kFallido) return 1;
    out << result.toStdString() << "\n";
    return 0;
}

} // namespace cintal::cli
