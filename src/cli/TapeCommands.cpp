#include "cli/TapeCommands.h"

#include "cli/ArchiveTape.h"
#include "cli/Arguments.h"
#include "cli/ContentCommands.h"
#include "cli/WavCommand.h"

#include "tape/Compare.h"
#include "tape/Content.h"
#include "tape/Cp1252.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"

#include <charconv>
#include <filesystem>
#include <memory>
#include <ostream>

namespace cintal::cli {

namespace {

void AppendNumber(std::string& out, std::int64_t n) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, n).ptr;
    out.append(digits, end);
}

void AppendPrintable(std::string& out, std::string_view cp1252);
void AppendListing(std::string& out, TZXTape& tape, const std::string& file, std::ostream* to);

bool keepLastTape = false;

// The listing goes out in a few large writes, and in the lean program
// the last tape read is never freed: tens of thousands of blocks would take
// longer to free than to list, and the program ends right after.
int List(const std::vector<std::string>& files, std::ostream& out, std::ostream& err) {
    int status = 0;
    std::string listing;
    std::unique_ptr<TZXTape> tape;
    for (const std::string& file : files) {
        tape = std::make_unique<TZXTape>();
        std::string why;
        if (!ReadTapeAt(file, *tape, why)) {
            err << "cintal-cli: " << file << ": " << why << "\n";
            status = 1;
            continue;
        }
        AppendListing(listing, *tape, file, &out);
        if (!tape->Status().Whole()) status = 1;
    }
    if (keepLastTape) (void)tape.release();
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
        std::string why;
        if (ReadTapeAt(files[i], tapes[i], why) && tapes[i].Status().Whole()) continue;
        err << "cintal-cli: " << files[i] << ": no se puede leer entero ("
            << (why.empty() ? tapes[i].Status().Cause() : why) << ")\n";
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

// The output's kind as screen reads it; the PNG pictures need the toolkit.
bool ToScreenFile(const std::vector<std::string>& args) {
    if (args.size() != 3) return false;
    std::string kind = ExtensionOf(args[2]);
    for (char& c : kind)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return kind == "scr";
}

// info without --set only shows; with it, it saves the tape and may update
// the catalogue.
bool ReadsOnly(const std::vector<std::string>& args) {
    for (const std::string& a : args)
        if (a.compare(0, 5, "--set") == 0) return false;
    return true;
}

int ShowInfo(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

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
    std::string out;
    out.reserve(cp1252.size() + 8);
    AppendPrintable(out, cp1252);
    return out;
}

std::string ListTape(TZXTape& tape, const std::string& file) {
    std::string out;
    AppendListing(out, tape, file, nullptr);
    return out;
}

std::string ArchiveLines(const ArchiveInfo& info) {
    std::string out;
    for (const auto& f : kArchiveFields) {
        const std::string& text = info.*(f.field);
        if (!text.empty())
            out += "info\t" + std::to_string(f.id) + '\t' + f.name + '\t' + Printable(text) + '\n';
    }
    return out;
}

const CommandSpec& InfoSpec() {
    static const CommandSpec spec{
        {{"--db", true}, {"--yes"}, {"--set", true, true}},
        1,
        1,
        "Uso: cintal-cli info [--set CAMPO=TEXTO]... [--yes] [--db CATÁLOGO] CINTA.tzx\n"};
    return spec;
}

void KeepTapesAtExit() {
    keepLastTape = true;
}

bool IsTapeCommand(const std::vector<std::string>& args) {
    if (args.empty()) return false;
    const std::string& command = args[0];
    return command == "list" || command == "compare" || command == "basic" ||
           command == "extract" || (command == "screen" && ToScreenFile(args)) ||
           command == "wav" || (command == "info" && ReadsOnly(args));
}

int RunTapeCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const std::string& command = args[0];
    if (command == "screen" || command == "basic" || command == "extract" || command == "wav") {
        CliPrompt prompt(err, false);
        PromptScope scope(prompt);
        if (command == "screen") return ScreenCommand(args, out, err, nullptr);
        if (command == "basic") return BasicCommand(args, out, err);
        if (command == "wav") return WavCommand(args, out, err);
        return ExtractCommand(args, out, err);
    }
    if (command == "info") return ShowInfo(args, out, err);
    CommandSpec spec;
    if (command == "list")
        spec = {{}, 1, args.size(), "Uso: cintal-cli list ARCHIVO...\n"};
    else
        spec = {{}, 2, 2, "Uso: cintal-cli compare A.tzx B.tzx\n"};
    Arguments arguments;
    if (const int status = Stop(arguments.Parse(args, spec, out, err)); status >= 0) return status;
    CliPrompt prompt(err, false);
    PromptScope scope(prompt);
    if (command == "list") return List(arguments.words, out, err);
    return Compare(arguments.words, out, err);
}

namespace {

void AppendPrintable(std::string& out, std::string_view cp1252) {
    // Runs of plain characters go over whole: a listing prints thousands.
    std::size_t plain = 0;
    for (std::size_t i = 0; i < cp1252.size(); ++i) {
        const auto c = static_cast<unsigned char>(cp1252[i]);
        if (c >= 0x20 && c < 0x80 && c != '\\') continue;
        out.append(cp1252, plain, i - plain);
        plain = i + 1;
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
            out += Cp1252ToUtf8(cp1252.substr(i, 1));
        }
    }
    out.append(cp1252, plain);
}

void AppendListing(std::string& out, TZXTape& tape, const std::string& file, std::ostream* to) {
    // Going out in pieces, the listing takes no more memory than one piece.
    constexpr std::size_t kPiece = 1 << 16;
    out.reserve(to ? kPiece + 4096 : 96 * static_cast<std::size_t>(tape.Blocks().Count()) + 256);
    out += "Archivo " + file + " - versión ";
    AppendNumber(out, tape.FileVersion);
    out += '.';
    AppendNumber(out, tape.FileRevision);
    out += '\n';
    // Positions as the inspector counts them: from 11, each start one past
    // the previous end, so a cut last block ends past the file's size.
    std::int64_t start = 11, number = 0;
    const std::vector<Checksum> sums = ChecksumsOf(tape.Blocks());
    for (const BlockRef& b : tape.Blocks()) {
        const std::int64_t end = start + b->LenghtTot - 1;
        const Checksum sum = sums[static_cast<std::size_t>(number)];
        AppendNumber(out, ++number);
        out += '\t';
        out += Hex2(b->IdTipoBloque);
        out += '\t';
        AppendPrintable(out, b->TipoBloque);
        out += '\t';
        AppendPrintable(out, b->Descr);
        out += '\t';
        AppendNumber(out, start);
        out += '\t';
        AppendNumber(out, end);
        out += '\t';
        out += sum == Checksum::Right ? "ok" : sum == Checksum::Wrong ? "mal" : "";
        out += '\n';
        start = end + 1;
        if (to && out.size() >= kPiece) {
            to->write(out.data(), static_cast<std::streamsize>(out.size()));
            out.clear();
        }
    }
    out += ArchiveLines(tape.ArchiveInfo());
    const ReadStatus& st = tape.Status();
    if (!st.Whole())
        out += "incompleto\t" + std::to_string(st.ordinal) + '\t' + std::to_string(st.position) +
               '\t' + st.Cause() + '\n';
    if (to) {
        to->write(out.data(), static_cast<std::streamsize>(out.size()));
        out.clear();
    }
}

int ShowInfo(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    if (const int status = Stop(a.Parse(args, InfoSpec(), out, err)); status >= 0) return status;
    CliPrompt prompt(err, a.Has("--yes"));
    PromptScope scope(prompt);
    TZXTape tape;
    if (!ArchiveOf(a.words[0]).empty()) {
        std::string why;
        if (!ReadTapeAt(a.words[0], tape, why)) {
            err << "cintal-cli: " << a.words[0] << ": " << why << "\n";
            return 1;
        }
        out << ArchiveLines(tape.ArchiveInfo());
        return tape.Status().Whole() ? 0 : 1;
    }
    // The tape is named by its full path, as the inspector names it.
    std::error_code ec;
    const std::filesystem::path full = std::filesystem::absolute(a.words[0], ec);
    tape.FileName = ec ? a.words[0] : full.lexically_normal().generic_string();
    tape.ReadTape();
    out << ArchiveLines(tape.ArchiveInfo());
    return tape.Status().Whole() ? 0 : 1;
}

} // namespace

} // namespace cintal::cli
