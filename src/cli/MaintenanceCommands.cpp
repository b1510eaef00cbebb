#include "cli/MaintenanceCommands.h"

#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "cli/CatalogueCommands.h"
#include "cli/Commands.h"
#include "maintenance/Purge.h"
#include "maintenance/TitleMove.h"

#include <QString>
#include <ostream>

namespace cintal::cli {

int Purge(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db;
    bool dryRun = false, yes = false;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--db" && i + 1 < args.size())
            db = QString::fromStdString(args[++i]);
        else if (args[i] == "--dry-run")
            dryRun = true;
        else if (args[i] == "--yes")
            yes = true;
        else {
            err << "cintal-cli: argumento inesperado " << args[i] << "\n"
                << "Uso: cintal-cli purge [--dry-run] [--yes] [--db CATÁLOGO]\n";
            return 2;
        }
    }
    CliPrompt prompt(err, false);
    PromptScope scope(prompt);
    if (!OpenCatalogue(db, err)) return 2;
    Purger purger;
    if (!purger.Plan()) return 2;
    for (const Purger::Row& r : purger.missing)
        out << r.FileId << '\t'
            << (r.path.isEmpty() ? std::string("(carpeta desconocida)") : r.path.toStdString())
            << '\n';
    if (dryRun) {
        out << purger.missing.size() << " de " << purger.total
            << " referencias a archivos inexistentes\n";
        return 0;
    }
    if (!yes && !purger.missing.empty()) {
        err << "No se borra nada sin --yes\n";
        out << "0 de " << purger.total << " referencias borradas\n";
        return 1;
    }
    if (!purger.Run()) return 2;
    out << purger.deleted << " de " << purger.total << " referencias borradas\n";
    return 0;
}

int Merge(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    QString db, from, into;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--db" && i + 1 < args.size())
            db = QString::fromStdString(args[++i]);
        else if (args[i] == "--from" && i + 1 < args.size())
            from = QString::fromStdString(args[++i]);
        else if (args[i] == "--into" && i + 1 < args.size())
            into = QString::fromStdString(args[++i]);
        else {
            err << "cintal-cli: argumento inesperado " << args[i] << "\n";
            return 2;
        }
    }
    bool okFrom = false, okInto = false;
    TitleMover mover;
    mover.from = from.toLongLong(&okFrom);
    mover.into = into.toLongLong(&okInto);
    if (!okFrom || !okInto || mover.from <= 0 || mover.into <= 0) {
        err << "Uso: cintal-cli merge --from TÍTULO --into TÍTULO [--db CATÁLOGO]\n";
        return 2;
    }
    // A newer tape version is answered No: nothing is written that the user
    // wasn't asked about.
    CliPrompt prompt(err, false);
    PromptScope scope(prompt);
    if (!OpenCatalogue(db, err)) return 2;
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT TitleId FROM Titles WHERE TitleId = ?", {mover.from})) return 2;
    const bool fromExists = q.next();
    q.finish();
    if (!fromExists) {
        err << "No existe el título " << mover.from << "\n";
        return 2;
    }
    const int failuresBefore = Store::Failures();
    if (!mover.LoadTarget()) {
        if (Store::Failures() != failuresBefore) return 2;
        err << "No existe el título " << mover.into << "\n";
        return 2;
    }
    if (!mover.Plan()) return 2;
    if (!mover.Run()) return Store::Failures() != failuresBefore ? 2 : 1;
    out << mover.Summary().toStdString() << "\n";
    // The old title goes, as a Yes to the question would; not while it still
    // holds a file that could not move.
    if (!mover.failures.empty()) {
        out << "El título " << mover.from << " se conserva\n";
        return 1;
    }
    if (!Comunes::DelTitleRecord(mover.from)) return 2;
    out << "Título " << mover.from << " borrado\n";
    return 0;
}

} // namespace cintal::cli
