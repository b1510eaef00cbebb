#include "views/Grids.h"

#include "catalogue/Breathe.h"
#include "catalogue/Comunes.h"
#include "catalogue/Titles.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPalette>

namespace cintal::Grids {

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
        .arg(found)
        .arg(shown);
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
    // The source shows as its picture; the number stays in the cell.
    grid.SetColumnTextHidden(grid.ColumnIndex("ColEstado"), true);
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
    const QString heading = QStringLiteral("Leyendo registros:");

    QStringList names;
    names.reserve(count);
    qint64 shown = 0;
    for (int i = 1; i <= count; ++i) {
        const TitleRow& r = rows[static_cast<std::size_t>(i - 1)];
        SetRowColours(r.HaveIt);
        const QString estado = EstadoText(r);
        if (!estado.isEmpty())
            grid.CellDetails(i, colEstado, estado, Grid::AlignDefault, static_cast<int>(r.Estado),
                             CellBack, CellFore);
        grid.CellDetails(i, colTitleId, QString::number(r.TitleId), Grid::AlignDefault, -1,
                         CellBack, CellFore);
        grid.CellDetails(i, colName, r.Name, Grid::AlignDefault, -1, CellBack, CellFore);
        grid.CellDetails(i, colYear, r.Year, Grid::AlignDefault, -1, CellBack, CellFore);
        grid.CellDetails(i, colPublisher, Comunes::PublisherName(r.IdPub), Grid::AlignDefault, -1,
                         CellBack, CellFore);
        grid.CellDetails(i, colType, r.Type, Grid::AlignDefault, -1, CellBack, CellFore);
        names << r.Name;
        if (!r.HaveIt && onlyAvailable) {
            grid.SetRowVisible(i, false);
        } else {
            grid.SetRowVisible(i, true);
            ++shown;
        }
        grid.CellDetails(i, colHaveIt, r.HaveIt ? QStringLiteral("1") : QStringLiteral("0"));
        if (Splash) {
            Splash->SetHeading(heading);
            Splash->SetCount(QStringLiteral("%1/%2").arg(i).arg(count));
        }
        Breathe();
    }
    if (frm.ComboRegistro) {
        frm.ComboRegistro->addItems(names);
        // No title is selected after a fill: the box shows none either.
        frm.ComboRegistro->setCurrentIndex(-1);
        frm.ComboRegistro->clearEditText();
    }
    grid.SetRedraw(true);
    if (Splash) Splash->SetHeading(QStringLiteral(" HECHO"));
    frm.window->setWindowTitle(TitlesCaption(count, shown));
}

int FilterHaveIt(Grid& grid) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool wasDrawing = grid.Redraw();
    grid.SetRedraw(false);
    const int colHaveIt = grid.ColumnIndex("ColHaveIt");
    const bool checked = OnlyAvailable();
    int shown = 0;
    for (int row = 1; row <= grid.Rows(); ++row) {
        if (grid.CellText(row, colHaveIt) == QLatin1String("0") && checked) {
            grid.SetRowVisible(row, false);
        } else if (!checked) {
            grid.SetRowVisible(row, true);
            ++shown;
        }
    }
    grid.SetRedraw(wasDrawing);
    QApplication::restoreOverrideCursor();
    return shown;
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
    grid.Sort();
    QApplication::restoreOverrideCursor();
}

} // namespace cintal::Grids
