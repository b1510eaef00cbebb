#include "acquisition/Scanner.h"

#include "catalogue/Breathe.h"
#include "catalogue/Comunes.h"
#include "catalogue/Dats.h"
#include "catalogue/FileHashes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "platform/Archive.h"
#include "platform/PathCase.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <algorithm>

namespace cintal {

namespace {

QString VariantText(const Variant& v) {
    if (const auto* s = std::get_if<std::string>(&v)) return QString::fromStdString(*s);
    if (const auto* d = std::get_if<double>(&v)) return QString::number(*d, 'f', 0);
    return {};
}

// A box that a file's reading or registering would show is kept with the
// file's path instead: a scan of thousands of tapes never stops on one.
class CollectingPrompt : public Prompt {
public:
    explicit CollectingPrompt(std::vector<ScanWarning>& into) : into(into) {}
    Button Show(const Message& m) override {
        into.push_back({path, QString::fromStdString(m.text)});
        return DefaultAnswer(m.buttons);
    }
    QString path;

private:
    std::vector<ScanWarning>& into;
};

// One order for folders and files: by name, ignoring case; two names that
// differ only in case keep a fixed order between them.
bool NameOrder(const QString& a, const QString& b) {
    const int c = a.compare(b, Qt::CaseInsensitive);
    return c != 0 ? c < 0 : a < b;
}

} // namespace

QString Scanner::FormatElapsed(qint64 ms) {
    const qint64 s = ms / 1000;
    return QStringLiteral("%1:%2:%3")
        .arg(s / 3600)
        .arg((s / 60) % 60, 2, 10, QLatin1Char('0'))
        .arg(s % 60, 2, 10, QLatin1Char('0'));
}

void Scanner::Tell() {
    elapsedMs = clock.isValid() ? clock.elapsed() : 0;
    if (onProgress) onProgress(*this);
}

void Scanner::BuscaDirectorios(const QString& path) {
    // Hidden folders, links and folders that can't be read are not walked.
    const QFileInfoList entries =
        QDir(path).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    QStringList names;
    for (const QFileInfo& e : entries) {
        if (e.fileName().startsWith('.') || e.isSymLink() || !e.isReadable() || !e.isExecutable())
            continue;
        names << e.fileName();
    }
    std::sort(names.begin(), names.end(), NameOrder);
    for (const platform::UnnamedEntry& e : platform::UnnamedEntries(path))
        if (e.folder && !e.shown.startsWith('.'))
            warnings.push_back({Records::PathIn(path, e.shown),
                                QStringLiteral("el nombre no es UTF-8 válido: no se recorre")});
    for (const QString& name : names) {
        const QString sub = Records::PathIn(path, name);
        List1 << sub;
        Tell();
        Breathe();
        BuscaDirectorios(sub);
    }
}

void Scanner::BuscaArchivos() {
    Estado = QStringLiteral("Buscando archivos...");
    Tell();
    for (const QString& folder : std::as_const(List1)) {
        // The mask "*.tzx" ignores case: the collection came from a file
        // system that did. Hidden files are not found.
        QStringList names =
            QDir(folder).entryList({QStringLiteral("*.tzx"), QStringLiteral("*.zip"),
                                    QStringLiteral("*.7z"), QStringLiteral("*.rar")},
                                   QDir::Files, QDir::NoSort);
        names.erase(std::remove_if(names.begin(), names.end(),
                                   [](const QString& n) { return n.startsWith('.'); }),
                    names.end());
        std::sort(names.begin(), names.end(), NameOrder);
        for (const QString& name : std::as_const(names)) {
            List2 << Records::PathIn(folder, name);
            ++counters.Total;
            Tell();
            Breathe();
        }
        // Found and counted, but a name with no Unicode spelling can't be
        // stored, nor opened again from the catalogue.
        for (const platform::UnnamedEntry& e : platform::UnnamedEntries(folder)) {
            if (!e.tape || e.shown.startsWith('.')) continue;
            warnings.push_back(
                {Records::PathIn(folder, e.shown),
                 QStringLiteral("el nombre no es UTF-8 válido: no se puede catalogar")});
            ++counters.Total;
            ++unnamed;
        }
    }
}

Scanner::Result Scanner::Run(const QString& folder) {
    clock.start();
    Estado = QStringLiteral("Procesando directorios...");
    counters.Total = 0;
    current = -1;
    warnings.clear();
    // A separator at the end goes, but the root stays "/".
    QString base = folder;
    while (base.size() > 1 && base.endsWith('/'))
        base.chop(1);
    List1.clear();
    List2.clear();
    unnamed = 0;
    List1 << base;
    Tell();
    BuscaDirectorios(base);
    BuscaArchivos();
    // What can't be catalogued is done with once warned about.
    counters.Parcial += unnamed;
    if (List2.isEmpty()) {
        Estado = QStringLiteral("No hay archivos que agregar");
        Tell();
        return Result::NoFiles;
    }
    Estado = QStringLiteral("Procesando archivos...");
    Tell();
    Comunes::CurTape = std::make_unique<TZXTape>();
    Result result = Result::Done;
    // What the hashes of the files catalogued already were taken against,
    // read once rather than once a file.
    stamps.clear();
    {
        QuietErrors quiet;
        QSqlQuery q = Store::NewQuery();
        if (!Store::Exec(q, "SELECT FileId, DiskSize, DiskTime FROM tFiles WHERE Sha1 <> '' AND "
                            "DiskSize IS NOT NULL"))
            result = Result::StoreFailed;
        while (q.next())
            stamps.insert(NumberOf(q.value(0)), {NumberOf(q.value(1)), NumberOf(q.value(2))});
    }
    for (current = 0; result == Result::Done && current < List2.size(); ++current) {
        if (!ProcessFile(List2[current])) {
            // What this file wrote goes; the files done before it stay.
            Store::Rollback();
            result = Result::StoreFailed;
            break;
        }
        Breathe();
        ++counters.Parcial;
        Tell();
    }
    Comunes::CurTape.reset();
    if (result == Result::StoreFailed) {
        Records::ReloadRegisters();
        Estado = QStringLiteral("Error en el catálogo");
        Tell();
        Store::ReportError(Store::LastError());
        return result;
    }
    if (!warnings.empty())
        Estado = QStringLiteral("Terminado: %1 avisos")
                     .arg(Number(static_cast<qint64>(warnings.size())));
    Tell();
    return result;
}

bool Scanner::ProcessFile(const QString& path) {
    CollectingPrompt collect(warnings);
    collect.path = path;
    PromptScope scope(collect);
    // Failures of the store are told once, at the end of the run.
    QuietErrors quiet;
    const int failures = Store::Failures();
    auto failed = [&] { return Store::Failures() != failures; };

    const std::string p = path.toStdString();
    if (platform::IsArchiveName(p)) return ProcessArchive(path, collect.path);
    Found f;
    f.name = QString::fromStdString(FileNameOf(p));
    f.ext = QString::fromStdString(ExtensionOf(p)).toLower();
    f.dir = Records::FolderOf(path);
    f.shownName = f.name;
    f.stamp = FileHashes::StampOf(path);

    // The rows of one file go in together: a crash never leaves half a file.
    // A file that writes nothing opens no transaction.
    bool open = false;
    auto begin = [&] { return open || (open = Store::Begin()); };
    auto done = [&] { return !open || Store::Commit(); };
    const qint64 pathIndex = Records::FindPathIndex(f.dir);
    if (pathIndex == 0 && (!begin() || !Records::AddPath(f.dir))) return false;
    // A folder new to the register has no files: its number stays 0 here.
    const std::optional<qint64> known =
        pathIndex == 0 ? std::optional<qint64>(0) : Records::FileRowOf(f.name, f.ext, pathIndex);
    if (!known || failed()) return false;
    if (*known != 0) {
        if (!done()) return false;
        ++counters.Omitida;
        // Hashes are taken again only when the file changed on disk.
        const auto was = stamps.constFind(*known);
        if (was != stamps.cend() && *was == f.stamp) return true;
        std::string bytes, why;
        if (!platform::ReadFileOrInner(p, bytes, why)) return true;
        return FileHashes::Save(
            *known, platform::HashBytes(bytes.data(), static_cast<qint64>(bytes.size())), f.stamp);
    }
    if (f.ext != QLatin1String("tzx")) return done();

    // One read gives the tape and its hashes; a file that can't be read is
    // read the engine's way, which says why.
    TZXTape& tape = *Comunes::CurTape;
    tape.FileName = p;
    std::string bytes, why;
    if (platform::ReadFileOrInner(p, bytes, why)) {
        tape.ReadImage(bytes);
        f.hashes = platform::HashBytes(bytes.data(), static_cast<qint64>(bytes.size()));
    } else {
        tape.ReadTape();
    }
    return Register(tape, f) && done();
}

bool Scanner::ProcessArchive(const QString& path, QString& warnedAs) {
    const std::string p = path.toStdString();
    Found f;
    f.name = QString::fromStdString(FileNameOf(p));
    f.ext = QString::fromStdString(ExtensionOf(p)).toLower();
    f.dir = Records::FolderOf(path);
    f.stamp = FileHashes::StampOf(path);
    ++counters.Comprimidos;

    // The rows of this archive's tapes, by inner path.
    struct Row {
        qint64 fileId;
        bool current;
    };
    QHash<QString, Row> rows;
    if (const qint64 pathIndex = Records::FindPathIndex(f.dir); pathIndex != 0) {
        QSqlQuery* q = Store::Cached("SELECT FileId, FileName, InnerPath, DiskSize, DiskTime, Sha1 "
                                     "FROM tFiles WHERE FileName = ? AND Extension = ? AND "
                                     "PathIndex = ? AND InnerPath <> ''",
                                     {f.name, f.ext, pathIndex});
        if (!q) return false;
        while (q->next()) {
            // Names that differ only in case are other archives.
            if (TextOf(q->value(1)) != f.name) continue;
            const bool current = !q->value(3).isNull() && !TextOf(q->value(5)).isEmpty() &&
                                 DiskStamp{NumberOf(q->value(3)), NumberOf(q->value(4))} == f.stamp;
            rows.insert(TextOf(q->value(2)), {NumberOf(q->value(0)), current});
        }
        q->finish();
    }
    // An archive that didn't change since its tapes were catalogued is not
    // opened.
    if (!rows.isEmpty() &&
        std::all_of(rows.cbegin(), rows.cend(), [](const Row& r) { return r.current; })) {
        const qint64 n = rows.size();
        counters.Total += n;
        counters.Interiores += n;
        counters.Omitida += n;
        counters.Parcial += n;
        return true;
    }

    std::vector<platform::ArchiveWarning> said;
    bool ok = true;
    TZXTape& tape = *Comunes::CurTape;
    platform::ReadArchive(
        p,
        [](const std::string& inner) {
            return QString::fromStdString(ExtensionOf(inner))
                       .compare(QLatin1String("tzx"), Qt::CaseInsensitive) == 0;
        },
        [&](const std::string& inner, std::string& bytes) {
            if (!ok) return;
            ++counters.Total;
            ++counters.Interiores;
            f.inner = QString::fromStdString(inner);
            warnedAs = QString::fromStdString(platform::JoinInner(p, inner));
            f.hashes = platform::HashBytes(bytes.data(), static_cast<qint64>(bytes.size()));
            const auto row = rows.constFind(f.inner);
            if (row != rows.cend()) {
                ++counters.Omitida;
                ok = row->current || FileHashes::Save(row->fileId, f.hashes, f.stamp);
            } else {
                f.shownName = QString::fromStdString(FileNameOf(inner));
                tape.FileName = platform::JoinInner(p, inner);
                tape.ReadImage(bytes);
                ok = Register(tape, f);
            }
            ++counters.Parcial;
            Tell();
            Breathe();
        },
        said);
    for (const platform::ArchiveWarning& w : said)
        warnings.push_back({QString::fromStdString(w.path), QString::fromStdString(w.text)});
    return ok;
}

bool Scanner::Register(TZXTape& tape, const Found& f) {
    const int failures = Store::Failures();
    auto failed = [&] { return Store::Failures() != failures; };
    // A file that can't be read at all is passed over; one that reads but is
    // no tape goes in under its file name.
    if (tape.Status().stop == ReadStop::Unreadable || tape.Status().stop == ReadStop::Missing)
        return true;
    if (!Store::Begin()) return false;
    if (Records::FindPathIndex(f.dir) == 0 && !Records::AddPath(f.dir)) return false;
    if (Comunes::CurInfo) Comunes::CurInfo->Clear();
    Comunes::CurInfo = tape.ArchiveInfoRef();
    ArchiveInfo& info = *Comunes::CurInfo;

    double idPub = 0;
    bool newPublisher = false;
    if (!info.iPublisher.empty()) {
        while (!info.iPublisher.empty() && info.iPublisher.back() == ' ')
            info.iPublisher.pop_back();
        // Blanks alone name no publisher.
        const QString publisher = Comunes::FromTape(info.iPublisher);
        const qint64 match = publisher.isEmpty() ? 0 : Comunes::FindPublisher(publisher);
        // Slot 0 stands for no publisher: matching it is having none.
        if (match > 0) idPub = static_cast<double>(match);
        if (match < 0) {
            const qint64 id = Records::AddPublisher(publisher);
            if (id < 0 || !Comunes::LoadPublishers()) return false;
            idPub = static_cast<double>(id);
            newPublisher = true;
        }
    }
    info.fPath = f.dir.toStdString();
    info.fPathIndex = static_cast<double>(Records::FindPathIndex(f.dir));
    info.fExtension = f.ext.toStdString();
    info.fFileName = f.name.toStdString();
    info.fFileSize = static_cast<double>(f.inner.isEmpty() ? f.stamp.size : f.hashes.size);
    // A tape without a name is named after its file, as the file system
    // spells it: the name never passes through the tape's Windows-1252.
    Comunes::CurName = info.iName.empty() ? f.shownName : Comunes::FromTape(info.iName);

    double titleId = static_cast<double>(Records::FindTitle(static_cast<qint64>(idPub)));
    if (failed()) return false;
    const bool isNew = titleId == 0;
    const platform::ContentHashes* hashes = f.hashes.sha1.isEmpty() ? nullptr : &f.hashes;
    if (!AddScannedFile(idPub, titleId, f.inner, hashes, f.stamp) || !Store::Commit()) return false;
    // Counted once the file's rows stand: a rolled-back publisher is none.
    if (newPublisher) ++counters.NwComp;
    ++(isNew ? counters.Creada : counters.Agregada);
    return true;
}

using Comunes::CurName;
using Comunes::FromTape;
using Comunes::Info;
using Records::FileInDB;

bool AddScannedFile(double& idPub, double& titleId, const QString& inner,
                    const platform::ContentHashes* hashes, const DiskStamp& stamp) {
    const ArchiveInfo& info = Info();
    const QString fileName = VariantText(info.fFileName);
    const QString extension = VariantText(info.fExtension);
    const QString dir = VariantText(info.fPath);
    const qint64 pathIndex = VariantText(info.fPathIndex).toLongLong();
    const int failures = Store::Failures();
    // The tapes of one archive share its name: the scan tells them apart.
    if (inner.isEmpty() && FileInDB(fileName, extension, pathIndex)) return true;
    if (Store::Failures() != failures) return false;
    // Found ignoring case, as the extension is kept in lower case.
    const bool onDisk = !platform::FindEntry(dir, fileName + '.' + extension).isEmpty();
    if (titleId == 0) {
        QSqlQuery* q = Store::Cached("INSERT INTO Titles (Name, Year, IdPub, Type, HaveIt, Author) "
                                     "VALUES (?, ?, ?, ?, ?, ?)",
                                     {LeftChars(CurName, 50), FromTape(info.iYear).left(4),
                                      static_cast<qint64>(idPub), FromTape(info.iType).left(3),
                                      onDisk ? QVariant(1) : QVariant(), FromTape(info.iAuthor)});
        if (!q) return false;
        titleId = static_cast<double>(Store::LastInsertId(*q));
        q->finish();
    }
    const QString lang = Comunes::FromTape(info.iLang);
    const QString memory = VariantText(info.fMemory);
    QSqlQuery* row = Store::Cached(
        "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, Origscreen, "
        "Memory, Players, FileSize, Origin, IdLang, LoadSchema, HaveIt, InnerPath, "
        "Crc32, Md5, Sha1, DiskSize, DiskTime) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {static_cast<qint64>(titleId), fileName, extension, pathIndex, info.fOriginalScreen ? 1 : 0,
         memory.isEmpty() ? QVariant() : QVariant(memory.toLongLong()),
         VariantText(info.fPlayers).toLongLong(), VariantText(info.fFileSize).toLongLong(),
         Comunes::FromTape(info.iOrigin).left(50),
         lang.isEmpty() ? QVariant() : QVariant(lang.left(3)), Comunes::FromTape(info.iSchema),
         onDisk ? 1 : 0, inner.isEmpty() ? QVariant() : QVariant(inner),
         hashes ? QVariant(hashes->crc32) : QVariant(), hashes ? QVariant(hashes->md5) : QVariant(),
         hashes ? QVariant(hashes->sha1) : QVariant(), hashes ? QVariant(stamp.size) : QVariant(),
         hashes ? QVariant(stamp.time) : QVariant()});
    if (!row) return false;
    const qint64 fileId = Store::LastInsertId(*row);
    row->finish();
    // Known to a DAT from the moment it is catalogued, as a file hashed again is.
    if (hashes && !Dats::IdentifyFile(fileId, *hashes, true)) return false;
    return Store::Run("UPDATE Titles SET HaveIt = 1 WHERE TitleId = ?",
                      {static_cast<qint64>(titleId)});
}

} // namespace cintal
