#include "maintenance/FrmRenombraDat.h"

#include "catalogue/Ask.h"
#include "catalogue/Breathe.h"
#include "platform/Spanish.h"

#include <QApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace cintal {

namespace {

const QString& kTitle = kTidyTitle;

} // namespace

FrmRenombraDat::FrmRenombraDat(const QString& datName, QWidget* parent)
    : QDialog(parent), datName_(datName) {
    setWindowTitle(kTitle);
    resize(900, 520);
    LabelDat = new QLabel(QStringLiteral("DAT: %1").arg(datName));
    LabelDat->setObjectName("LabelDat");
    ListPlan = new QListWidget;
    ListPlan->setObjectName("ListPlan");
    auto* counts = new QFormLayout;
    const auto counter = [&](const char* caption, QLabel*& label, const char* name) {
        label = new QLabel(QStringLiteral("0"));
        label->setObjectName(name);
        counts->addRow(QString::fromUtf8(caption), label);
    };
    counter("Por renombrar:", LabelPlaneados, "LabelPlaneados");
    counter("Renombrados:", LabelRenombrados, "LabelRenombrados");
    counter("Dejados:", LabelDejados, "LabelDejados");
    counter("Fallidos:", LabelFallidos, "LabelFallidos");
    ProgressBar1 = new QProgressBar;
    ProgressBar1->setObjectName("ProgressBar1");
    ProgressBar1->setValue(0);
    CommandRenombrar = new QPushButton(QStringLiteral("Renombrar"));
    CommandRenombrar->setObjectName("CommandRenombrar");
    CommandCerrar = new QPushButton(QStringLiteral("Cerrar"));
    CommandCerrar->setObjectName("CommandCerrar");

    auto* right = new QVBoxLayout;
    right->addLayout(counts);
    right->addWidget(ProgressBar1);
    right->addWidget(CommandRenombrar);
    right->addWidget(CommandCerrar);
    right->addStretch();
    auto* body = new QHBoxLayout;
    body->addWidget(ListPlan, 1);
    body->addLayout(right);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(LabelDat);
    layout->addLayout(body, 1);

    connect(CommandRenombrar, &QPushButton::clicked, this, &FrmRenombraDat::CommandRenombrar_Click);
    connect(CommandCerrar, &QPushButton::clicked, this, &QDialog::accept);
    tidy.onProgress = [this](qint64 done, qint64 total) {
        ProgressBar1->setRange(0, static_cast<int>(std::max<qint64>(1, total)));
        ProgressBar1->setValue(static_cast<int>(done));
        Breathe();
    };
}

bool FrmRenombraDat::Fill() {
    bool found = false;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool planned = tidy.Plan(datName_, found);
    QApplication::restoreOverrideCursor();
    if (!planned) return false;
    if (!found) {
        Ask(QStringLiteral("No hay ningún DAT llamado %1").arg(datName_), kTitle,
            Icon::Exclamation);
        return false;
    }
    ShowSteps();
    ShowCounters();
    if (tidy.steps.empty())
        ListPlan->addItem(QStringLiteral("Ningún archivo del catálogo está en esta DAT."));
    CommandRenombrar->setEnabled(tidy.planned > 0);
    return true;
}

void FrmRenombraDat::ShowSteps() {
    QStringList lines;
    lines.reserve(static_cast<int>(tidy.notes.size() + tidy.steps.size()));
    for (const QString& note : tidy.notes)
        lines << note;
    for (const TidyStep& s : tidy.steps)
        lines << s.Lines();
    ListPlan->clear();
    ListPlan->addItems(lines);
}

void FrmRenombraDat::ShowCounters() {
    LabelPlaneados->setText(Number(tidy.planned));
    LabelRenombrados->setText(Number(tidy.renamed));
    LabelDejados->setText(Number(tidy.left));
    LabelFallidos->setText(Number(tidy.failed));
}

void FrmRenombraDat::reject() {
    if (!running_) QDialog::reject();
}

void FrmRenombraDat::CommandRenombrar_Click() {
    if (ran || tidy.planned == 0 || !tidy.Confirm()) return;
    ran = true;
    CommandRenombrar->setEnabled(false);
    CommandCerrar->setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    running_ = true;
    tidy.Run();
    running_ = false;
    QApplication::restoreOverrideCursor();
    CommandCerrar->setEnabled(true);
    // What failed first, then every file as it ended.
    ShowSteps();
    ShowCounters();
}

} // namespace cintal
