#include "cli/ContentCommands.h"

#include "cli/ArchiveTape.h"
#include "cli/Arguments.h"
#include "cli/TapeCommands.h"
#include "tape/Content.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"
#include "tape/TapConvert.h"

#include <cstring>
#include <filesystem>
#include <ostream>

namespace cintal::cli {

namespace {

const char* kScreenUsage = "Uso: cintal-cli screen ARCHIVO SALIDA.scr|SALIDA.png\n";
const char* kBasicUsage = "Uso: cintal-cli basic CINTA [BLOQUE]\n";
const char* kExtractUsage = "Uso: cintal-cli extract CINTA BLOQUE SALIDA\n";

std::string Lower(std::string s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

// The command's words after its name: -1 to go on, else the exit status.
int Words(const std::vector<std::string>& args, std::size_t least, std::size_t most,
          const char* usage, std::vector<std::string>& words, std::ostream& out,
          std::ostream& err) {
    Arguments a;
    const int status = Stop(a.Parse(args, {{}, least, most, usage}, out, err));
    words = a.words;
    return status;
}

// A block number as the listing counts them, from 1.
bool BlockNumber(const std::string& text, std::int64_t& number, std::ostream& err) {
    std::size_t used = 0;
    try {
        number = std::stoll(text, &used);
    } catch (...) {
        used = 0;
    }
    if (used != text.size() || used == 0 || number < 1) {
        err << "cintal-cli: número de bloque no válido: " << text << "\n";
        return false;
    }
    return true;
}

// The words of a command on a block of a tape, the tape read and the block
// number (0 when left out) checked against it.
struct TapeBlock {
    std::vector<std::string> words;
    std::string file;
    TZXTape tape;
    std::int64_t number = 0;

    // -1 to go on, else the exit status.
    int Read(const std::vector<std::string>& args, std::size_t least, std::size_t most,
             const char* usage, std::ostream& out, std::ostream& err) {
        if (const int status = Words(args, least, most, usage, words, out, err); status >= 0)
            return status;
        if (words.size() >= 2 && !BlockNumber(words[1], number, err)) return 2;
        file = words[0];
        if (!LoadTape(file, tape, err)) return 1;
        if (number > tape.Blocks().Count()) {
            err << file << ": no tiene bloque " << number << "\n";
            return 1;
        }
        return -1;
    }
};

bool Refused(const std::string& path, std::ostream& err) {
    const std::string existing = ExistingFile(path);
    if (existing.empty()) return false;
    err << "cintal-cli: ya existe " << existing << "; no se sobrescribe\n";
    return true;
}

bool Write(const std::string& path, std::string_view bytes, std::ostream& err) {
    std::string reason;
    if (WriteContentFile(path, bytes, false, reason)) return true;
    if (!Refused(path, err))
        err << "cintal-cli: no se puede escribir " << path << ": " << reason << "\n";
    return false;
}

} // namespace

bool LoadTape(const std::string& file, TZXTape& tape, std::ostream& err) {
    const bool inner = !ArchiveOf(file).empty();
    if (!inner && !FileExists(file)) {
        err << "cintal-cli: no existe el archivo " << file << "\n";
        return false;
    }
    Bytes image, tzx;
    std::string why;
    if (inner && !BytesAt(file, image, why)) {
        err << "cintal-cli: " << file << ": " << why << "\n";
        return false;
    }
    if (Lower(ExtensionOf(file)) == "tap" && (inner || ReadWholeFile(file, image)) &&
        image.substr(0, 7) != "ZXTape!" && TapImageToTzx(image, tzx)) {
        tape.ReadImage(std::make_shared<const Bytes>(std::move(tzx)));
    } else if (inner) {
        tape.FileName = file;
        tape.ReadImage(std::make_shared<const Bytes>(std::move(image)));
    } else {
        tape.FileName = file;
        tape.ReadTape();
    }
    if (tape.Blocks().Count() == 0 && !tape.Status().Whole()) {
        err << file << ": " << tape.Status().Cause() << "\n";
        return false;
    }
    return true;
}

int ScreenCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                  PngMaker png) {
    std::vector<std::string> words;
    if (const int status = Words(args, 2, 2, kScreenUsage, words, out, err); status >= 0)
        return status;
    const std::string& file = words[0];
    const std::string& target = words[1];
    const std::string kind = Lower(ExtensionOf(target));
    if (kind != "scr" && kind != "png") {
        err << "cintal-cli: la salida ha de ser un archivo .scr o .png\n" << kScreenUsage;
        return 2;
    }
    if (Refused(target, err)) return 1;
    Bytes bytes;
    std::string why;
    if (!ArchiveOf(file).empty() ? !BytesAt(file, bytes, why)
                                 : !FileExists(file) || !ReadWholeFile(file, bytes)) {
        err << "cintal-cli: no se puede leer el archivo " << file
            << (why.empty() ? std::string() : ": " + why) << "\n";
        return 1;
    }
    const std::optional<Bytes> screen = ScreenOfFile(bytes, ExtensionOf(file));
    if (!screen) {
        err << file << ": no tiene pantalla\n";
        return 1;
    }
    const Bytes written = kind == "scr" ? *screen : png ? png(*screen) : Bytes();
    if (written.empty()) {
        err << "cintal-cli: no se puede hacer la imagen PNG\n";
        return 1;
    }
    if (!Write(target, written, err)) return 1;
    out << file << " -> " << target << "\n";
    return 0;
}

int BasicCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    TapeBlock t;
    if (const int status = t.Read(args, 1, 2, kBasicUsage, out, err); status >= 0) return status;
    const std::vector<BlockContent> contents = ContentOf(t.tape.Blocks());
    std::int64_t program = 0;
    if (t.number == 0) {
        for (std::size_t i = 0; i < contents.size() && program == 0; ++i)
            if (contents[i].kind == ContentKind::Program)
                program = static_cast<std::int64_t>(i) + 1;
        if (program == 0) {
            err << t.file << ": no tiene ningún programa BASIC\n";
            return 1;
        }
    } else {
        const BlockContent& c = contents[t.number - 1];
        if (c.kind == ContentKind::Program)
            program = t.number;
        else if (c.kind == ContentKind::Header && c.pair &&
                 contents[c.pair - 1].kind == ContentKind::Program)
            program = c.pair;
        if (program == 0) {
            err << t.file << ": el bloque " << t.number << " no es un programa BASIC\n";
            return 1;
        }
    }
    out << ListingOf(*t.tape.Blocks().Item(double(program)), contents[program - 1]);
    return 0;
}

int ExtractCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    TapeBlock t;
    if (const int status = t.Read(args, 3, 3, kExtractUsage, out, err); status >= 0) return status;
    const Block& block = *t.tape.Blocks().Item(double(t.number));
    const BlockContent content = ContentOf(t.tape.Blocks())[t.number - 1];
    const std::optional<ExtractedFile> extracted = Extract(block, content);
    if (!extracted) {
        err << t.file << ": el bloque " << t.number << " no tiene contenido que extraer\n";
        return 1;
    }
    std::string target = t.words[2];
    std::error_code ec;
    if (std::filesystem::is_directory(target, ec))
        target = JoinPath(target, FileNameOf(t.file) + "-" + std::to_string(t.number) + "." +
                                      extracted->extension);
    if (!Write(target, extracted->bytes, err)) return 1;
    out << t.file << ", bloque " << t.number << " (" << ContentKindName(content.kind) << ") -> "
        << target << "\n";
    return 0;
}

} // namespace cintal::cli
