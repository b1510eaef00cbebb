#include "cli/Commands.h"

#include "cli/ArchiveTape.h"
#include "cli/Arguments.h"
#include "cli/CatalogueCommands.h"
#include "cli/ContentCommands.h"
#include "cli/DatCommands.h"
#include "cli/InfoCommand.h"
#include "cli/MaintenanceCommands.h"
#include "cli/ReorganiseCommands.h"
#include "cli/TapeCommands.h"

#include "tape/Content.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"
#include "tape/TapConvert.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <cstring>
#include <ostream>

namespace cintal::cli {

namespace {

const char* kHelp =
    "Uso: cintal-cli ORDEN [OPCIONES] ARCHIVO...\n"
    "\n"
    "Órdenes:\n"
    "  list ARCHIVO...          muestra los bloques, con su suma de control, y la información de\n"
    "                           archivo de cada cinta TZX\n"
    "  clean [--yes] ARCHIVO... quita los bloques sobrantes y guarda la cinta, las anteriores a "
    "la\n"
    "                           versión 1.13 en la 1.13; --yes responde Sí a la pregunta de una\n"
    "                           versión superior a la 1.20\n"
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
    "                           añade al catálogo las cintas TZX nuevas bajo la carpeta, también\n"
    "                           las que hay dentro de archivos .zip, .7z y .rar, con su tamaño,\n"
    "                           CRC32, MD5 y SHA1\n"
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
    "  hashes [--db CATÁLOGO]   muestra una línea por archivo del catálogo: FileId, tamaño, "
    "CRC32,\n"
    "                           MD5, SHA1 y ruta; antes vuelve a calcular las sumas de los\n"
    "                           archivos que han cambiado en el disco\n"
    "  duplicates [--db CATÁLOGO]\n"
    "                           muestra los grupos de archivos del catálogo con el mismo\n"
    "                           contenido (mismo tamaño y SHA1)\n"
    "  dat add ARCHIVO.dat [--db CATÁLOGO]\n"
    "                           carga un archivo DAT (XML de Logiqx) en lugar del que tenga su\n"
    "                           mismo nombre e identifica de nuevo los archivos\n"
    "  dat list [--db CATÁLOGO] muestra los DAT cargados: Id, nombre, versión y entradas\n"
    "  dat remove ID [--db CATÁLOGO]\n"
    "                           quita el DAT con ese Id\n"
    "  identify [--db CATÁLOGO] muestra qué juego de qué DAT es cada archivo del catálogo (por\n"
    "                           SHA1, si no por MD5, si no por CRC32 y tamaño)\n"
    "  report --dat NOMBRE [--db CATÁLOGO]\n"
    "                           muestra los juegos del DAT que se tienen y los que faltan\n"
    "  tidy --dat NOMBRE [--dry-run] [--yes] [--db CATÁLOGO]\n"
    "                           da a cada archivo, con sus archivos laterales, el nombre que le\n"
    "                           da el DAT, en su carpeta; con --dry-run sólo muestra el plan;\n"
    "                           sin --yes no renombra nada\n"
    "  wav CINTA SALIDA.wav [--rate HZ]\n"
    "                           guarda el sonido de la cinta (TZX o TAP) como archivo WAV mono\n"
    "                           de 16 bits, a 44100 Hz si no se da otra frecuencia\n"
    "  --help                   muestra esta ayuda\n"
    "  --version                muestra la versión\n"
    "\n"
    "Un archivo dentro de un archivo comprimido (.zip, .7z, .rar) se nombra ARCHIVO.zip|INTERIOR;\n"
    "list, info, screen, basic, extract y compare lo leen, y nada lo modifica.\n"
    "\n"
    "Sin --db, el catálogo es cintal.mdb junto al programa o, si está instalado, en la carpeta\n"
    "de datos del usuario (~/.local/share/cintal).\n"
    "Los avisos del programa se escriben en la salida de errores. screen, extract y wav nunca\n"
    "sobrescriben un archivo que exista. Una opción que lleva valor no acepta uno que empiece\n"
    "por \"--\".\n"
    "\n"
    "Estado de salida: 0 hecho; 1 rechazado, no encontrado o con algo mal; 2 argumentos\n"
    "erróneos o fallo del catálogo.\n";

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
        const bool newer = NewerThanSupported(v, r);
        const bool upgradeDue = newer || OlderThanRaised(v, r);
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
                << " superior a la soportada; use --yes para guardarlo como 1."
                << kSupportedRevision << ")\n";
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

Bytes Png(const Bytes& screen) {
    const std::vector<std::uint32_t> pixels = ScreenPixels(screen);
    QImage image(kScreenWidth, kScreenHeight, QImage::Format_RGB32);
    for (int y = 0; y < kScreenHeight; ++y)
        std::memcpy(image.scanLine(y), pixels.data() + static_cast<std::size_t>(y) * kScreenWidth,
                    kScreenWidth * sizeof(std::uint32_t));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) return {};
    return Bytes(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace

int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "ayuda") {
        (args.empty() ? err : out) << kHelp;
        return args.empty() ? 2 : 0;
    }
    if (IsTapeCommand(args)) return RunTapeCommand(args, out, err);
    const std::string& command = args[0];
    if (command == "info") return InfoCommand(args, out, err);
    if (command == "purge") return Purge(args, out, err);
    if (IsDatCommand(command)) return DatCommand(args, out, err);
    if (command == "merge") return Merge(args, out, err);
    if (command == "reorganise") return Reorganise(args, out, err);
    if (command == "rename") return Rename(args, out, err);
    if (command == "screen") {
        CliPrompt prompt(err, false);
        PromptScope scope(prompt);
        return ScreenCommand(args, out, err, &Png);
    }
    if (command == "init" || command == "titles" || command == "add" || command == "scan" ||
        command == "import" || command == "hashes" || command == "duplicates") {
        CliPrompt prompt(err, false);
        PromptScope scope(prompt);
        if (command == "hashes") return Hashes(args, out, err);
        if (command == "duplicates") return Duplicates(args, out, err);
        if (command == "add") return Add(args, out, err);
        if (command == "scan") return Scan(args, out, err);
        if (command == "import") return Import(args, out, err);
        return command == "init" ? Init(args, out, err) : Titles(args, out, err);
    }
    const std::size_t many = args.size();
    CommandSpec spec;
    if (command == "clean")
        spec = {{{"--yes"}}, 1, many, "Uso: cintal-cli clean [--yes] ARCHIVO...\n"};
    else if (command == "tap2tzx")
        spec = {{}, 1, many, "Uso: cintal-cli tap2tzx ARCHIVO.tap...\n"};
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
    if (command == "clean") return Clean(files, yes, out);
    return Tap2Tzx(files, out);
}

} // namespace cintal::cli
