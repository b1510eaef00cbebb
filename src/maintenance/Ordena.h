#pragma once

#include "maintenance/Reorganiser.h"
#include "widgets/FolderJob.h"

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace cintal {

class Grid;

// "Ordena archivos": moves the files of the titles the main window lists,
// with their side files, into a new tree of folders.
class Ordena : public FolderJob {
    Q_OBJECT
public:
    Ordena(Grid* titles, Grid* files, QWidget* parent = nullptr);

    void Dir1_Click(const QString& path) override;
    void CommandOrdenar_Click();
    void CommandSimular_Click();

    Reorganiser reorganiser;

    QLabel* Label1;
    QLineEdit* TxtSubFolder;
    std::array<QRadioButton*, 4> OptionSortBy;
    QCheckBox* CheckCatalogo;
    QPushButton* CommandOrdenar;
    QPushButton* CommandSimular;
    QLabel* LabelTitulos;
    QLabel* LabelMovidos;
    QLabel* LabelLaterales;
    QLabel* LabelOmitidos;
    QLabel* LabelFallidos;
    QListWidget* ListPlan;

private:
    SortBy Order() const;
    // The titles the main window lists, with their files.
    std::vector<ReorgTitle> ListedTitles();
    void ShowCounters(const Reorganiser& r);
    void ShowPlan();

    Grid* GridTitles;
    Grid* GridFiles;
};

} // namespace cintal
