#include "tape/Content.h"

#include "tape/Layout.h"

#include <algorithm>
#include <iterator>

namespace cintal {

namespace {

using detail::Sub;
using detail::U16;
using detail::U8;

// The keywords from 0xA3: SPECTRUM and PLAY of the 128K, then the 48K's.
constexpr const char* kKeywords[] = {
    "SPECTRUM", "PLAY",    "RND",     "INKEY$", "PI",     "FN",       "POINT",     "SCREEN$",
    "ATTR",     "AT",      "TAB",     "VAL$",   "CODE",   "VAL",      "LEN",       "SIN",
    "COS",      "TAN",     "ASN",     "ACS",    "ATN",    "LN",       "EXP",       "INT",
    "SQR",      "SGN",     "ABS",     "PEEK",   "IN",     "USR",      "STR$",      "CHR$",
    "NOT",      "BIN",     "OR",      "AND",    "<=",     ">=",       "<>",        "LINE",
    "THEN",     "TO",      "STEP",    "DEF FN", "CAT",    "FORMAT",   "MOVE",      "ERASE",
    "OPEN #",   "CLOSE #", "MERGE",   "VERIFY", "BEEP",   "CIRCLE",   "INK",       "PAPER",
    "FLASH",    "BRIGHT",  "INVERSE", "OVER",   "OUT",    "LPRINT",   "LLIST",     "STOP",
    "READ",     "DATA",    "RESTORE", "NEW",    "BORDER", "CONTINUE", "DIM",       "REM",
    "FOR",      "GO TO",   "GO SUB",  "INPUT",  "LOAD",   "LIST",     "LET",       "PAUSE",
    "NEXT",     "POKE",    "PRINT",   "PLOT",   "RUN",    "SAVE",     "RANDOMIZE", "IF",
    "CLS",      "DRAW",    "CLEAR",   "RETURN", "COPY"};
static_assert(std::size(kKeywords) == 0x100 - 0xA3);

constexpr std::uint8_t kFirstKeyword = 0xA3;
constexpr std::uint8_t kRem = 0xEA;
constexpr std::uint8_t kNumber = 0x0E;
constexpr std::uint8_t kLineEnd = 0x0D;

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

void Code(std::string& out, std::uint32_t c) {
    out += "\\{";
    out += std::to_string(c);
    out += '}';
}

// How many bytes follow a control code as its parameters: INK to OVER take
// one, AT and TAB two.
std::size_t ControlParameters(std::uint8_t c) {
    if (c >= 0x10 && c <= 0x15) return 1;
    if (c == 0x16 || c == 0x17) return 2;
    return 0;
}

// A character that is not a keyword, as zmakebas writes it. Returns how many
// bytes of line from i it took.
std::size_t Character(std::string_view line, std::size_t i, std::string& out) {
    const auto c = static_cast<std::uint8_t>(line[i]);
    if (c < 0x20) {
        Code(out, c);
        std::size_t n = std::min(ControlParameters(c), line.size() - i - 1);
        for (std::size_t k = 1; k <= n; ++k)
            Code(out, static_cast<std::uint8_t>(line[i + k]));
        return 1 + n;
    }
    if (c == '\\') {
        out += "\\\\";
    } else if (c == 0x60) {
        out += '`'; // the pound sign
    } else if (c < 0x7F) {
        out += static_cast<char>(c);
    } else if (c == 0x7F) {
        out += "\\*"; // the copyright sign
    } else if (c < 0x90) {
        // Block graphics: bit 0 top right, 1 top left, 2 bottom right, 3
        // bottom left; each column as one of " ", "'", ".", ":".
        static constexpr char kColumn[] = {' ', '\'', '.', ':'};
        out += '\\';
        out += kColumn[((c >> 1) & 1) | ((c >> 2) & 2)];
        out += kColumn[(c & 1) | ((c >> 1) & 2)];
    } else if (c < 0xA5) {
        out += '\\';
        out += static_cast<char>('a' + (c - 0x90)); // user-defined graphics A to U
    } else {
        Code(out, c);
    }
    return 1;
}

// A keyword spaced as the ROM lists it: a space before the commands and
// operators that start with a letter unless one is already there, and one
// after those that end in a letter or "$", but RND, INKEY$ and PI.
void Keyword(std::uint8_t c, std::string& out) {
    const std::string_view word = kKeywords[c - kFirstKeyword];
    const bool command = c >= 0xC5 || c < 0xA5;
    if (command && IsLetter(word.front()) && !out.empty() && out.back() != ' ') out += ' ';
    out += word;
    const bool function = c >= 0xA5 && c <= 0xA7;
    if (!function && (IsLetter(word.back()) || word.back() == '$')) out += ' ';
}

void ListLine(std::string_view line, std::string& out) {
    bool quoted = false, rem = false;
    for (std::size_t i = 0; i < line.size();) {
        const auto c = static_cast<std::uint8_t>(line[i]);
        if (quoted || rem) {
            if (c == '"' && quoted) quoted = false;
            i += Character(line, i, out);
            continue;
        }
        if (c == kNumber) {
            i += 6; // the number's hidden form; its digits stand before it
            continue;
        }
        if (c >= kFirstKeyword) {
            Keyword(c, out);
            rem = c == kRem;
            ++i;
            continue;
        }
        if (c == '"') quoted = true;
        i += Character(line, i, out);
    }
}

} // namespace

std::string BasicListing(std::string_view program) {
    std::string out;
    out.reserve(program.size() * 5 / 4);
    std::size_t pos = 0;
    while (program.size() - pos >= 4) {
        const std::uint32_t number = U8(program, pos) << 8 | U8(program, pos + 1);
        if (number >= 0x4000) break; // where the Spectrum ends the program too
        const std::size_t length = U16(program, pos + 2);
        pos += 4;
        std::string_view line = Sub(program, pos, length);
        pos += line.size();
        if (!line.empty() && static_cast<std::uint8_t>(line.back()) == kLineEnd)
            line.remove_suffix(1);
        out += std::to_string(number);
        out += ' ';
        ListLine(line, out);
        out += '\n';
    }
    return out;
}

std::string ListingOf(const Block& block, const BlockContent& content) {
    if (content.kind != ContentKind::Program) return {};
    return BasicListing(ContentBytes(block, content).substr(0, content.programLength));
}

} // namespace cintal
