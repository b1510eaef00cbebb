#pragma once

#include "acquisition/Scanner.h"
#include "widgets/FolderJob.h"

class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace cintal {

// "Agregar archivos": choose a folder and add the tapes under it.
class BuscarDirs : public FolderJob {
    Q_OBJECT
public:
    explicit BuscarDirs(QWidget* parent = nullptr);

    void Dir1_Click(const QString& path) override;
    void CommandSelecciona_Click();

    Scanner scanner;

    QListWidget* List1;
    QListWidget* List2;
    QPushButton* CommandSelecciona;
    QGroupBox* Frame1;
    QLabel* LabelTotal;
    QLabel* LabelParcial;
    QLabel* LabelCreada;
    QLabel* LabelAgregada;
    QLabel* LabelOmitida;
    QLabel* LabelNwComp;
    QLabel* LabelComprimidos; // archives found
    QLabel* LabelInteriores;  // tapes inside them
    QLabel* LabelTiempo;
    QLabel* Label7;
    QLabel* Label1;
    QLabel* LabelEstado;
    QListWidget* Avisos;

private:
    void Form_Load();
    void ShowProgress(const Scanner& s);

    int listed = -1;
};

} // namespace cintal
