#include "maintenance/FrmCambiaTitle.h"

#include "catalogue/Comunes.h"
#include "maintenance/TitleMove.h"
#include "tape/Prompt.h"
#include "widgets/Grids.h"
#include "widgets/Pictures.h"

#include <QVBoxLayout>

namespace cintal {

FrmCambiaTitle::FrmCambiaTitle(QWidget* parent, const Grid& mainTitles,
                               std::function<void(qint64 oldId)> moved)
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
    const TitleRef into = Grids::TitleAt(*GridTitles, newRow);
    TitleMover mover;
    mover.from = Grids::TitleAt(mainTitles, oldRow).TitleId;
    mover.into = into.TitleId;
    mover.name = into.Name;
    mover.year = into.Year;
    mover.publisher = into.Publisher;
    if (!mover.Plan() || mover.steps.empty()) return;
    if (!mover.Run()) return;
    Ask(mover.Summary().toStdString(), Comunes::kAppTitle.toStdString(), Icon::Information);
    moved(mover.from);
}

} // namespace cintal
