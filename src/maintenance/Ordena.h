#pragma once

#include "maintenance/Reorganiser.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QFileSystemModel;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTreeView;

namespace cintal {

class Grid;

// "Ordena archivos": moves the files of the titles the main window lists,
// with their side files, into a new tree of folders.
class Ordena : public QDialog {
    Q_OBJECT
public:
    Ordena(Grid* titles, Grid* files, QWidget* parent = nullptr);

    QString Dir1Path() const { return dir1Path; }
    void Dir1_Click(const QString& path);
    void CommandOrdenar_Click();
    void CommandSimular_Click();

    Reorganiser reorganiser;

    QTreeView* Dir1;
    QLabel* LabelRuta;
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
    QProgressBar* ProgressBar1;
    QListWidget* ListPlan;

private:
    SortBy Order() const;
    // The titles the main window lists, with their files.
    std::vector<ReorgTitle> ListedTitles();
    void ShowCounters(const Reorganiser& r);
    void ShowPlan();

    Grid* GridTitles;
    Grid* GridFiles;
    QFileSystemModel* folders;
    QString dir1Path;
};

} // namespace cintal
