#pragma once

#include "acquisition/WosImporter.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QFileSystemModel;
class QGroupBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTreeView;

namespace cintal {

class FolderTree;

// "Importa listado WOS": choose the folder of the saved listing pages and add
// the titles they list that the catalogue doesn't have.
class FrmWosIn : public QDialog {
    Q_OBJECT
public:
    explicit FrmWosIn(QWidget* parent = nullptr);

    // The folder chosen, as Dir1 holds it.
    QString Dir1Path() const { return dir1Path; }
    void Dir1_Click(const QString& path);
    void Option1_Click(int index);
    void CommandSelecciona_Click();

    WosImporter importer;

    FolderTree* Dir1;
    QLabel* LabelRuta;
    QListWidget* File1;
    QPushButton* CommandSelecciona;
    QLabel* Label1;
    QGroupBox* Frame1;
    std::array<QRadioButton*, 2> Option1;
    std::array<QCheckBox*, 10> Check1;
    QLabel* LabelPaginas;
    QLabel* LabelNuevos;
    QLabel* LabelExistentes;
    QLabel* LabelNwComp;
    QLabel* LabelTiempo;
    QProgressBar* ProgressBar1;
    QListWidget* Avisos;

    // The folder of listing pages that each check box stands for, as an
    // index of kWosFolders; -1 for the kinds of listing that have none.
    static constexpr std::array<int, 10> kCheckFolder = {3, -1, 4, 1, 2, -1, 0, -1, -1, -1};

private:
    void Form_Load();
    void Dir1_Change();
    void ShowProgress(const WosImporter& w);
    void RevealChosen();

    QString dir1Path;
};

} // namespace cintal
