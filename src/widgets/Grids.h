#pragma once
// The procedures shared by every window with a title grid.

#include "catalogue/ProgressSink.h"
#include "widgets/Grid.h"

#include <QColor>
#include <QString>

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

// The main window's "Mostrar sólo disponibles" box, which every fill reads.
inline QCheckBox* HaveItBox = nullptr;
// The main window's icons of the file grid, which every file grid shows.
inline const IconSet* FormatIcon = nullptr;
// The splash window while it stands, or nothing.
inline ProgressSink* Splash = nullptr;

void SetupGridTitles(Grid& grid);
void SetupGridFiles(Grid& grid);
// titleId is the text of a key number, as read from a cell.
void FillFiles(const QString& titleId, Grid& grid);
// One file row, in the colours of the row being written.
void WriteFileRow(Grid& grid, int row, const FileRow& file);
void FillTitles(const TitleWindow& frm, const QString& clause);
int FilterHaveIt(Grid& grid);
void SortGrid(int col, Grid& grid);

// "Cintal 1.0.404 beta  - N programas hallados / M mostrados."
QString TitlesCaption(qint64 found, qint64 shown);

} // namespace Grids

} // namespace cintal
