#include "acquisition/WosImporter.h"

#include "catalogue/Breathe.h"
#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "platform/ErrorText.h"
#include "platform/PathCase.h"
#include "tape/Cp1252.h"
#include "tape/Prompt.h"

#include <QFile>
#include <QFileInfo>
#include <iterator>

namespace cintal {

namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kSpeech = QStringLiteral("(speech)");
const QString kEndLink = QStringLiteral("</A>");

// The columns of a record.
struct Column {
    int at, width;
};
constexpr Column kName{0, 43}, kYear{52, 4}, kPublisher{57, 36}, kLang{94, 3}, kMemory{98, 6},
    kType{105, 7}, kMarker{113, 3}, kFlag{117, 1};

// A field without the blanks behind it. The last line of a table loses its
// last character to the cut before "</PRE>", and a carriage return stands in
// its place: it goes with the blanks.
QString RTrim(const QString& text) {
    qsizetype n = text.size();
    while (n > 0 && text.at(n - 1).unicode() <= ' ')
        --n;
    return text.left(n);
}

QString Field(const QString& record, Column c) {
    return RTrim(record.mid(c.at, c.width));
}

int EstadoOf(const QString& marker) {
    if (marker == QLatin1String("MIA")) return 2;
    if (marker == QLatin1String("STP")) return 1;
    if (marker == QLatin1String("DND")) return 3;
    return 4;
}

// HTML's named entities for U+00A0 to U+00FF, in the order of their code.
constexpr const char* kLatin1Entities[] = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",
    "copy",   "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn",
    "sup2",   "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",
    "raquo",  "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde",
    "Auml",   "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave",
    "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde",
    "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",
    "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil",
    "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",
    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};
static_assert(std::size(kLatin1Entities) == 96);

// The character an entity's name (between "&" and ";") stands for, or 0 for a
// name that isn't one.
char32_t EntityChar(QStringView name) {
    char32_t c = 0;
    if (name.startsWith(QLatin1Char('#'))) {
        const bool hex =
            name.size() > 1 && (name[1] == QLatin1Char('x') || name[1] == QLatin1Char('X'));
        bool ok = false;
        const uint n = name.mid(hex ? 2 : 1).toUInt(&ok, hex ? 16 : 10);
        if (!ok || n == 0 || n > 0x10FFFF || (n >= 0xD800 && n <= 0xDFFF)) return 0;
        c = n;
        // Pages written on Windows number the characters of its code page.
        if (c >= 0x80 && c <= 0x9F) {
            const char byte = static_cast<char>(c);
            c = QString::fromStdString(Cp1252ToUtf8(std::string_view(&byte, 1))).toUcs4().value(0);
        }
    } else if (name == QLatin1String("amp")) {
        c = '&';
    } else if (name == QLatin1String("lt")) {
        c = '<';
    } else if (name == QLatin1String("gt")) {
        c = '>';
    } else if (name == QLatin1String("quot")) {
        c = '"';
    } else if (name == QLatin1String("apos")) {
        c = '\'';
    } else {
        for (std::size_t i = 0; i < std::size(kLatin1Entities); ++i)
            if (name == QLatin1String(kLatin1Entities[i])) c = static_cast<char32_t>(0xA0 + i);
    }
    // The columns are padded with blanks: a hard space is one of them.
    return c == 0xA0 ? U' ' : c;
}

// The line as a browser shows it: each entity is the one character it stands
// for. One that isn't known stays as it is written.
QString DecodeEntities(const QString& line) {
    if (!line.contains(QLatin1Char('&'))) return line;
    QString out;
    out.reserve(line.size());
    for (qsizetype i = 0; i < line.size();) {
        if (line[i] == QLatin1Char('&')) {
            const qsizetype semi = line.indexOf(QLatin1Char(';'), i + 1);
            if (semi > i + 1 && semi - i <= 10) {
                if (const char32_t c = EntityChar(QStringView(line).mid(i + 1, semi - i - 1))) {
                    out += QString::fromUcs4(&c, 1);
                    i = semi + 1;
                    continue;
                }
            }
        }
        out += line[i++];
    }
    return out;
}

QString VariantText(const Variant& v) {
    if (const auto* s = std::get_if<std::string>(&v)) return QString::fromStdString(*s);
    if (const auto* d = std::get_if<double>(&v)) return QString::number(*d, 'f', 0);
    return {};
}

} // namespace

QString ParseWosText(const QString& saved, WosPageInfo* info) {
    // A page saved on Windows ends its lines in carriage return and line feed.
    QString page = saved;
    page.replace(kCrLf, QStringLiteral("\n"));
    WosPageInfo scratch;
    WosPageInfo& out = info ? *info : scratch;
    out.found = true;
    out.table = false;
    out.leftOut.clear();
    const qsizetype s = page.indexOf(QLatin1String("<PRE>"));
    const qsizetype e = page.lastIndexOf(QLatin1String("</PRE>"));
    if (s < 0 || e <= s) return {};
    out.table = true;
    // "<PRE>" and the character behind it go, and so do the two characters in
    // front of "</PRE>": when the table ends in a line feed there, that and
    // the line's last character.
    QString text = page.mid(s + 6, std::max<qsizetype>(0, e - s - 8));
    text += kCrLf;
    text.replace(QLatin1Char('\n'), kCrLf);
    if (text.size() <= kWosRecord) return {};
    int line = 1 + static_cast<int>(page.left(s + 6).count(QLatin1Char('\n'))) +
               static_cast<int>(QStringView(text).left(kWosRecord).count(QLatin1Char('\n')));

    QString records;
    records.reserve(text.size());
    qsizetype at = kWosRecord;
    for (;; ++line) {
        const qsizetype end = text.indexOf(kCrLf, at);
        // A short or empty line ends the table.
        const qsizetype p = end < 0 ? 0 : end - at + 1;
        if (p < 20) break;
        QString l = text.mid(at, p + 1);
        at += p + 1;
        const qsizetype n = l.size();
        if (l.startsWith(QLatin1String("<B>"))) {
            l = l.mid(3, n - 9) + QLatin1String(" STP");
        } else if (l.startsWith(QLatin1String("<I>"))) {
            l = l.mid(3, n - 9) + QLatin1String("    ");
        } else if (l.startsWith(QLatin1String("<FO"))) {
            if (QStringView(l).mid(13, 4) == QLatin1String("BLUE"))
                l = l.mid(19, n - 28) + QLatin1String(" MIA");
            else if (QStringView(l).mid(13, 3) == QLatin1String("RED"))
                l = l.mid(18, n - 27) + QLatin1String(" DND");
        } else {
            l = l.left(n - 2) + QLatin1String("    ");
        }
        l = l.mid(l.indexOf(QLatin1Char('>')) + 1);
        if (const qsizetype a = l.indexOf(kEndLink); a >= 0) l.remove(a, kEndLink.size());
        // The columns are the visible characters: an entity is one.
        l = DecodeEntities(l);
        if (l.contains(kSpeech)) {
            l.replace(kSpeech, QString(kSpeech.size(), QLatin1Char(' ')));
            l += QLatin1String(" 1");
        } else {
            l += QLatin1String(" 0");
        }
        l += kCrLf;
        // Records are cut by their width: one of another width would shift
        // every record after it.
        if (l.size() == kWosRecord)
            records += l;
        else
            out.leftOut.push_back(line);
        Breathe();
    }
    return records;
}

using Comunes::CurName;
using Comunes::FromTape;
using Comunes::Info;
using Records::FindTitle;

QString ParseWosPage(const QString& file, WosPageInfo* info) {
    WosPageInfo scratch;
    WosPageInfo& out = info ? *info : scratch;
    out = {};
    const QFileInfo about(file);
    // A letter without entries has no page: passed over in silence.
    if (!about.exists()) return {};
    out.found = true;
    // Only a file of the disk is a page: a pipe would wait for a writer
    // forever, and a device such as /dev/zero never ends.
    if (!about.isFile()) {
        out.refused = QStringLiteral("no es un archivo normal y no se lee");
        return {};
    }
    const QString tooLarge =
        QStringLiteral("mide más de %1 MB y no se lee").arg(kWosPageLimit / (1024 * 1024));
    if (about.size() > kWosPageLimit) {
        out.refused = tooLarge;
        return {};
    }
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly)) {
        out.refused = QStringLiteral("no se puede leer: ") + ErrorText(f);
        return {};
    }
    // The size told beforehand may have changed since.
    const QByteArray bytes = f.read(kWosPageLimit + 1);
    if (bytes.size() > kWosPageLimit) {
        out.refused = tooLarge;
        return {};
    }
    const std::string utf8 = Cp1252ToUtf8(std::string_view(bytes.constData(), bytes.size()));
    return ParseWosText(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())), &out);
}

int AddWosTitle(double& idPub, int& origin) {
    const ArchiveInfo& info = Info();
    const int failures = Store::Failures();
    if (FindTitle(static_cast<qint64>(idPub)) != 0 || Store::Failures() != failures) return 0;
    // FindTitle has left the name as the store keeps it.
    QSqlQuery* q =
        Store::Cached("INSERT INTO Titles (Name, Year, IdPub, Type, OrigenInfo, Currah, Estado) "
                      "VALUES (?, ?, ?, ?, ?, ?, ?)",
                      {CurName, FromTape(info.iYear).left(4), static_cast<qint64>(idPub),
                       FromTape(info.iType).left(7).trimmed(), origin, VariantText(info.fCurrah),
                       VariantText(info.fEstado).toLongLong()});
    if (!q) return 0;
    q->finish();
    return 1;
}

bool WosImporter::IsListingRoot(const QString& folder) {
    return !folder.isEmpty() &&
           !platform::FindEntry(folder, QStringLiteral("legend.html")).isEmpty();
}

void WosImporter::Tell() {
    elapsedMs = clock.isValid() ? clock.elapsed() : 0;
    if (onProgress) onProgress(*this);
}

WosImporter::Result WosImporter::Run(const QString& folder) {
    clock.start();
    root = folder;
    counters = {};
    warnings.clear();
    Label1.clear();
    pagesDone = 0;
    pagesTotal = 0;
    for (std::size_t f = 0; f < kWosFolders.size(); ++f)
        if (folders[f]) pagesTotal += kWosPagesPerFolder;
    if (!IsListingRoot(root)) {
        Tell();
        return Result::NoLegend;
    }
    if (pagesTotal == 0) Label1 = QStringLiteral("No hay carpetas elegidas");
    Tell();
    for (std::size_t f = 0; f < kWosFolders.size(); ++f) {
        if (!folders[f]) continue;
        const WosFolder& kind = kWosFolders[f];
        for (int page = 0; page < kWosPagesPerFolder; ++page) {
            const bool letter = page < 26;
            const QString name =
                letter ? QString(QChar('a' + page)) + QStringLiteral(".html") : "1.html";
            // The pages were saved from a site whose names are lower case; a
            // copy that went through a system ignoring case may spell them
            // otherwise.
            QString file = platform::FindInFolders(root, QString::fromLatin1(kind.name), name);
            // Something that is not a file under the page's own name is told,
            // not passed over as a missing page.
            if (const QString exact = root + '/' + QString::fromLatin1(kind.name) + '/' + name;
                file.isEmpty() && QFileInfo::exists(exact))
                file = exact;
            if (!file.isEmpty() && !ImportWosPage(file, kind.state)) {
                Store::Rollback();
                Records::ReloadRegisters();
                Label1 = QStringLiteral("Error en el catálogo: ") + Store::LastError();
                Tell();
                Store::ReportError(Store::LastError());
                return Result::StoreFailed;
            }
            ++pagesDone;
            if (letter) Label1 = QString::fromUtf8(kind.progress) + QChar('a' + page);
            Tell();
        }
    }
    return Result::Done;
}

bool WosImporter::ImportWosPage(const QString& file, int state) {
    WosPageInfo info;
    const QString text = ParseWosPage(file, &info);
    if (!info.found) return true;
    if (!info.refused.isEmpty()) {
        warnings.push_back({file, info.refused});
        return true;
    }
    ++counters.Paginas;
    if (!info.table) warnings.push_back({file, QStringLiteral("no tiene tabla <PRE>")});
    for (int line : info.leftOut)
        warnings.push_back(
            {file, QStringLiteral("la línea %1 no tiene el ancho de la tabla y no se importa")
                       .arg(line)});
    // Every whole record, cut strictly by its width.
    const qsizetype records = text.size() / kWosRecord;
    for (qsizetype i = 0; i < records; ++i)
        if (!AddEntry(text.mid(i * kWosRecord, kWosRecord), state)) return false;
    return true;
}

bool WosImporter::AddEntry(const QString& record, int state) {
    // Failures of the store are told once, at the end of the run.
    QuietErrors quiet;
    const int failures = Store::Failures();
    auto failed = [&] { return Store::Failures() != failures; };

    ArchiveInfo& info = Comunes::Info();
    info.Clear();
    const QString name = Field(record, kName);
    const QString publisher = Field(record, kPublisher);
    info.iName = Comunes::ToTape(name);
    info.iYear = Comunes::ToTape(Field(record, kYear));
    info.iPublisher = Comunes::ToTape(publisher);
    info.iLang = Comunes::ToTape(Field(record, kLang));
    info.fMemory = Comunes::ToTape(Field(record, kMemory));
    info.iType = Comunes::ToTape(Field(record, kType));
    info.fEstado = static_cast<double>(state > 0 ? state : EstadoOf(Field(record, kMarker)));
    info.fCurrah = Comunes::ToTape(Field(record, kFlag));
    // The page's own text, not its round trip through the tape's encoding.
    Comunes::CurName = name;

    // A title and its new publisher go in together, or neither does.
    bool open = false;
    double idPub = 0;
    bool newPublisher = false;
    if (!publisher.isEmpty()) {
        const qint64 match = Comunes::FindPublisher(publisher);
        // Slot 0 stands for no publisher: matching it is having none.
        if (match > 0) idPub = static_cast<double>(match);
        if (match < 0) {
            if (!Store::Begin()) return false;
            open = true;
            const qint64 id = Records::AddPublisher(publisher);
            if (id < 0 || !Comunes::RegisterPublisher(id, publisher)) return false;
            idPub = static_cast<double>(id);
            newPublisher = true;
        }
    }
    int origin = 1;
    const int added = AddWosTitle(idPub, origin);
    if (failed()) return false;
    if (open && !Store::Commit()) return false;
    // Counted once the rows stand: a rolled-back publisher is none.
    if (newPublisher) ++counters.NwComp;
    ++(added ? counters.Nuevos : counters.Existentes);
    return true;
}

} // namespace cintal
