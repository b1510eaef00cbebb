#include "widgets/Grids.h"

#include "catalogue/Breathe.h"
#include "catalogue/Collate.h"
#include "catalogue/Comunes.h"
#include "catalogue/Dats.h"
#include "catalogue/Files.h"
#include "catalogue/Titles.h"
#include "platform/Archive.h"
#include "platform/PathCase.h"
#include "platform/Spanish.h"
#include "tape/TZXFunct.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLocale>
#include <QPalette>
#include <QStringListModel>

namespace cintal {

QString FileRef::Path() const {
    if (Dir.isEmpty()) return {};
    const QString found = platform::FindEntry(Dir, FileName);
    return found.isEmpty() ? QDir(Dir).filePath(FileName) : found;
}

QString FileRef::Location() const {
    const QString path = Path();
    if (Inner.isEmpty() || path.isEmpty()) return path;
    return QString::fromStdString(platform::JoinInner(path.toStdString(), Inner.toStdString()));
}

namespace Grids {

QColor ColourOwnedBack() {
    return QApplication::palette().color(QPalette::Base);
}
QColor ColourOwnedFore() {
    return QApplication::palette().color(QPalette::Text);
}

namespace {

bool OnlyAvailable() {
    return HaveItBox && HaveItBox->isChecked();
}

// The titles the unidentified box lets through, or nothing when it is off
// (or the store failed: then it hides nothing).
std::optional<QSet<qint64>> OnlyUnknown() {
    if (!UnknownBox || !UnknownBox->isChecked()) return std::nullopt;
    return Dats::TitlesWithUnknownFiles();
}

void SetRowColours(bool haveIt) {
    CellBack = haveIt ? ColourOwnedBack() : ColourMissingBack;
    CellFore = haveIt ? ColourOwnedFore() : ColourMissingFore;
}

} // namespace

QString TitlesCaption(qint64 found, qint64 shown) {
    return QStringLiteral("%1 %2.%3.%4 beta  - %5 programas hallados / %6 mostrados.")
        .arg(Comunes::kAppTitle)
        .arg(Comunes::kVersionMajor)
        .arg(Comunes::kVersionMinor)
        .arg(Comunes::kVersionRevision)
        .arg(Number(found), Number(shown));
}

Grid* ListGrid(const char* name, std::initializer_list<ListColumn> columns) {
    auto* grid = new Grid;
    grid->setObjectName(name);
    grid->SetRowMode(true);
    grid->SetDefaultRowHeight(18);
    for (const ListColumn& c : columns)
        grid->AddColumn(c.key, QString::fromUtf8(c.header), c.alignment, -1, c.width, true);
    return grid;
}

void SetupGridTitles(Grid& grid) {
    grid.SetDefaultRowHeight(130 / 15);
    grid.SetRedraw(false);
    grid.SetRowMode(true);
    grid.Clear(true);
    grid.AddColumn("ColEstado", "Fuente", Grid::AlignRight, -1, 25, true);
    grid.AddColumn("ColName", "Nombre", Grid::AlignLeft, -1, 222, true);
    grid.AddColumn("ColYear", "Año", Grid::AlignRight, -1, 32, true);
    grid.AddColumn("ColPublisher", "Empresa", Grid::AlignDefault, -1, 136, true);
    grid.AddColumn("ColType", "Tipo", Grid::AlignDefault, -1, 46, true);
    grid.AddColumn("ColTitleId", "Id", Grid::AlignDefault, -1, 40, false);
    grid.AddColumn("ColPubId", "PubId", Grid::AlignDefault, -1, 40, false);
    grid.AddColumn("ColHaveIt", "HaveIt", Grid::AlignDefault, -1, 40, false);
}

void FillTitles(const TitleWindow& frm, const QString& clause) {
    std::vector<TitleRow> rows;
    if (!LoadTitles(clause, rows)) return;
    Grid& grid = *frm.GridTitles;
    if (rows.empty()) {
        grid.Clear(false);
        grid.SetRedraw(true);
        if (frm.GridFiles) frm.GridFiles->Clear(false);
        frm.window->setWindowTitle(QStringLiteral("Cintal - 0 programas hallados"));
        return;
    }

    const int count = static_cast<int>(rows.size());
    if (frm.ComboRegistro) frm.ComboRegistro->clear();
    grid.SetImageList(frm.ImageListFrom);
    grid.SetRedraw(false);
    grid.SetDefaultRowHeight(16);
    // A refill starts from empty cells: what a value doesn't write stays empty.
    grid.Clear(false);
    grid.SetRows(count);

    const int colEstado = grid.ColumnIndex("ColEstado");
    const int colTitleId = grid.ColumnIndex("ColTitleId");
    const int colName = grid.ColumnIndex("ColName");
    const int colYear = grid.ColumnIndex("ColYear");
    const int colPublisher = grid.ColumnIndex("ColPublisher");
    const int colType = grid.ColumnIndex("ColType");
    const int colHaveIt = grid.ColumnIndex("ColHaveIt");
    const bool onlyAvailable = OnlyAvailable();
    const std::optional<QSet<qint64>> unknown = OnlyUnknown();
    const QString heading = QStringLiteral("Leyendo registros:");

    QStringList names;
    names.reserve(count);
    qint64 shown = 0;
    // The splash's counter is read by eye: a new text when it can be
    // painted, not a relayout of the label per title.
    QElapsedTimer counted;
    for (int i = 1; i <= count; ++i) {
        const TitleRow& r = rows[static_cast<std::size_t>(i - 1)];
        SetRowColours(r.HaveIt);
        const QString estado = EstadoText(r);
        if (!estado.isEmpty())
            grid.CellDetails(i, colEstado, estado, Grid::AlignDefault, static_cast<int>(r.Estado),
                             CellBack, CellFore);
        grid.CellDetails(i, colTitleId, QString::number(r.TitleId), Grid::AlignDefault, -1,
                         CellBack, CellFore);
        grid.SetRowData(i, r.TitleId);
        grid.CellDetails(i, colName, r.Name, Grid::AlignDefault, -1, CellBack, CellFore);
        grid.CellDetails(i, colYear, r.Year, Grid::AlignDefault, -1, CellBack, CellFore);
        grid.CellDetails(i, colPublisher, Comunes::PublisherName(r.IdPub), Grid::AlignDefault, -1,
                         CellBack, CellFore);
        grid.CellDetails(i, colType, r.Type, Grid::AlignDefault, -1, CellBack, CellFore);
        names << r.Name;
        if ((!r.HaveIt && onlyAvailable) || (unknown && !unknown->contains(r.TitleId))) {
            grid.SetRowVisible(i, false);
        } else {
            grid.SetRowVisible(i, true);
            ++shown;
        }
        grid.CellDetails(i, colHaveIt, r.HaveIt ? QStringLiteral("1") : QStringLiteral("0"));
        if (Splash && (i == count || !counted.isValid() || counted.elapsed() >= 25)) {
            Splash->SetHeading(heading);
            Splash->SetCount(QStringLiteral("%1/%2").arg(Number(i), Number(count)));
            counted.start();
        }
        Breathe();
    }
    // Rows read in name order already know where each name stands.
    if (rows.front().NameRank >= 0) {
        std::vector<int> ranks;
        ranks.reserve(rows.size());
        for (const TitleRow& r : rows)
            ranks.push_back(r.NameRank);
        grid.SetSortRanks(colName, std::move(ranks));
    }
    if (frm.ComboRegistro) {
        // A list of shared names, not an item object per title.
        if (auto* list = qobject_cast<QStringListModel*>(frm.ComboRegistro->model()))
            list->setStringList(names);
        else
            frm.ComboRegistro->addItems(names);
        // No title is selected after a fill: the box shows none either.
        frm.ComboRegistro->setCurrentIndex(-1);
        frm.ComboRegistro->clearEditText();
    }
    grid.SetRedraw(true);
    if (Splash) Splash->SetHeading(QStringLiteral(" HECHO"));
    frm.window->setWindowTitle(TitlesCaption(count, shown));
}

void SetupGridFiles(Grid& grid) {
    grid.SetDefaultRowHeight(130 / 15);
    grid.SetRedraw(false);
    grid.SetRowMode(true);
    grid.Clear(true);
    // Widths the grid chooses for itself stand at its usual 100.
    grid.AddColumn("ColIcono", "Fmt.", Grid::AlignDefault, -1, 35, true);
    grid.AddColumn("ColFileName", "Archivo", Grid::AlignDefault, -1, 190, true);
    grid.AddColumn("ColMemory", "Mem", Grid::AlignDefault, -1, 40, true);
    grid.AddColumn("ColOrigin", "Origen", Grid::AlignDefault, -1, 120, true);
    grid.AddColumn("ColLoadSchema", "Carga", Grid::AlignDefault, -1, 80, true);
    grid.AddColumn("ColPlayers", "Jugad.", Grid::AlignDefault, -1, 45, false);
    grid.AddColumn("ColJoysticks", "Joysticks", Grid::AlignDefault, -1, 100, false);
    grid.AddColumn("ColAYSound", "AY", Grid::AlignDefault, -1, 30, false);
    grid.AddColumn("ColMultiLoad", "Multiload", Grid::AlignDefault, -1, 55, false);
    grid.AddColumn("ColLanguage", "Idioma", Grid::AlignDefault, -1, 100, true);
    grid.AddColumn("ColSize", "Tamaño", Grid::AlignDefault, -1, 50, true);
    grid.AddColumn("ColExtension", "", Grid::AlignDefault, -1, 100, false);
    grid.AddColumn("ColPathIndex", "PathIndex", Grid::AlignDefault, -1, 20, false);
    grid.AddColumn("ColPath", "Ruta", Grid::AlignDefault, -1, 250, true);
    grid.AddColumn("ColFileId", "File ID", Grid::AlignDefault, -1, 20, false);
    grid.AddColumn("ColTitleId", "Title ID", Grid::AlignDefault, -1, 20, false);
    grid.AddColumn("ColHaveIt", "", Grid::AlignDefault, -1, 0, true);
    grid.AddColumn("ColCrc32", "CRC32", Grid::AlignDefault, -1, 70, true);
    grid.AddColumn("ColDat", "DAT", Grid::AlignDefault, -1, 220, true);
    // Format and memory show as their pictures alone.
    grid.SetColumnTextHidden(grid.ColumnIndex("ColIcono"), true);
    grid.SetColumnTextHidden(grid.ColumnIndex("ColMemory"), true);
}

void FillFiles(qint64 titleId, Grid& grid) {
    std::vector<FileRow> rows;
    if (!LoadFileRows(titleId, rows)) return;
    if (rows.empty()) {
        grid.Clear(false);
        grid.SetRedraw(true);
        return;
    }
    grid.ClearSelection();
    // The first file decides the colours of every row.
    SetRowColours(rows.front().HaveIt);
    grid.SetImageList(FormatIcon);
    grid.SetRedraw(false);
    grid.SetDefaultRowHeight(18);
    grid.Clear(false);
    grid.SetRows(static_cast<int>(rows.size()));
    int i = 0;
    for (const FileRow& r : rows)
        WriteFileRow(grid, ++i, r);
    grid.SetRedraw(true);
}

void WriteFileRow(Grid& grid, int i, const FileRow& r) {
    const IconSet* icons = FormatIcon;
    auto icon = [icons](const QString& key) { return icons ? icons->ItemIndex(key) : -1; };
    const int colFileId = grid.ColumnIndex("ColFileId");
    const int colTitleId = grid.ColumnIndex("ColTitleId");
    const int colFileName = grid.ColumnIndex("ColFileName");
    const int colExtension = grid.ColumnIndex("ColExtension");
    const int colPlayers = grid.ColumnIndex("ColPlayers");
    const int colJoysticks = grid.ColumnIndex("ColJoysticks");
    const int colLoadSchema = grid.ColumnIndex("ColLoadSchema");
    const int colSize = grid.ColumnIndex("ColSize");
    const int colIcono = grid.ColumnIndex("ColIcono");
    const int colPath = grid.ColumnIndex("ColPath");
    const int colPathIndex = grid.ColumnIndex("ColPathIndex");
    const int colAYSound = grid.ColumnIndex("ColAYSound");
    const int colMultiLoad = grid.ColumnIndex("ColMultiLoad");
    const int colLanguage = grid.ColumnIndex("ColLanguage");
    const int colMemory = grid.ColumnIndex("ColMemory");
    const int colOrigin = grid.ColumnIndex("ColOrigin");
    const QString yes = QStringLiteral("SÍ"), no = QStringLiteral("NO");
    const int d = Grid::AlignDefault;

    const QString players = r.HasPlayers ? QString::number(r.Players) : QString();
    auto cell = [&](int col, const QString& text, int align = Grid::AlignDefault, int image = -1) {
        grid.CellDetails(i, col, text, align, image, CellBack, CellFore);
    };
    // A zipped file is known by its archive and what it holds: the name
    // shows both, the format is the inner file's.
    const QString inner = r.InnerPath;
    const QString innerExt = QString::fromStdString(ExtensionOf(inner.toStdString()));
    const FileRef file{r.FileId,
                       r.TitleId,
                       r.PathIndex,
                       Comunes::PathTable.Dir(r.PathIndex),
                       r.FileName + "." + r.Extension,
                       inner.isEmpty() ? r.Extension : innerExt,
                       inner};
    grid.SetRowData(i, QVariant::fromValue(file));
    cell(colFileId, QString::number(r.FileId), Grid::AlignLeft);
    cell(colTitleId, QString::number(r.TitleId), Grid::AlignLeft);
    cell(colFileName,
         inner.isEmpty() ? file.FileName : file.FileName + QString::fromUtf8(" › ") + inner);
    cell(colExtension, file.Extension);
    cell(grid.ColumnIndex("ColCrc32"), r.Crc32);
    if (r.DatGame.isEmpty())
        grid.CellDetails(i, grid.ColumnIndex("ColDat"), QStringLiteral("desconocido"), d, -1,
                         CellBack, ColourUnknownFore);
    else
        cell(grid.ColumnIndex("ColDat"), r.DatGame);
    cell(colPlayers, players);
    cell(colJoysticks, r.Joysticks);
    cell(colLoadSchema, r.LoadSchema);
    cell(colSize, Number(r.FileSize) + "  ", Grid::AlignRight);
    cell(colIcono, QString(), d, icon(file.Extension.toUpper()));
    cell(colPath, file.Dir, Grid::AlignLeft);
    cell(colPathIndex, QString::number(r.PathIndex), Grid::AlignLeft);
    cell(colAYSound, r.AYSound ? yes : no);
    cell(colMultiLoad, r.MultiLoad ? yes : no);
    const QString lang = r.IdLang.toUpper();
    if (icons && icons->KeyExists(lang))
        cell(colLanguage, lang, Grid::AlignCenter, icon(lang));
    else
        cell(colLanguage, r.IdLang, Grid::AlignCenter, icon(QStringLiteral("UNK")));
    const char* memory = r.HasMemory && r.Memory == 48    ? "M48"
                         : r.HasMemory && r.Memory == 128 ? "M128"
                                                          : "ANY";
    cell(colMemory, QString(), d, icon(QLatin1String(memory)));
    cell(colPlayers, players, Grid::AlignCenter,
         icon(r.HasPlayers && r.Players > 1 ? QStringLiteral("2JUG") : QStringLiteral("1JUG")));
    const OriginMark origin = DecodeOrigin(r.Origin);
    cell(colOrigin, origin.text, d, icon(origin.icon));
}

int FilterTitles(Grid& grid) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool wasDrawing = grid.Redraw();
    grid.SetRedraw(false);
    const int colHaveIt = grid.ColumnIndex("ColHaveIt");
    const bool onlyAvailable = OnlyAvailable();
    const std::optional<QSet<qint64>> unknown = OnlyUnknown();
    int shown = 0;
    for (int row = 1; row <= grid.Rows(); ++row) {
        const bool show = !(onlyAvailable && grid.CellText(row, colHaveIt) == QLatin1String("0")) &&
                          !(unknown && !unknown->contains(grid.RowData(row).toLongLong()));
        grid.SetRowVisible(row, show);
        shown += show ? 1 : 0;
    }
    grid.SetRedraw(wasDrawing);
    QApplication::restoreOverrideCursor();
    return shown;
}

TitleRef TitleAt(const Grid& titles, int row) {
    TitleRef t;
    if (row < 1 || row > titles.Rows()) return t;
    auto text = [&](const char* key) { return titles.CellText(row, titles.ColumnIndex(key)); };
    t.TitleId = titles.RowData(row).toLongLong();
    t.Name = text("ColName");
    t.Year = text("ColYear");
    t.Publisher = text("ColPublisher");
    t.Type = text("ColType");
    bool isNumber = false;
    const int estado = text("ColEstado").toInt(&isNumber);
    if (isNumber) t.Estado = estado;
    return t;
}

FileRef FileAt(const Grid& files, int row) {
    return files.RowData(row).value<FileRef>();
}

TitleRef SelectedTitle(const Grid& titles) {
    return TitleAt(titles, titles.SelectedRow());
}

FileRef SelectedFile(const Grid& files) {
    return FileAt(files, files.SelectedRow());
}

void RenameFile(Grid& files, int row, const QString& fileName) {
    FileRef file = FileAt(files, row);
    if (!file.FileId) return;
    file.FileName = fileName;
    files.SetRowData(row, QVariant::fromValue(file));
    const int col = files.ColumnIndex("ColFileName");
    const QColor back = files.CellBackColor(row, col);
    const QColor fore = files.CellForeColor(row, col);
    files.CellDetails(row, col, fileName, files.CellAlignment(row, col), files.CellIcon(row, col),
                      back.isValid() ? std::optional<QColor>(back) : std::nullopt,
                      fore.isValid() ? std::optional<QColor>(fore) : std::nullopt);
}

bool HasTape(const Grid& files) {
    for (int row = 1; row <= files.Rows(); ++row)
        if (FileAt(files, row).Extension.toLower() == QLatin1String("tzx")) return true;
    return false;
}

void SortGrid(int col, Grid& grid) {
    auto& keys = grid.SortObject();
    keys.clear();
    // The tag tells which order the next click brings.
    const bool first = grid.ColumnTag(col).isEmpty();
    grid.SetColumnTag(col, first ? QStringLiteral("DESC") : QString());
    keys.push_back({col, first ? Grid::SortAscending : Grid::SortDescending, Grid::SortText});
    keys.push_back({2, Grid::SortAscending, Grid::SortText});
    QApplication::setOverrideCursor(Qt::WaitCursor);
    grid.Sort(SortRanks);
    QApplication::restoreOverrideCursor();
}

} // namespace Grids

} // namespace cintal
