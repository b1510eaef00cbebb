#pragma once
// The listing import: the archive's listing pages, saved beforehand in its
// own folder layout, give a title without files for every entry that the
// catalogue doesn't have yet. The window, cintal-cli and the tests drive the
// same importer.

#include "acquisition/Scanner.h"

#include <QElapsedTimer>
#include <QString>
#include <array>
#include <functional>
#include <vector>

namespace cintal {

// One folder of the listing pages, in the order they are read.
struct WosFolder {
    const char* name;     // below the root, lower case
    int state;            // the Estado forced on every entry, 0 for none
    const char* progress; // told with the letter just finished
};
inline constexpr std::array<WosFolder, 5> kWosFolders = {{
    {"tr-games", 6, "Importando Basic letra "},
    {"type-ins", 5, "Importando Basic letra "},
    {"utils", 0, "Importando utilidades letra "},
    {"games", 0, "Importando juegos letra "},
    {"textadv", 0, "Importando aventuras letra "},
}};
// Each folder has a page per letter, then "1.html".
inline constexpr int kWosPagesPerFolder = 27;

// The width of a record once a line is normalised, line end included.
inline constexpr int kWosRecord = 120;

// The largest page read; the archive's largest is a few hundred kilobytes.
inline constexpr qint64 kWosPageLimit = 16 * 1024 * 1024;

// What the parser found in one page, beside its records.
struct WosPageInfo {
    bool found = false; // the file was there
    QString refused;    // why it was not read, when it wasn't
    bool table = false; // it held a "<PRE>" ... "</PRE>" pair
    // Lines whose record would not have been 120 wide, by their line number
    // in the file: they are left out so that the records after them stay in
    // their columns.
    std::vector<int> leftOut;
};

// The counters of the import window, for one run.
struct WosCounters {
    qint64 Paginas = 0;    // pages found and read
    qint64 Nuevos = 0;     // titles added
    qint64 Existentes = 0; // entries whose title was there already
    qint64 NwComp = 0;     // publishers added
};

class WosImporter {
public:
    enum class Result { Done, NoLegend, StoreFailed };

    // True if the folder holds "legend.html", the mark of the listing's root.
    static bool IsListingRoot(const QString& folder);

    // Reads the chosen folders below root, page by page, and adds every title
    // that is not there yet.
    Result Run(const QString& folder);

    // Imports one page; state 0 forces no Estado. False after a store
    // failure, which has not been shown yet.
    bool ImportWosPage(const QString& file, int state);

    // Which folders of kWosFolders a run reads.
    std::array<bool, kWosFolders.size()> folders{true, true, true, true, true};

    // Told after each page; the window repaints from it.
    std::function<void(const WosImporter&)> onProgress;

    WosCounters counters;
    QString root;      // the folder of the last run
    QString Label1;    // the progress text
    int pagesDone = 0; // pages looked for, found or not
    int pagesTotal = 0;
    qint64 elapsedMs = 0;
    std::vector<ScanWarning> warnings;

private:
    // False when the store failed.
    bool AddEntry(const QString& record, int state);
    void Tell();

    QElapsedTimer clock;
};

// The records of a page's text, already decoded: each line of the table
// between the first "<PRE>" and the last "</PRE>" stripped of its mark-up and
// its entities,
// with its availability marker and speech flag behind it, 120 characters
// with its line end.
QString ParseWosText(const QString& page, WosPageInfo* info = nullptr);

// The records of the page in the file (Windows-1252), or empty when the file
// is missing, is no regular file, is larger than kWosPageLimit or holds no
// table.
QString ParseWosPage(const QString& file, WosPageInfo* info = nullptr);

// Adds the title that CurInfo and CurName describe unless FindTitle finds it:
// 1 when a row was added, 0 otherwise (a store failure included, which
// Store::Failures tells).
int AddWosTitle(double& idPub, int& origin);

} // namespace cintal
