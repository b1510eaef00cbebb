#include "maintenance/FrmRepetidos.h"

#include "catalogue/FileHashes.h"
#include "platform/Spanish.h"
#include "widgets/Grids.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace cintal {

FrmRepetidos::FrmRepetidos(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Archivos repetidos"));
    resize(1180, 480);
    GridFiles = Grids::ListGrid("GridFiles", {{"ColGrupo", "Grupo", Grid::AlignRight, 50},
                                              {"ColSize", "Tamaño", Grid::AlignRight, 70},
                                              {"ColSha1", "SHA1", Grid::AlignDefault, 200},
                                              {"ColTitle", "Título", Grid::AlignDefault, 120},
                                              {"ColPath", "Ruta", Grid::AlignDefault, 300}});
    LabelResumen = new QLabel;
    LabelResumen->setObjectName("LabelResumen");
    Progress = new QProgressBar;
    Progress->setRange(0, 3);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(GridFiles, 1);
    layout->addWidget(LabelResumen);
    layout->addWidget(Progress);
    connect(GridFiles, &Grid::RowDoubleClicked, this, &FrmRepetidos::GridFiles_DblClick);
}

bool FrmRepetidos::Fill() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Progress->show();
    Progress->setValue(0);
    LabelResumen->setText(QStringLiteral("Leyendo el catálogo..."));
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const auto files = FileHashes::Load();
    if (!files) {
        QApplication::restoreOverrideCursor();
        LabelResumen->clear();
        return false;
    }
    Progress->setValue(1);
    LabelResumen->setText(QStringLiteral("Agrupando..."));
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const std::vector<DuplicateGroup> groups = GroupDuplicates(*files);
    Progress->setValue(2);

    GridFiles->SetRedraw(false);
    GridFiles->Clear(false);
    int rows = 0;
    for (const DuplicateGroup& g : groups)
        rows += static_cast<int>(g.files.size());
    GridFiles->SetRows(rows);
    int row = 0, number = 0;
    for (const DuplicateGroup& g : groups) {
        ++number;
        for (const HashedFile* f : g.files) {
            ++row;
            auto cell = [&](const char* key, const QString& text) {
                GridFiles->CellDetails(row, GridFiles->ColumnIndex(key), text);
            };
            cell("ColGrupo", QString::number(number));
            cell("ColSize", Number(g.size));
            cell("ColSha1", g.sha1);
            cell("ColTitle", f->title);
            cell("ColPath", f->path);
            GridFiles->SetRowData(row, f->titleId);
        }
    }
    GridFiles->SetRedraw(true);
    Progress->setValue(3);
    Progress->hide();
    LabelResumen->setText(groups.empty() ? QStringLiteral("No hay archivos repetidos")
                                         : QStringLiteral("%1 %2, %3 archivos")
                                               .arg(Number(groups.size()),
                                                    groups.size() == 1 ? QStringLiteral("grupo")
                                                                       : QStringLiteral("grupos"),
                                                    Number(rows)));
    QApplication::restoreOverrideCursor();
    return true;
}

void FrmRepetidos::GridFiles_DblClick(int row) {
    if (row < 1 || row > GridFiles->Rows()) return;
    const qint64 titleId = GridFiles->RowData(row).toLongLong();
    if (titleId && ChooseTitle) ChooseTitle(titleId);
    accept();
}

} // namespace cintal
