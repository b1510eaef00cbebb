#pragma once
// "Renombrar según la DAT": what giving the files of a DAT its names would
// do, shown before anything is touched, and then done.

#include "maintenance/DatTidy.h"

#include <QDialog>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace cintal {

class FrmRenombraDat : public QDialog {
    Q_OBJECT
public:
    FrmRenombraDat(const QString& datName, QWidget* parent = nullptr);

    // Plans the renames and lists them; false after a store failure or when
    // the DAT is no longer there.
    bool Fill();
    void CommandRenombrar_Click();
    // Not while the files are being renamed: the run ends first.
    void reject() override;

    DatTidy tidy;
    bool ran = false; // files were renamed (or tried)

    QLabel* LabelDat;
    QListWidget* ListPlan;
    QLabel* LabelPlaneados;
    QLabel* LabelRenombrados;
    QLabel* LabelDejados;
    QLabel* LabelFallidos;
    QProgressBar* ProgressBar1;
    QPushButton* CommandRenombrar;
    QPushButton* CommandCerrar;

private:
    void ShowCounters();
    void ShowSteps();

    QString datName_;
    bool running_ = false;
};

} // namespace cintal
