#pragma once

#include "acquisition/Scanner.h"

#include <QDialog>

class QFileSystemModel;
class QGroupBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTreeView;

namespace cintal {

class FolderTree;

// "Agregar archivos": choose a folder and add the tapes under it.
class BuscarDirs : public QDialog {
    Q_OBJECT
public:
    explicit BuscarDirs(QWidget* parent = nullptr);

    // The folder chosen, as Dir1 holds it.
    QString Dir1Path() const { return dir1Path; }
    void Dir1_Click(const QString& path);
    void CommandSelecciona_Click();

    Scanner scanner;

    FolderTree* Dir1;
    QLabel* LabelRuta;
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
    QLabel* LabelTiempo;
    QLabel* Label7;
    QLabel* Label1;
    QLabel* LabelEstado;
    QProgressBar* ProgressBar1;
    QListWidget* Avisos;

private:
    void Form_Load();
    void ShowProgress(const Scanner& s);
    void RevealChosen();

    QString dir1Path;
    int listed = -1;
};

} // namespace cintal
