// The main window opening a file it was given from outside.

#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "inspector/Info.h"
#include "tape/Prompt.h"
#include "views/Principal.h"

#include <QFileInfo>

namespace cintal {

namespace {

// The visible row of the title grid that holds the file's title; 0 when the
// catalogue doesn't hold the file or the filter hides its title.
int TitleRowOf(const Grid& titles, qint64 titleId) {
    if (titleId == 0) return 0;
    for (int row = 1; row <= titles.Rows(); ++row)
        if (titles.RowVisible(row) && Grids::TitleAt(titles, row).TitleId == titleId) return row;
    return 0;
}

void Tell(const QString& text) {
    Ask(text.toStdString(), Comunes::kAppTitle.toStdString(), Icon::Exclamation);
}

} // namespace

void Principal::OpenGivenFile(const QString& file) {
    const QString path = QFileInfo(file).absoluteFilePath();
    if (!QFileInfo(path).isFile()) {
        Tell("No se encuentra el archivo " + path);
        return;
    }
    const qint64 fileId = Records::FileRowAt(path).value_or(0);
    const int titleRow = TitleRowOf(*GridTitles, fileId ? Records::TitleOfFile(fileId) : 0);
    if (titleRow > 0) GridTitles->SetSelectedRow(titleRow);

    Inspector probe;
    probe.Open(path);
    switch (probe.Tape().Status().stop) {
    case ReadStop::Missing:
    case ReadStop::TooShort:
    case ReadStop::NoSignature:
        // Its title, when it has one, stays selected: its files are at hand.
        Tell("El archivo " + path + " no es una cinta TZX: no se puede ver en el inspector");
        return;
    default:
        break;
    }

    int fileRow = 0;
    for (int row = 1; titleRow > 0 && row <= GridFiles->Rows(); ++row)
        if (Grids::FileAt(*GridFiles, row).FileId == fileId) fileRow = row;
    Info window(GridTitles, GridFiles, this);
    if (fileRow > 0) {
        connect(&window, &Info::TitleRowSaved, this, &Principal::GridTitles_SelectionChange);
        window.StartAt(fileRow);
        window.Form_Load();
    } else {
        window.Form_LoadTape(path);
    }
    RunModal(window);
}

} // namespace cintal
