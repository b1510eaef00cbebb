#include "cli/Commands.h"

#include "cli/Arguments.h"
#include "cli/CatalogueCommands.h"
#include "cli/ContentCommands.h"
#include "cli/InfoCommand.h"
#include "cli/MaintenanceCommands.h"
#include "cli/ReorganiseCommands.h"
#include "cli/WavCommand.h"

#include "tape/Compare.h"
#include "tape/Content.h"
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
    "  list ARCHIVO...          muestra los bloques, con su suma de control, y la información de\n"
    "                           archivo de cada cinta TZX\n"
    "  clean [--yes] ARCHIVO... quita los bloques sobrantes y guarda la cinta en la versión 1.13;\n"
    "                           --yes responde Sí a la pregunta de una versión superior\n"
    "  tap2tzx ARCHIVO.tap...   convierte archivos TAP en archivos TZX junto a ellos\n"
    "  compare A.tzx B.tzx      compara dos cintas TZX bloque a bloque: una línea por fila con\n"
    "                           = igual, ~ distinto, < sólo en A, > sólo en B, o en blanco para\n"
    "                           la información de archivo y las marcas de unión, que no se\n"
    "                           comparan; sale con 1 si algún bloque difiere\n"
    "  init [--db ARCHIVO]      crea un catálogo vacío (nunca sobre un archivo que exista)\n"
    "  titles [--db ARCHIVO]    muestra los títulos del catálogo por orden de nombre\n"
    "  add --title ID ARCHIVO [--db CATÁLOGO]\n"
    "                           añade un archivo al título ID, como \"Añadir archivo...\"\n"
    "  scan CARPETA [--db CATÁLOGO]\n"
    "                           añade al catálogo las cintas TZX nuevas bajo la carpeta\n"
    "  import CARPETA [--db CATÁLOGO]\n"
    "                           añade los títulos nuevos de los listados web guardados en la\n"
    "                           carpeta (la que tiene legend.html)\n"
    "  purge [--dry-run] [--yes] [--db CATÁLOGO]\n"
    "                           muestra las referencias a archivos que no están en el disco y,\n"
    "                           con --yes, las borra del catálogo\n"
    "  merge --from TÍTULO --into TÍTULO [--yes] [--db CATÁLOGO]\n"
    "                           pasa los archivos de un título a otro, con su nombre, año y\n"
    "                           compañía en las cintas (una cinta conserva los suyos si el\n"
    "                           título no los tiene), y borra el primero; --yes responde Sí a\n"
    "                           la pregunta de una versión superior\n"
    "  reorganise CARPETA [--subfolder NOMBRE] [--order single|initial|year|publisher]\n"
    "             [--held-only] [--dry-run] [--no-catalogue] [--yes] [--db CATÁLOGO]\n"
    "                           mueve los archivos de los títulos, con sus archivos laterales, a\n"
    "                           un árbol nuevo bajo CARPETA/NOMBRE (\"Programas\" si no se da):\n"
    "                           una carpeta, o una por inicial, por año o por compañía; con\n"
    "                           --dry-run sólo muestra el plan; --yes responde Sí si la carpeta\n"
    "                           ya existe; el catálogo sigue a los archivos salvo con\n"
    "                           --no-catalogue\n"
    "  rename --file FILEID NUEVO [--yes] [--db CATÁLOGO]\n"
    "                           renombra el archivo de esa fila de tFiles, con sus archivos\n"
    "                           laterales, al nombre NUEVO (sin extensión), y su fila con él\n"
    "  info [--set CAMPO=TEXTO]... [--yes] [--db CATÁLOGO] CINTA.tzx\n"
    "                           muestra la información de archivo de la cinta o, con --set,\n"
    "                           cambia esos campos (\\n es un salto de línea) y la guarda como\n"
    "                           \"Guardar Info\"; con --db actualiza también su fila del catálogo\n"
    "  screen ARCHIVO SALIDA.scr|SALIDA.png\n"
    "                           guarda la pantalla de carga de una cinta (TZX o TAP) o la de una\n"
    "                           instantánea (Z80 o SNA) como pantalla de Spectrum o como imagen\n"
    "                           PNG de 256x192\n"
    "  basic CINTA [BLOQUE]     muestra el listado del primer programa BASIC de la cinta, o el "
    "del\n"
    "                           bloque BLOQUE, en el texto que lee zmakebas\n"
    "  extract CINTA BLOQUE SALIDA\n"
    "                           guarda el contenido del bloque BLOQUE (pantalla, listado BASIC,\n"
    "                           datos sin indicador ni suma, imagen, texto...) en el archivo "
    "SALIDA,\n"
    "                           o en CINTA-BLOQUE.ext si SALIDA es una carpeta\n"
    "  wav CINTA SALIDA.wav [--rate HZ]\n"
    "                           guarda el sonido de la cinta (TZX o TAP) como archivo WAV mono\n"
    "                           de 16 bits, a 44100 Hz si no se da otra frecuencia\n"
    "  --help                   muestra esta ayuda\n"
    "\n"
    "Los avisos del programa se escriben en la salida de errores. screen, extract y wav nunca\n"
    "sobrescriben un archivo que exista. Una opción que lleva valor no acepta uno que empiece\n"
    "por \"--\".\n"
    "\n"
    "Estado de salida: 0 hecho; 1 rechazado, no encontrado o con algo mal; 2 argumentos\n"
    "erróneos o fallo del catálogo.\n";

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

// One side of a row of compare: number, id and description, or three empty
// fields.
std::string Side(TZXTape& tape, std::int64_t position) {
    if (position == 0) return "\t\t";
    const BlockRef b = tape.Blocks().Item(static_cast<double>(position));
    return std::to_string(position) + '\t' + Hex2(b->IdTipoBloque) + '\t' + Printable(b->Descr);
}

int Compare(const std::vector<std::string>& files, std::ostream& out, std::ostream& err) {
    // A tape read in part would show as blocks missing: nothing is compared.
    TZXTape tapes[2];
    bool whole = true;
    for (int i = 0; i < 2; ++i) {
        tapes[i].FileName = files[i];
        tapes[i].ReadTape();
        if (tapes[i].Status().Whole()) continue;
        err << "cintal-cli: " << files[i] << ": no se puede leer entero ("
            << tapes[i].Status().Cause() << ")\n";
        whole = false;
    }
    if (!whole) return 2;
    const Comparison c = CompareTapes(tapes[0], tapes[1]);
    static const char* const marks[] = {"=", "~", "<", ">", " "};
    for (const CompareRow& row : c.rows)
        out << marks[static_cast<int>(row.kind)] << '\t' << Side(tapes[0], row.a) << '\t'
            << Side(tapes[1], row.b) << '\n';
    out << CompareSummary(c) << '\n' << ArchiveInfoSummary(c) << '\n';
    return c.changed + c.onlyA + c.onlyB > 0 ? 1 : 0;
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
    const std::vector<BlockContent> contents = ContentOf(tape.Blocks());
    for (const BlockRef& b : tape.Blocks()) {
        std::int64_t end = start + b->LenghtTot - 1;
        const Checksum sum = contents[static_cast<std::size_t>(number)].checksum;
        out << ++number << '\t' << Hex2(b->IdTipoBloque) << '\t' << Printable(b->TipoBloque) << '\t'
            << Printable(b->Descr) << '\t' << start << '\t' << end << '\t'
            << (sum == Checksum::Right   ? "ok"
                : sum == Checksum::Wrong ? "mal"
                                         : "")
            << '\n';
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
    if (command == "purge") return Purge(args, out, err);
    if (command == "merge") return Merge(args, out, err);
    if (command == "reorganise") return Reorganise(args, out, err);
    if (command == "rename") return Rename(args, out, err);
    if (command == "screen" || command == "basic" || command == "extract" || command == "wav") {
        CliPrompt prompt(err, false);
        PromptScope scope(prompt);
        if (command == "screen") return ScreenCommand(args, out, err);
        if (command == "basic") return BasicCommand(args, out, err);
        if (command == "wav") return WavCommand(args, out, err);
        return ExtractCommand(args, out, err);
    }
    if (command == "init" || command == "titles" || command == "add" || command == "scan" ||
        command == "import") {
        CliPrompt prompt(err, false);
        PromptScope scope(prompt);
        if (command == "add") return Add(args, out, err);
        if (command == "scan") return Scan(args, out, err);
        if (command == "import") return Import(args, out, err);
        return command == "init" ? Init(args, out, err) : Titles(args, out, err);
    }
    const std::size_t many = args.size();
    CommandSpec spec;
    if (command == "list")
        spec = {{}, 1, many, "Uso: cintal-cli list ARCHIVO...\n"};
    else if (command == "clean")
        spec = {{{"--yes"}}, 1, many, "Uso: cintal-cli clean [--yes] ARCHIVO...\n"};
    else if (command == "tap2tzx")
        spec = {{}, 1, many, "Uso: cintal-cli tap2tzx ARCHIVO.tap...\n"};
    else if (command == "compare")
        spec = {{}, 2, 2, "Uso: cintal-cli compare A.tzx B.tzx\n"};
    else {
        err << "cintal-cli: orden desconocida " << command << "\n" << kHelp;
        return 2;
    }
    Arguments arguments;
    if (const int status = Stop(arguments.Parse(args, spec, out, err)); status >= 0) return status;
    const std::vector<std::string>& files = arguments.words;
    const bool yes = arguments.Has("--yes");
    CliPrompt prompt(err, yes);
    PromptScope scope(prompt);
    if (command == "list") return List(files, out);
    if (command == "clean") return Clean(files, yes, out);
    if (command == "compare") return Compare(files, out, err);
    return Tap2Tzx(files, out);
}

} // namespace cintal::cli
