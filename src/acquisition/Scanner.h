#pragma once
// The disk scan: every TZX tape under a folder that the catalogue doesn't
// have yet, plain or inside a .zip, .7z or .rar archive, becomes a file row
// under a title found or made from its archive information, with the hashes
// of its content. The window, cintal-cli and the tests drive the same scanner.

#include "catalogue/FileHashes.h"

#include <QElapsedTimer>
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace cintal {

class TZXTape;

// The counters of the scan window. They add up over the runs of one window;
// only Total starts again at each run.
struct ScanCounters {
    qint64 Agregada = 0;    // files added to a title that existed
    qint64 Creada = 0;      // files added with a new title
    qint64 Omitida = 0;     // files already in the catalogue
    qint64 Total = 0;       // files found: tapes, archives and the tapes inside them
    qint64 Parcial = 0;     // files processed, whatever the outcome
    qint64 NwComp = 0;      // publishers added
    qint64 Comprimidos = 0; // archives found
    qint64 Interiores = 0;  // tapes found inside archives
};

// A box that reading or registering a file would have shown.
struct ScanWarning {
    QString path;
    QString text;
};

class Scanner {
public:
    enum class Result { Done, NoFiles, StoreFailed };

    // Runs the scan of the folder and everything below it.
    Result Run(const QString& folder);

    // "H:MM:SS", hours without a leading zero.
    static QString FormatElapsed(qint64 ms);

    // Told at each phase and after each file; the window repaints from it.
    std::function<void(const Scanner&)> onProgress;

    ScanCounters counters;
    QString Estado = QStringLiteral("Estado");
    QStringList List1; // folders, base first, then depth-first
    QStringList List2; // tapes and archives found, folder by folder
    int current = -1;  // the entry of List2 being processed
    qint64 elapsedMs = 0;
    std::vector<ScanWarning> warnings;

private:
    void BuscaDirectorios(const QString& path);
    void BuscaArchivos();
    // False when the store failed.
    bool ProcessFile(const QString& path);
    // warnedAs is the path that the boxes of reading a tape are kept under.
    bool ProcessArchive(const QString& path, QString& warnedAs);
    // What a tape read from disk or from an archive needs to become a row.
    struct Found {
        QString dir, name, ext; // the file on disk: the archive for an inner tape
        QString inner;          // the path inside the archive, or empty
        QString shownName;      // the title's name when the tape has none
        platform::ContentHashes hashes;
        DiskStamp stamp;
    };
    bool Register(TZXTape& tape, const Found& f);
    void Tell();

    QElapsedTimer clock;
    QHash<qint64, DiskStamp> stamps; // by FileId, of the rows with hashes
    qint64 unnamed = 0;              // tapes whose names aren't valid UTF-8
};

// Writes the file that CurInfo describes under the title, making the title
// when titleId is 0; titleId comes back as the title used. inner is the path
// inside the archive that CurInfo's file names, or empty. False after a store
// failure.
bool AddScannedFile(double& idPub, double& titleId, const QString& inner = {},
                    const platform::ContentHashes* hashes = nullptr, const DiskStamp& stamp = {});

} // namespace cintal
