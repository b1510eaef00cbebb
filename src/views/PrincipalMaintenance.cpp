// The main window's entries to the maintenance windows.

#include "maintenance/FrmCambiaTitle.h"
#include "maintenance/frmConfig.h"
#include "views/Principal.h"

namespace cintal {

void Principal::Command7_Click() {
    frmConfig window(this);
    RunModal(window);
}

void Principal::mnuCambiaTitle_Click() {
    if (GridTitles->SelectedRow() < 1 || GridFiles->Rows() < 1) return;
    FrmCambiaTitle window(this, *GridTitles, [this](qint64 oldId) {
        // The file list follows the records: what stayed with the old title,
        // which is still the one selected here.
        Grids::FillFiles(oldId, *GridFiles);
        mnuDelTitle_Click();
    });
    RunModal(window);
}

} // namespace cintal
