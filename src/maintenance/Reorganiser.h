#pragma once
// Reorganising the collection: the files of a list of titles, with their side
// files, move into a new tree of folders. The whole run is planned first, so
// that a dry run shows exactly what the real run then does.

#include "platform/PathCase.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace cintal {

struct ReorgFile {
    qint64 FileId = 0;
    QString dir;      // the folder, as the file grid shows it
    QString fileName; // name with extension
    QString inner;    // the path inside the archive fileName names, if any
};

struct ReorgTitle {
    qint64 TitleId = 0;
    QString name; // as the title grid shows it
    QString year; // empty when unset
    QString publisher;
    std::vector<ReorgFile> files;
};

enum class SortBy { Single = 0, Initial = 1, Year = 2, Publisher = 3 };

struct ReorgStep {
    enum class Kind {
        MakeFolder, // "crear carpeta C"
        Move,       // "mover A -> B"
        Exists,     // "ya existe: se deja"
        Missing,    // "no está: se omite"
        // What an interrupted run left: a part copy of our own in the way of
        // a move, and a file already moved whose row still names its old
        // folder.
        RemovePart, // "quitar copia a medias P"
        FixRow,     // "ya está en B: se corrige su fila"
        // Moving an archive would move the other titles' files it holds.
        InArchive, // "dentro de un archivo comprimido: se deja A"
    };
    Kind kind = Kind::Move;
    QString source; // the file that moves (empty for a folder)
    QString dest;   // the folder made, the path the file takes, or the part copy
    bool side = false;
    qint64 FileId = 0; // the row that follows a title's own file
    int title = -1;    // index of the title in the run

    // The line that the plan list shows.
    QString Text() const;
};

struct ReorgCounters {
    qint64 Titulos = 0;
    qint64 Movidos = 0;
    qint64 Laterales = 0;
    qint64 Omitidos = 0; // left as they were on purpose: in place, or missing
    qint64 Fallidos = 0; // tried and failed
};

class Reorganiser {
public:
    // The folder the run fills: the parent, then the subfolder; an empty
    // subfolder is the parent itself.
    static QString Target(const QString& parent, const QString& subFolder);
    // Why the subfolder can't be used, or empty when it can: it is one folder
    // name, so that the target stays inside the parent.
    static QString SubFolderRefusal(const QString& subFolder);
    // A title's or publisher's text made fit for a folder name.
    static QString FolderName(const QString& text);
    // The folder of a title below target, by the order chosen.
    static QString DestFolder(SortBy order, const QString& name, const QString& year,
                              const QString& publisher);

    // Works out every step for the titles. Reads the disk, never writes it.
    void Plan(const QString& target, SortBy order, const std::vector<ReorgTitle>& titles);

    enum class Result { Done, FolderFailed };
    // Carries the plan out. With updateCatalogue, each title's own file that
    // moves has its row pointed at the new folder in the same step; a row
    // that can't be written puts the file back.
    Result Run(bool updateCatalogue);

    // Told after each title, planned or done.
    std::function<void(const Reorganiser&)> onProgress;

    std::vector<ReorgStep> steps;
    std::vector<QString> notes; // what went wrong, one line each
    ReorgCounters counters;
    int titlesTotal = 0;
    QString target;
    QString failure; // the message that ended a run

private:
    struct Folder;
    platform::FolderListing& Listing(const QString& dir);
    QString ResolveFolder(const QString& parent, const QString& name, int title);
    QString FindEntry(const QString& dir, const QString& name, bool wantDir);
    QString AlreadyMoved(const QString& destDir, const QString& fileName);
    void PlanMove(const QString& source, const QString& destDir, bool side, qint64 fileId,
                  int title);
    bool PointRow(qint64 fileId, const QString& dir);

    // The listing of each folder looked at, with what the plan has already
    // put there or taken away.
    QHash<QString, platform::FolderListing> listings;
    QSet<QString> claimed; // paths the plan gives a file
};

} // namespace cintal

namespace cintal {

// Every title of the catalogue in name order, with its files, as the main
// window would list them; heldOnly keeps those the collection holds. False
// after a store failure.
bool LoadReorgTitles(bool heldOnly, std::vector<ReorgTitle>& titles);
// The files of one title, as the file grid lists them.
bool LoadReorgFiles(ReorgTitle& title);

} // namespace cintal
