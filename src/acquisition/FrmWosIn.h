#pragma once

#include "acquisition/WosImporter.h"
#include "widgets/FolderJob.h"

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace cintal {

// "Importa listado WOS": choose the folder of the saved listing pages and add
// the titles they list that the catalogue doesn't have.
class FrmWosIn : public FolderJob {
    Q_OBJECT
public:
    explicit FrmWosIn(QWidget* parent = nullptr);

    void Dir1_Click(const QString& path) override;
    void Option1_Click(int index);
    void CommandSelecciona_Click();

    WosImporter importer;

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
    QListWidget* Avisos;

    // The folder of listing pages that each check box stands for, as an
    // index of kWosFolders; -1 for the kinds of listing that have none.
    static constexpr std::array<int, 10> kCheckFolder = {3, -1, 4, 1, 2, -1, 0, -1, -1, -1};

private:
    void Form_Load();
    void Dir1_Change();
    void ShowProgress(const WosImporter& w);
};

} // namespace cintal
