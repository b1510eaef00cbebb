#pragma once
// The procedures shared by every window with a title grid.

#include "catalogue/ProgressSink.h"
#include "widgets/Grid.h"

#include <QColor>
#include <QString>
#include <initializer_list>

class QCheckBox;
class QComboBox;

namespace cintal {

struct FileRow;

// What FillTitles needs of the window whose grid it fills.
struct TitleWindow {
    QWidget* window = nullptr;
    Grid* GridTitles = nullptr;
    Grid* GridFiles = nullptr;
    QComboBox* ComboRegistro = nullptr;
    const IconSet* ImageListFrom = nullptr;
};

// A title row as its handlers read it: the id the fill kept beside the
// cells, and the texts as the grid shows them now (an edit writes the cells).
struct TitleRef {
    qint64 TitleId = 0;
    QString Name;
    QString Year;
    QString Publisher;
    QString Type;
    int Estado = -1; // -1 when the title has none
};

// A file row as its handlers read it, kept beside the cells by the fill.
struct FileRef {
    qint64 FileId = 0;
    qint64 TitleId = 0;
    qint64 PathIndex = 0;
    QString Dir;       // empty when the catalogue doesn't know the folder
    QString FileName;  // with its extension; the archive's for a zipped file
    QString Extension; // of the content: the inner file's for a zipped file
    QString Inner;     // the path inside the archive, empty for a plain file
    // The file on disk, found ignoring case: the catalogue keeps the scanned
    // extension in lower case, the disk may not. The catalogued name in its
    // folder when nothing matches; empty when the folder is unknown.
    QString Path() const;
    // Where the content is read: Path(), or "ARCHIVO.zip|INTERIOR".
    QString Location() const;
};

namespace Grids {

// The colours of the row being written.
inline QColor CellBack;
inline QColor CellFore;

// Titles without files: light grey behind a greyed blue.
inline const QColor ColourMissingBack = QColor(0xE0, 0xE0, 0xE0);
inline const QColor ColourMissingFore = QColor(0x66, 0x99, 0xCC);
// Titles the collection holds: the desktop's own window colours.
QColor ColourOwnedBack();
QColor ColourOwnedFore();

// A file no DAT knows: its DAT cell in grey.
inline const QColor ColourUnknownFore = QColor(0x90, 0x90, 0x90);

// The main window's "Mostrar sólo disponibles" box, which every fill reads.
inline QCheckBox* HaveItBox = nullptr;
// The main window's box that lists only the titles with a file no DAT
// knows, which every fill reads too.
inline QCheckBox* UnknownBox = nullptr;
// The main window's icons of the file grid, which every file grid shows.
inline const IconSet* FormatIcon = nullptr;
// The splash window while it stands, or nothing.
inline ProgressSink* Splash = nullptr;

// A grid of rows to read and pick, as the maintenance windows list things:
// the whole row selected, rows of 18 pixels, these columns.
struct ListColumn {
    const char* key;
    const char* header; // UTF-8
    int alignment;
    int width;
};
Grid* ListGrid(const char* name, std::initializer_list<ListColumn> columns);

void SetupGridTitles(Grid& grid);
void SetupGridFiles(Grid& grid);
void FillFiles(qint64 titleId, Grid& grid);
// One file row, in the colours of the row being written, with its ids and
// path kept beside the cells.
void WriteFileRow(Grid& grid, int row, const FileRow& file);
void FillTitles(const TitleWindow& frm, const QString& clause);
// Shows the rows that the two boxes let through; gives how many.
int FilterTitles(Grid& grid);
// Empty (id 0) for no row.
TitleRef TitleAt(const Grid& titles, int row);
FileRef FileAt(const Grid& files, int row);
// The selected row's, empty when none is selected.
TitleRef SelectedTitle(const Grid& titles);
FileRef SelectedFile(const Grid& files);
// A renamed file: its row shows the new name, and its path follows it.
void RenameFile(Grid& files, int row, const QString& fileName);
// Whether any of the title's files is a tape.
bool HasTape(const Grid& files);
void SortGrid(int col, Grid& grid);

// "Cintal 1.0.404 beta  - N programas hallados / M mostrados."
QString TitlesCaption(qint64 found, qint64 shown);

} // namespace Grids

} // namespace cintal
