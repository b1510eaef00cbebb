#pragma once
// The disk scan: every TZX tape under a folder that the catalogue doesn't
// have yet becomes a file row under a title found or made from its archive
// information. The window, cintal-cli and the tests drive the same scanner.

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace cintal {

// The counters of the scan window. They add up over the runs of one window;
// only Total starts again at each run.
struct ScanCounters {
    qint64 Agregada = 0; // files added to a title that existed
    qint64 Creada = 0;   // files added with a new title
    qint64 Omitida = 0;  // files already in the catalogue
    qint64 Total = 0;    // files found
    qint64 Parcial = 0;  // files processed, whatever the outcome
    qint64 NwComp = 0;   // publishers added
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
    QStringList List2; // tapes found, folder by folder
    int current = -1;  // the entry of List2 being processed
    qint64 elapsedMs = 0;
    std::vector<ScanWarning> warnings;

private:
    void BuscaDirectorios(const QString& path);
    void BuscaArchivos();
    // False when the store failed.
    bool ProcessFile(const QString& path);
    void Tell();

    QElapsedTimer clock;
    qint64 unnamed = 0; // tapes whose names aren't valid UTF-8
};

// Writes the file that CurInfo describes under the title, making the title
// when titleId is 0; titleId comes back as the title used. False after a
// store failure.
bool AddScannedFile(double& idPub, double& titleId);

} // namespace cintal
