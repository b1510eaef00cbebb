#pragma once
// "Archivos repetidos": the groups of files of the catalogue that hold the
// same bytes, one row per file, and the way back to a file's title.

#include "widgets/Grid.h"

#include <QDialog>
#include <functional>

class QLabel;
class QProgressBar;

namespace cintal {

class FrmRepetidos : public QDialog {
    Q_OBJECT
public:
    explicit FrmRepetidos(QWidget* parent = nullptr);

    // Reads the store and fills the list; false after a store failure.
    bool Fill();
    // A double click on a row: the file's title is chosen and the window closes.
    void GridFiles_DblClick(int row);

    // Told the title of the file chosen by a double click.
    std::function<void(qint64 titleId)> ChooseTitle;

    Grid* GridFiles;
    QLabel* LabelResumen;
    QProgressBar* Progress;
};

} // namespace cintal
