#include "maintenance/FrmCambiaTitle.h"

#include "catalogue/Comunes.h"
#include "maintenance/TitleMove.h"
#include "tape/Prompt.h"
#include "widgets/Grids.h"
#include "widgets/Pictures.h"

#include <QVBoxLayout>

namespace cintal {

FrmCambiaTitle::FrmCambiaTitle(QWidget* parent, const Grid& mainTitles,
                               std::function<void(const QString& oldId)> moved)
    : QDialog(parent), mainTitles(mainTitles), moved(std::move(moved)) {
    setObjectName("FrmCambiaTitle");
    setWindowTitle(QStringLiteral("Form2"));
    ImageListFrom = Pictures::ImageListFrom();
    GridTitles = new Grid(this);
    GridTitles->setObjectName("GridTitles");
    // Filled with the list, never shown: the fill expects it on any window.
    ComboRegistro = new QComboBox(this);
    ComboRegistro->setObjectName("ComboRegistro");
    ComboRegistro->hide();
    ChckHaveIt = new QCheckBox(this);
    ChckHaveIt->setObjectName("ChckHaveIt");
    ChckHaveIt->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(GridTitles);
    resize(640, 480);
    connect(GridTitles, &Grid::RowDoubleClicked, this, [this] { GridTitles_DblClick(); });
    Form_Load();
}

void FrmCambiaTitle::Form_Load() {
    Grids::SetupGridTitles(*GridTitles);
    Grids::FillTitles(TitleWindow{this, GridTitles, nullptr, ComboRegistro, &ImageListFrom}, {});
    setWindowTitle(QStringLiteral("Form2"));
    Grids::SortGrid(2, *GridTitles);
    const int row = mainTitles.SelectedRow();
    if (row > 0 && row <= GridTitles->Rows()) GridTitles->SetSelectedRow(row);
}

void FrmCambiaTitle::GridTitles_DblClick() {
    const int oldRow = mainTitles.SelectedRow();
    const int newRow = GridTitles->SelectedRow();
    if (oldRow < 1 || newRow < 1) return;
    auto cell = [](const Grid& grid, int row, const char* key) {
        return grid.CellText(row, grid.ColumnIndex(key));
    };
    const QString oldId = cell(mainTitles, oldRow, "ColTitleId");
    TitleMover mover;
    mover.from = oldId.toLongLong();
    mover.into = cell(*GridTitles, newRow, "ColTitleId").toLongLong();
    mover.name = cell(*GridTitles, newRow, "ColName");
    mover.year = cell(*GridTitles, newRow, "ColYear");
    mover.publisher = cell(*GridTitles, newRow, "ColPublisher");
    if (!mover.Plan() || mover.steps.empty()) return;
    if (!mover.Run()) return;
    Ask(mover.Summary().toStdString(), Comunes::kAppTitle.toStdString(), Icon::Information);
    moved(oldId);
}

} // namespace cintal
