#include "cli/Commands.h"

#include "cli/CatalogueCommands.h"
#include "cli/InfoCommand.h"

#include "tape/Cp1252.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"
#include "tape/TapConvert.h"

#include <ostream>
#include <sstream>

namespace cintal::cli {

namespace {

const char* kHelp =
    "Uso: cintal-cli ORDEN [OPCIONES] ARCHIVO...\n"
    "\n"
    "Órdenes:\n"
    "  list ARCHIVO...          muestra los bloques y la información de archivo de cada cinta TZX\n"
    "  clean [--yes] ARCHIVO... quita los bloques sobrantes y guarda la cinta en la versión 1.13;\n"
    "                           --yes responde Sí a la pregunta de una versión superior\n"
    "  tap2tzx ARCHIVO.tap...   convierte archivos TAP en archivos TZX junto a ellos\n"
    "  init [--db ARCHIVO]      crea un catálogo vacío (nunca sobre un archivo que exista)\n"
    "  titles [--db ARCHIVO]    muestra los títulos del catálogo por orden de nombre\n"
    "  add --title ID ARCHIVO [--db CATÁLOGO]\n"
    "                           añade un archivo al título ID, como \"Añadir archivo...\"\n"
    "  scan CARPETA [--db CATÁLOGO]\n"
    "                           añade al catálogo las cintas TZX nuevas bajo la carpeta\n"
    "  import CARPETA [--db CATÁLOGO]\n"
    "                           añade los títulos nuevos de los listados web guardados en la\n"
    "                           carpeta (la que tiene legend.html)\n"
    "  info [--set CAMPO=TEXTO]... [--yes] [--db CATÁLOGO] CINTA.tzx\n"
    "                           muestra la información de archivo de la cinta o, con --set,\n"
    "                           cambia esos campos (\\n es un salto de línea) y la guarda como\n"
    "                           \"Guardar Info\"; con --db actualiza también su fila del catálogo\n"
    "  --help                   muestra esta ayuda\n"
    "\n"
    "Los avisos del programa se escriben en la salida de errores.\n";

int List(const std::vector<std::string>& files, std::ostream& out) {
    int status = 0;
    for (const std::string& file : files) {
        TZXTape tape;
        tape.FileName = file;
        tape.ReadTape();
        out << ListTape(tape, file);
        if (!tape.Status().Whole()) status = 1;
    }
    return status;
}

int Clean(const std::vector<std::string>& files, bool yes, std::ostream& out) {
    int status = 0;
    for (const std::string& file : files) {
        TZXTape tape;
        tape.FileName = file;
        tape.ReadTape();
        if (!tape.Status().Whole()) {
            out << file << ": no se ha modificado (" << tape.Status().Cause() << ")\n";
            status = 1;
            continue;
        }
        const int v = tape.FileVersion, r = tape.FileRevision;
        const bool newer = v >= 2 || (v == 1 && r >= 14);
        const bool upgradeDue = !(v == 1 && r == 13);
        const auto removed = tape.Blocks().CheckRedundantBlocks();
        if (removed == 0 && !upgradeDue) {
            out << file << ": sin cambios\n";
            continue;
        }
        if (tape.Save(file, true)) {
            out << file << ": guardado, " << removed << " bloques eliminados, versión "
                << tape.FileVersion << "." << tape.FileRevision << "\n";
        } else if (newer && !yes) {
            out << file << ": no se ha modificado (versión " << v << "." << r
                << " superior a la soportada; use --yes para guardarlo como 1.13)\n";
        } else {
            out << file << ": no se ha modificado\n";
            status = 1;
        }
    }
    return status;
}

int Tap2Tzx(const std::vector<std::string>& files, std::ostream& out) {
    int status = 0;
    for (const std::string& file : files) {
        std::string target;
        if (ConvertTapToTzx(file, &target))
            out << file << " -> " << target << "\n";
        else
            status = 1;
    }
    return status;
}

} // namespace

Button CliPrompt::Show(const Message& message) {
    err << FormatMessage(message);
    if (message.buttons == Buttons::YesNo || message.buttons == Buttons::YesNoCancel) {
        Button answer = yes ? Button::Yes : Button::No;
        err << " -> " << (answer == Button::Yes ? "Sí" : "No");
        err << "\n";
        return answer;
    }
    err << "\n";
    return DefaultAnswer(message.buttons);
}

std::string Printable(const std::string& cp1252) {
    std::string utf8 = Cp1252ToUtf8(cp1252), out;
    out.reserve(utf8.size());
    for (char c : utf8) {
        switch (c) {
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\\':
            out += "\\\\";
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string ListTape(TZXTape& tape, const std::string& file) {
    std::ostringstream out;
    out << "Archivo " << file << " - versión " << tape.FileVersion << "." << tape.FileRevision
        << "\n";
    // Positions as the inspector counts them: from 11, each start one past
    // the previous end, so a cut last block ends past the file's size.
    std::int64_t start = 11, number = 0;
    for (const BlockRef& b : tape.Blocks()) {
        std::int64_t end = start + b->LenghtTot - 1;
        out << ++number << '\t' << Hex2(b->IdTipoBloque) << '\t' << Printable(b->TipoBloque) << '\t'
            << Printable(b->Descr) << '\t' << start << '\t' << end << '\n';
        start = end + 1;
    }
    ArchiveInfo& info = tape.ArchiveInfo();
    for (const auto& f : kArchiveFields) {
        const std::string& text = info.*(f.field);
        if (!text.empty())
            out << "info\t" << f.id << '\t' << f.name << '\t' << Printable(text) << '\n';
    }
    const ReadStatus& st = tape.Status();
    if (!st.Whole())
        out << "incompleto\t" << st.ordinal << '\t' << st.position << '\t' << st.Cause() << '\n';
    return out.str();
}

int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "ayuda") {
        (args.empty() ? err : out) << kHelp;
        return args.empty() ? 2 : 0;
    }
    const std::string& command = args[0];
    if (command == "info") return InfoCommand(args, out, err);
    if (command == "init" || command == "titles" || command == "add" || command == "scan" ||
        command == "import") {
        CliPrompt prompt(err, false);
        PromptScope scope(prompt);
        if (command == "add") return Add(args, out, err);
        if (command == "scan") return Scan(args, out, err);
        if (command == "import") return Import(args, out, err);
        return command == "init" ? Init(args, out, err) : Titles(args, out, err);
    }
    bool yes = false;
    std::vector<std::string> files;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--yes" && command == "clean")
            yes = true;
        else if (args[i] == "--help")
            return out << kHelp, 0;
        else if (args[i].size() > 1 && args[i][0] == '-' && args[i] != "--") {
            err << "cintal-cli: opción desconocida " << args[i] << "\n" << kHelp;
            return 2;
        } else if (args[i] != "--")
            files.push_back(args[i]);
    }
    if (command != "list" && command != "clean" && command != "tap2tzx") {
        err << "cintal-cli: orden desconocida " << command << "\n" << kHelp;
        return 2;
    }
    if (files.empty()) {
        err << "cintal-cli: falta el nombre de algún archivo\n" << kHelp;
        return 2;
    }
    CliPrompt prompt(err, yes);
    PromptScope scope(prompt);
    if (command == "list") return List(files, out);
    if (command == "clean") return Clean(files, yes, out);
    return Tap2Tzx(files, out);
}

} // namespace cintal::cli
