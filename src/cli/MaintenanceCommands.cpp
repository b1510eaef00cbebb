#include "cli/MaintenanceCommands.h"

#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "cli/Arguments.h"
#include "cli/CatalogueCommands.h"
#include "cli/Commands.h"
#include "maintenance/Purge.h"
#include "maintenance/TitleMove.h"

#include <QString>
#include <ostream>

namespace cintal::cli {

int Purge(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    if (const int status =
            Stop(a.Parse(args,
                         {{{"--db", true}, {"--dry-run"}, {"--yes"}},
                          0,
                          0,
                          "Uso: cintal-cli purge [--dry-run] [--yes] [--db CATÁLOGO]\n"},
                         out, err));
        status >= 0)
        return status;
    const QString db = QString::fromStdString(a.Value("--db"));
    const bool dryRun = a.Has("--dry-run"), yes = a.Has("--yes");
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
    // The question of a newer tape version is answered by --yes: nothing is
    // written that the user wasn't asked about.
    CatalogueChange change(err);
    if (const int status = change.Open(
            args,
            {{{"--db", true}, {"--from", true}, {"--into", true}, {"--yes"}},
             0,
             0,
             "Uso: cintal-cli merge --from TÍTULO --into TÍTULO [--yes] [--db CATÁLOGO]\n"},
            {"--from", "--into"}, out);
        status >= 0)
        return status;
    TitleMover mover;
    mover.from = change.ids[0];
    mover.into = change.ids[1];
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT TitleId FROM Titles WHERE TitleId = ?", {mover.from})) return 2;
    const bool fromExists = q.next();
    q.finish();
    if (!fromExists) {
        err << "No existe el título " << mover.from << "\n";
        return 1;
    }
    const int failuresBefore = Store::Failures();
    if (!mover.LoadTarget()) {
        if (Store::Failures() != failuresBefore) return 2;
        err << "No existe el título " << mover.into << "\n";
        return 1;
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
    if (Records::DelTitleRecord(mover.from) != Records::RecordChange::Done) return 2;
    out << "Título " << mover.from << " borrado\n";
    return 0;
}

} // namespace cintal::cli
