#include "maintenance/FrmCambiaTitle.h"

#include "catalogue/Comunes.h"
#include "maintenance/TitleMove.h"
#include "tape/Prompt.h"
#include "views/Grids.h"
#include "views/Pictures.h"
#include "views/Principal.h"

#include <QVBoxLayout>

namespace cintal {

FrmCambiaTitle::FrmCambiaTitle(Principal& main) : QDialog(&main), main(main) {
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
    const int row = main.GridTitles->SelectedRow();
    if (row > 0 && row <= GridTitles->Rows()) GridTitles->SetSelectedRow(row);
}

void FrmCambiaTitle::GridTitles_DblClick() {
    const int oldRow = main.GridTitles->SelectedRow();
    const int newRow = GridTitles->SelectedRow();
    if (oldRow < 1 || newRow < 1) return;
    const TitleRef into = Grids::TitleAt(*GridTitles, newRow);
    TitleMover mover;
    mover.from = Grids::TitleAt(*main.GridTitles, oldRow).TitleId;
    mover.into = into.TitleId;
    mover.name = into.Name;
    mover.year = into.Year;
    mover.publisher = into.Publisher;
    if (!mover.Plan() || mover.steps.empty()) return;
    if (!mover.Run()) return;
    Ask(mover.Summary().toStdString(), Comunes::kAppTitle.toStdString(), Icon::Information);
    // The main window's file list follows the records: what stayed with the
    // old title, which is still the one selected there.
    Grids::FillFiles(mover.from, *main.GridFiles);
    main.mnuDelTitle_Click();
}

} // namespace cintal
