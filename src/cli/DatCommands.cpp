#include "cli/DatCommands.h"

#include "cli/Arguments.h"
#include "cli/CatalogueCommands.h"
#include "cli/Commands.h"

#include "catalogue/Dats.h"
#include "catalogue/FileHashes.h"
#include "maintenance/DatTidy.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"

#include <QString>
#include <ostream>

namespace cintal::cli {

namespace {

std::string Str(const QString& text) {
    return text.toStdString();
}

// The hashes taken again where files changed, and so what they are.
bool Refresh(std::ostream& err) {
    return FileHashes::Refresh([&](const QString& path, const QString& why) {
        err << Str(path) << ": " << Str(why) << "\n";
    });
}

int DatVerb(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const std::string verb = args.size() > 1 ? args[1] : "";
    const std::vector<std::string> rest(args.begin() + (args.size() > 1 ? 1 : 0), args.end());
    Arguments a;
    int status = -1;
    if (verb == "add")
        status = Stop(a.Parse(
            rest, {{{"--db", true}}, 1, 1, "Uso: cintal-cli dat add ARCHIVO.dat [--db CATÁLOGO]\n"},
            out, err));
    else if (verb == "list")
        status = Stop(
            a.Parse(rest, {{{"--db", true}}, 0, 0, "Uso: cintal-cli dat list [--db CATÁLOGO]\n"},
                    out, err));
    else if (verb == "remove")
        status = Stop(a.Parse(
            rest, {{{"--db", true}}, 1, 1, "Uso: cintal-cli dat remove ID [--db CATÁLOGO]\n"}, out,
            err));
    else {
        err << "Uso: cintal-cli dat add|list|remove ... [--db CATÁLOGO]\n";
        return 2;
    }
    if (status >= 0) return status;
    long long id = 0;
    if (verb == "remove" && (id = IdOf(a.words[0])) <= 0) {
        err << "Uso: cintal-cli dat remove ID [--db CATÁLOGO]\n";
        return 2;
    }
    Dat dat;
    QString why;
    if (verb == "add" && !ReadDatFile(QString::fromStdString(a.words[0]), dat, why)) {
        err << "El archivo DAT " << a.words[0] << " no es válido: " << Str(why)
            << ". No se ha cargado nada.\n";
        return 1;
    }
    if (!OpenCatalogue(QString::fromStdString(a.Value("--db")), err)) return 2;
    if (verb == "add") {
        if (!Refresh(err)) return 2;
        qint64 datId = 0;
        if (!Dats::Add(dat, &datId)) return 2;
        out << datId << "\t" << Str(dat.name) << "\t" << Str(dat.version) << "\t"
            << dat.games.size() << "\n";
        return 0;
    }
    if (verb == "remove") {
        bool found = false;
        if (!Dats::Remove(id, found)) return 2;
        if (!found) {
            err << "No hay ningún DAT con Id " << id << "\n";
            return 1;
        }
        return 0;
    }
    const auto dats = Dats::List();
    if (!dats) return 2;
    for (const DatInfo& d : *dats)
        out << d.id << "\t" << Str(d.name) << "\t" << Str(d.version) << "\t" << d.entries << "\n";
    return 0;
}

int Identify(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    if (const int status = Stop(
            a.Parse(args, {{{"--db", true}}, 0, 0, "Uso: cintal-cli identify [--db CATÁLOGO]\n"},
                    out, err));
        status >= 0)
        return status;
    if (!OpenCatalogue(QString::fromStdString(a.Value("--db")), err)) return 2;
    if (!Refresh(err)) return 2;
    const auto rows = Dats::Identifications();
    if (!rows) return 2;
    qint64 known = 0;
    for (const Identified& r : *rows) {
        known += r.game.isEmpty() ? 0 : 1;
        out << r.fileId << "\t" << Str(r.path) << "\t" << (r.game.isEmpty() ? "-" : Str(r.game))
            << "\t" << (r.dat.isEmpty() ? "-" : Str(r.dat)) << "\n";
    }
    out << "Identificados: " << Str(Number(known)) << " de " << Str(Number(qint64(rows->size())))
        << "\n";
    return 0;
}

int Report(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    const char* usage = "Uso: cintal-cli report --dat NOMBRE [--db CATÁLOGO]\n";
    if (const int status =
            Stop(a.Parse(args, {{{"--db", true}, {"--dat", true}}, 0, 0, usage}, out, err));
        status >= 0)
        return status;
    if (!a.Has("--dat")) {
        err << usage;
        return 2;
    }
    if (!OpenCatalogue(QString::fromStdString(a.Value("--db")), err)) return 2;
    if (!Refresh(err)) return 2;
    bool found = false;
    const auto report = Dats::Report(QString::fromStdString(a.Value("--dat")), found);
    if (!report) return 2;
    if (!found) {
        err << "No hay ningún DAT llamado " << a.Value("--dat") << "\n";
        return 1;
    }
    for (const HaveLine& l : report->lines) {
        if (l.path.isEmpty())
            out << "falta\t" << Str(l.game) << "\n";
        else
            out << "tengo\t" << Str(l.game) << "\t" << Str(l.path) << "\n";
    }
    out << "Tengo " << Str(Number(report->have)) << " de "
        << Str(Number(qint64(report->lines.size()))) << " (" << Str(report->Percent()) << " %)\n";
    return 0;
}

int Tidy(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    const char* usage = "Uso: cintal-cli tidy --dat NOMBRE [--dry-run] [--yes] [--db CATÁLOGO]\n";
    if (const int status = Stop(a.Parse(
            args, {{{"--db", true}, {"--dat", true}, {"--dry-run"}, {"--yes"}}, 0, 0, usage}, out,
            err));
        status >= 0)
        return status;
    if (!a.Has("--dat")) {
        err << usage;
        return 2;
    }
    CliPrompt prompt(err, a.Has("--yes"));
    PromptScope scope(prompt);
    if (!OpenCatalogue(QString::fromStdString(a.Value("--db")), err)) return 2;
    if (!Refresh(err)) return 2;
    DatTidy tidy;
    bool found = false;
    if (!tidy.Plan(QString::fromStdString(a.Value("--dat")), found)) return 2;
    if (!found) {
        err << "No hay ningún DAT llamado " << a.Value("--dat") << "\n";
        return 1;
    }
    // Renaming is asked, as the window asks it: No unless --yes.
    if (!a.Has("--dry-run") && tidy.planned > 0) {
        if (!tidy.Confirm()) return 1;
        tidy.Run();
    }
    for (const TidyStep& s : tidy.steps)
        for (const QString& line : s.Lines())
            out << Str(line) << "\n";
    out << "Renombrados: " << Str(Number(tidy.renamed)) << "\n"
        << "Dejados: " << Str(Number(tidy.left)) << "\n"
        << "Fallidos: " << Str(Number(tidy.failed)) << "\n";
    for (const QString& note : tidy.notes)
        err << Str(note) << "\n";
    return tidy.failed > 0 ? 1 : 0;
}

} // namespace

bool IsDatCommand(const std::string& command) {
    return command == "dat" || command == "identify" || command == "report" || command == "tidy";
}

int DatCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    CliPrompt prompt(err, false);
    PromptScope scope(prompt);
    const std::string& command = args[0];
    if (command == "dat") return DatVerb(args, out, err);
    if (command == "identify") return Identify(args, out, err);
    if (command == "report") return Report(args, out, err);
    return Tidy(args, out, err);
}

} // namespace cintal::cli
