#include "maintenance/FrmIdentifica.h"

#include "catalogue/Ask.h"
#include "catalogue/Breathe.h"
#include "catalogue/DatFile.h"
#include "catalogue/Dats.h"
#include "catalogue/FileHashes.h"
#include "maintenance/FrmRenombraDat.h"
#include "platform/Spanish.h"
#include "tape/Content.h"
#include "widgets/Grids.h"

#include <QApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace cintal {

namespace {

const QString kTitle = QStringLiteral("Identificar colección");

} // namespace

FrmIdentifica::FrmIdentifica(QWidget* parent) : QDialog(parent) {
    setWindowTitle(kTitle);
    resize(900, 560);
    GridDats = Grids::ListGrid("GridDats", {{"ColNombre", "Nombre", Grid::AlignDefault, 300},
                                            {"ColVersion", "Versión", Grid::AlignDefault, 100},
                                            {"ColEntradas", "Entradas", Grid::AlignRight, 80}});
    CmdAdd = new QPushButton(QStringLiteral("Añadir DAT..."));
    CmdQuitar = new QPushButton(QStringLiteral("Quitar"));
    auto* datButtons = new QVBoxLayout;
    datButtons->addWidget(CmdAdd);
    datButtons->addWidget(CmdQuitar);
    datButtons->addStretch();
    auto* top = new QHBoxLayout;
    top->addWidget(GridDats, 1);
    top->addLayout(datButtons);

    GridGames = Grids::ListGrid("GridGames", {{"ColEstado", "Estado", Grid::AlignDefault, 60},
                                              {"ColJuego", "Juego", Grid::AlignDefault, 320},
                                              {"ColRuta", "Ruta", Grid::AlignDefault, 400}});
    OptTodos = new QRadioButton(QStringLiteral("Todos"));
    OptTengo = new QRadioButton(QStringLiteral("Tengo"));
    OptFalta = new QRadioButton(QStringLiteral("Falta"));
    OptTodos->setChecked(true);
    LabelResumen = new QLabel;
    LabelResumen->setObjectName("LabelResumen");
    CmdExportar = new QPushButton(QStringLiteral("Exportar CSV"));
    CmdRenombrar = new QPushButton(QStringLiteral("Renombrar según la DAT..."));
    LabelFase = new QLabel;
    LabelFase->setObjectName("LabelFase");
    Progress = new QProgressBar;
    Progress->setObjectName("Progress");
    auto* phase = new QHBoxLayout;
    phase->addWidget(LabelFase, 1);
    phase->addWidget(Progress, 1);
    LabelFase->hide();
    Progress->hide();
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(OptTodos);
    bottom->addWidget(OptTengo);
    bottom->addWidget(OptFalta);
    bottom->addSpacing(20);
    bottom->addWidget(LabelResumen, 1);
    bottom->addWidget(CmdExportar);
    bottom->addWidget(CmdRenombrar);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addWidget(GridGames, 3);
    layout->addLayout(bottom);
    layout->addLayout(phase);

    connect(CmdAdd, &QPushButton::clicked, this, &FrmIdentifica::CmdAdd_Click);
    connect(CmdQuitar, &QPushButton::clicked, this, &FrmIdentifica::CmdQuitar_Click);
    connect(CmdExportar, &QPushButton::clicked, this, &FrmIdentifica::CmdExportar_Click);
    connect(CmdRenombrar, &QPushButton::clicked, this, &FrmIdentifica::CmdRenombrar_Click);
    connect(GridDats, &Grid::SelectionChange, this, &FrmIdentifica::ShowReport);
    for (QRadioButton* o : {OptTodos, OptTengo, OptFalta})
        connect(o, &QRadioButton::toggled, this, [this](bool on) {
            if (on) ApplyFilter();
        });
    ChooseDat = [this] {
        return QFileDialog::getOpenFileName(this, QStringLiteral("Añadir DAT"), QString(),
                                            QStringLiteral("Archivos DAT (*.dat *.xml)"));
    };
    ChooseSaveFile = [this](const QString& proposed) {
        // Replacing is asked here, not by the desktop's dialog.
        return QFileDialog::getSaveFileName(this, QStringLiteral("Exportar CSV"), proposed,
                                            QStringLiteral("Archivo CSV (*.csv)"), nullptr,
                                            QFileDialog::DontConfirmOverwrite);
    };
}

bool FrmIdentifica::Fill() {
    const auto dats = Dats::List();
    if (!dats) return false;
    GridDats->SetRedraw(false);
    GridDats->Clear(false);
    GridDats->SetRows(static_cast<int>(dats->size()));
    int row = 0;
    for (const DatInfo& d : *dats) {
        ++row;
        GridDats->CellDetails(row, GridDats->ColumnIndex("ColNombre"), d.name);
        GridDats->CellDetails(row, GridDats->ColumnIndex("ColVersion"), d.version);
        GridDats->CellDetails(row, GridDats->ColumnIndex("ColEntradas"), Number(d.entries));
        GridDats->SetRowData(row, d.id);
    }
    GridDats->SetRedraw(true);
    if (row > 0) GridDats->SetSelectedRow(1);
    ShowReport();
    return true;
}

bool FrmIdentifica::SelectDat(qint64 id) {
    for (int row = 1; row <= GridDats->Rows(); ++row) {
        if (GridDats->RowData(row).toLongLong() != id) continue;
        GridDats->SetSelectedRow(row);
        ShowReport();
        return true;
    }
    return false;
}

void FrmIdentifica::Phase(const QString& text, qint64 done, qint64 total) {
    LabelFase->setText(text);
    LabelFase->show();
    Progress->setRange(0, static_cast<int>(total));
    Progress->setValue(static_cast<int>(done));
    Progress->show();
    Breathe();
}

void FrmIdentifica::EndPhases() {
    LabelFase->hide();
    Progress->hide();
}

void FrmIdentifica::reject() {
    if (!busy_) QDialog::reject();
}

void FrmIdentifica::CmdAdd_Click() {
    if (busy_) return;
    const QString path = ChooseDat ? ChooseDat() : QString();
    if (path.isEmpty()) return;
    // The window answers while the files are checked, but takes no other
    // work until the DAT is in.
    busy_ = true;
    for (QPushButton* b : {CmdAdd, CmdQuitar, CmdExportar, CmdRenombrar})
        b->setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Phase(QStringLiteral("Leyendo el DAT..."));
    Dat dat;
    QString why;
    const bool read = ReadDatFile(path, dat, why);
    qint64 id = 0;
    bool added = false;
    if (read) {
        // Files changed on disk are hashed again first, so that what they are
        // is told from their present bytes; those that can't be read keep
        // what they had.
        const bool hashed =
            FileHashes::Refresh([](const QString&, const QString&) {},
                                [this](qint64 done, qint64 total) {
                                    if (done % 64 == 0 || done == total)
                                        Phase(QStringLiteral("Comprobando los archivos: %1 de %2")
                                                  .arg(Number(done), Number(total)),
                                              done, total);
                                });
        if (hashed) {
            Phase(QStringLiteral("Identificando los archivos..."));
            added = Dats::Add(dat, &id);
        }
    }
    EndPhases();
    QApplication::restoreOverrideCursor();
    busy_ = false;
    CmdAdd->setEnabled(true);
    ShowReport(); // the other buttons as the selection has them
    if (!read) {
        Ask(QStringLiteral("El archivo DAT %1 no es válido: %2. No se ha cargado nada.")
                .arg(path, why),
            kTitle, Icon::Exclamation);
        return;
    }
    // After a store failure (told by the store) nothing of the DAT is kept:
    // the list stays as it was.
    if (added && Fill()) SelectDat(id);
}

void FrmIdentifica::CmdQuitar_Click() {
    const int row = GridDats->SelectedRow();
    if (row < 1) return;
    bool found = false;
    if (!Dats::Remove(GridDats->RowData(row).toLongLong(), found)) return;
    Fill();
}

void FrmIdentifica::ShowReport() {
    GridGames->SetRedraw(false);
    GridGames->Clear(false);
    LabelResumen->clear();
    shownDat_.clear();
    const int datRow = GridDats->SelectedRow();
    std::optional<HaveReport> report;
    bool found = false;
    if (datRow > 0)
        report =
            Dats::Report(GridDats->CellText(datRow, GridDats->ColumnIndex("ColNombre")), found);
    if (report && found) {
        shownDat_ = report->dat;
        GridGames->SetRows(static_cast<int>(report->lines.size()));
        int row = 0;
        for (const HaveLine& l : report->lines) {
            ++row;
            const bool have = !l.path.isEmpty();
            GridGames->CellDetails(row, GridGames->ColumnIndex("ColEstado"),
                                   have ? QStringLiteral("Tengo") : QStringLiteral("Falta"));
            GridGames->CellDetails(row, GridGames->ColumnIndex("ColJuego"), l.game);
            GridGames->CellDetails(row, GridGames->ColumnIndex("ColRuta"), l.path);
            GridGames->SetRowData(row, have);
        }
        LabelResumen->setText(QStringLiteral("Tengo %1 de %2 (%3 %)")
                                  .arg(Number(report->have), Number(qint64(report->lines.size())),
                                       report->Percent()));
    }
    ApplyFilter();
    GridGames->SetRedraw(true);
    CmdQuitar->setEnabled(datRow > 0);
    CmdExportar->setEnabled(!shownDat_.isEmpty());
    CmdRenombrar->setEnabled(!shownDat_.isEmpty());
}

void FrmIdentifica::ApplyFilter() {
    for (int row = 1; row <= GridGames->Rows(); ++row) {
        const bool have = GridGames->RowData(row).toBool();
        GridGames->SetRowVisible(row, OptTodos->isChecked() || have == OptTengo->isChecked());
    }
}

void FrmIdentifica::CmdRenombrar_Click() {
    if (shownDat_.isEmpty()) return;
    FrmRenombraDat window(shownDat_, this);
    if (!window.Fill()) return;
    RunModal(window);
    // The paths of what is had follow the new names.
    if (window.ran) ShowReport();
}

void FrmIdentifica::CmdExportar_Click() {
    if (shownDat_.isEmpty()) return;
    bool found = false;
    const auto report = Dats::Report(shownDat_, found);
    if (!report || !found) return;
    const QString path = ChooseSaveFile ? ChooseSaveFile(shownDat_ + ".csv") : QString();
    if (path.isEmpty()) return;
    bool replace = false;
    if (const std::string existing = ExistingFile(path.toStdString()); !existing.empty()) {
        if (Ask("Ya existe " + existing + ". ¿Desea reemplazarlo?", kTitle.toStdString(),
                Icon::Exclamation, Buttons::YesNo) != Button::Yes)
            return;
        replace = true;
    }
    std::string reason;
    if (WriteContentFile(path.toStdString(), Dats::Csv(*report).toStdString(), replace, reason))
        Ask(QStringLiteral("Informe guardado en %1").arg(path), kTitle, Icon::Information);
    else
        Ask(QString::fromStdString(reason), kTitle, Icon::Exclamation);
}

} // namespace cintal
