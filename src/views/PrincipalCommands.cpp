// The main window's buttons and popup menus.

#include "acquisition/BuscarDirs.h"
#include "acquisition/FrmAgregarDesde.h"
#include "acquisition/FrmWosIn.h"
#include "catalogue/Ask.h"
#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "inspector/Info.h"
#include "inspector/TitleInfo.h"
#include "inspector/frmCompara.h"
#include "maintenance/FrmIdentifica.h"
#include "maintenance/FrmRepetidos.h"
#include "maintenance/Ordena.h"
#include "maintenance/frmRenombra.h"
#include "platform/Shell.h"
#include "tape/Prompt.h"
#include "tape/TapConvert.h"
#include "views/Principal.h"
#include "widgets/Pictures.h"

#include <QDir>
#include <QFileDialog>

namespace cintal {

const QString Principal::kAddFileFilter = QStringLiteral(
    "Archivo TZX (*.tzx)|*.tzx|Archivo TAP (*.tap)|*.tap|Archivo Z80 (*.z80)|*.z80|Archivo sna "
    "(*.sna)|*.sna|Archivo DSK (*.dsk)|*.dsk|Archivo TRD (*.trd)|*.trd|Archivo slt "
    "(*.slt)|*.slt|Archivo sp (*.sp)|*.sp|");

namespace {

// "Description (*.x)|*.x|..." as the desktop's dialog wants it.
QString QtFilter(const QString& filter) {
    const QStringList parts = filter.split('|', Qt::SkipEmptyParts);
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2)
        out << parts[i];
    return out.join(";;");
}

} // namespace

void Principal::BuildCommands() {
    using Pictures::Tool;
    using Slot = void (Principal::*)();
    auto button = [this](QAction*& action, const char* name, Tool tool, const QString& tip,
                         Slot slot) {
        action = Toolbar->addAction(Pictures::ToolPicture(tool), tip);
        action->setObjectName(name);
        action->setToolTip(tip);
        connect(action, &QAction::triggered, this, slot);
    };
    auto item = [this](QMenu* menu, QAction*& action, const QString& text, Slot slot) {
        action = menu->addAction(text);
        connect(action, &QAction::triggered, this, slot);
    };
    button(CmdSearch, "CmdSearch", Tool::Search, QStringLiteral("Buscar archivos en disco"),
           &Principal::CmdSearch_Click);
    button(ImportaWOS, "ImportaWOS", Tool::ImportWeb, QString(), &Principal::ImportaWOS_Click);
    button(CmdImportar, "CmdImportar", Tool::ImportFrom, QStringLiteral("Importar registros"),
           &Principal::CmdImportar_Click);
    button(CmdModify, "CmdModify", Tool::Modify, QStringLiteral("Información del registro"),
           &Principal::CmdModify_Click);
    button(Command3, "Command3", Tool::Reorder, QStringLiteral("Reordenar colección"),
           &Principal::Command3_Click);
    button(Command7, "Command7", Tool::Options, QStringLiteral("Opciones"),
           &Principal::Command7_Click);
    button(CmdLimpiaEmpty, "CmdLimpiaEmpty", Tool::Empty, QStringLiteral("Vacía la base de datos"),
           &Principal::CmdLimpiaEmpty_Click);
    button(Command2, "Command2", Tool::Compare, QStringLiteral("Comparar cintas"),
           &Principal::Command2_Click);
    button(CmdRepetidos, "CmdRepetidos", Tool::Duplicates, QStringLiteral("Archivos repetidos"),
           &Principal::CmdRepetidos_Click);
    button(CmdIdentifica, "CmdIdentifica", Tool::Identify, QStringLiteral("Identificar colección"),
           &Principal::CmdIdentifica_Click);
    CmdModify->setEnabled(false);
    // Comparing starts from a title with a tape: off until one is selected.
    Command2->setEnabled(false);

    Menupop = new QMenu(this);
    Menupop->setObjectName("Menupop");
    item(Menupop, mnuAddDBfile, QStringLiteral("Añadir archivo..."),
         &Principal::mnuAddDBfile_Click);
    item(Menupop, mnuInfoseek, QStringLiteral("Infoseek"), &Principal::mnuInfoseek_Click);
    item(Menupop, MnuTipShop, QStringLiteral("The TipShop"), &Principal::MnuTipShop_Click);
    item(Menupop, mnuDelTitle, QStringLiteral("Elimina registro"), &Principal::mnuDelTitle_Click);
    item(Menupop, mnuCambiaTitle, QStringLiteral("Mover archivos a otro título..."),
         &Principal::mnuCambiaTitle_Click);
    mnuCambiaTitle->setEnabled(false);
    Menupop->addSeparator();
    item(Menupop, mnuIdentifica, QStringLiteral("Identificar colección..."),
         &Principal::CmdIdentifica_Click);
    Menupop2 = new QMenu(this);
    Menupop2->setObjectName("Menupop2");
    item(Menupop2, mnuDelFile, QStringLiteral("Elimina registro"), &Principal::mnuDelFile_Click);
    item(Menupop2, mnuRenombra, QStringLiteral("Renombra archivo"), &Principal::mnuRenombra_Click);
    item(Menupop2, mnuTap2Tzx, QStringLiteral("Convertir en TZX"), &Principal::mnuTap2Tzx_Click);

    connect(GridTitles, &Grid::RightButton, this, [this](const QPoint& at) { Menupop->popup(at); });
    connect(GridFiles, &Grid::RightButton, this, [this](const QPoint& at) {
        if (GridFiles->SelectedRow() > 0) Menupop2->popup(at);
    });
    connect(GridTitles, &Grid::RowDoubleClicked, this, [this] { CmdModify_Click(); });

    ChooseFile = [this](const QString& filter) {
        return QFileDialog::getOpenFileName(this, QString(), QString(), QtFilter(filter));
    };
}

void Principal::PaintTitleRow(const QColor& back, const QColor& fore) {
    const int row = GridTitles->SelectedRow();
    if (row < 1) return;
    for (int col = 1; col <= GridTitles->Columns(); ++col) {
        GridTitles->SetCellBackColor(row, col, back);
        GridTitles->SetCellForeColor(row, col, fore);
    }
}

void Principal::CmdSearch_Click() {
    BuscarDirs window(this);
    window.exec();
    Grids::FillTitles(Parts(), QString());
}

void Principal::CmdRepetidos_Click() {
    FrmRepetidos window(this);
    window.ChooseTitle = [this](qint64 titleId) { SelectTitleId(titleId); };
    if (!window.Fill()) return;
    RunModal(window);
}

void Principal::CmdIdentifica_Click() {
    FrmIdentifica window(this);
    window.RunModal = RunModal;
    if (!window.Fill()) return;
    RunModal(window);
    // DATs added or removed change what each file is, and names given by a
    // DAT change the files: the lists show them as they now stand.
    if (ChckSinIdentificar->isChecked()) Grids::FilterTitles(*GridTitles);
    if (GridTitles->SelectedRow() > 0) GridTitles_SelectionChange();
}

bool Principal::SelectTitleId(qint64 titleId) {
    for (int row = 1; row <= GridTitles->Rows(); ++row) {
        if (GridTitles->RowData(row).toLongLong() != titleId) continue;
        GridTitles->SetRowVisible(row, true);
        GridTitles->SetSelectedRow(row);
        return true;
    }
    return false;
}

void Principal::ImportaWOS_Click() {
    FrmWosIn window(this);
    RunModal(window);
    Grids::FillTitles(Parts(), kOrderByName);
}

void Principal::CmdImportar_Click() {
    FrmAgregarDesde window(this);
    window.RunModal = RunModal;
    RunModal(window);
    // As the window that ran would have left the list.
    if (window.imported)
        Grids::FillTitles(Parts(), kOrderByName);
    else if (window.scanned)
        Grids::FillTitles(Parts(), QString());
}

void Principal::Command3_Click() {
    Ordena window(GridTitles, GridFiles, this);
    RunModal(window);
}

void Principal::mnuRenombra_Click() {
    if (GridFiles->SelectedRow() < 1) return;
    frmRenombra window(GridTitles, GridFiles, this);
    window.BuscaPantalla = [this] { BuscaPantalla(); };
    RunModal(window);
}

void Principal::CmdModify_Click() {
    // Without a title there is no record to show.
    if (GridTitles->SelectedRow() < 1) return;
    if (Grids::HasTape(*GridFiles)) {
        Info window(GridTitles, GridFiles, this);
        // The name may have changed: the panel and the side files follow it.
        connect(&window, &Info::TitleRowSaved, this, &Principal::GridTitles_SelectionChange);
        window.Form_Load();
        RunModal(window);
    } else {
        TitleInfo window(GridTitles, &ImageListFrom, this);
        window.Form_Load();
        RunModal(window);
    }
}

void Principal::Command2_Click() {
    if (GridTitles->SelectedRow() < 1) return;
    frmCompara window(GridTitles, GridFiles, this);
    connect(&window, &Info::TitleRowSaved, this, &Principal::GridTitles_SelectionChange);
    window.Form_Load();
    RunModal(window);
}

void Principal::AddFileByHand() {
    const qint64 titleId = Grids::SelectedTitle(*GridTitles).TitleId;
    if (!titleId) return;
    const QString path = ChooseFile ? ChooseFile(kAddFileFilter) : QString();
    if (path.isEmpty()) return;
    switch (Records::AddFileToTitle(titleId, path)) {
    case Records::RecordChange::Done:
        Grids::FillFiles(titleId, *GridFiles);
        Ask(QStringLiteral("Archivo Agregado"), {}, Icon::Information);
        PaintTitleRow(Grids::ColourOwnedBack(), Grids::ColourOwnedFore());
        break;
    case Records::RecordChange::Unchanged:
        Ask(QStringLiteral("Ya existe"));
        break;
    case Records::RecordChange::Failed:
        break;
    }
}

void Principal::OpenAddress(const QString& address) {
    if (!Shell::Current().Open(address))
        Ask("No se puede abrir el navegador para " + address, {}, Icon::Exclamation);
}

void Principal::mnuInfoseek_Click() {
    OpenAddress(InfoseekAddress(LabelNombre->text(), LabelCompany->text()));
}

void Principal::MnuTipShop_Click() {
    OpenAddress(TipShopAddress(LabelNombre->text()));
}

void Principal::mnuDelTitle_Click() {
    const int row = GridTitles->SelectedRow();
    if (row < 1) return;
    const TitleRef title = Grids::TitleAt(*GridTitles, row);
    if (Ask("¿Desea eliminar la entrada \"" + QString::number(title.TitleId) + " - " + title.Name +
                "\"?",
            QStringLiteral("Eliminar registro"), Icon::Critical, Buttons::YesNo) != Button::Yes)
        return;
    if (Records::DelTitleRecord(title.TitleId) == Records::RecordChange::Failed) return;
    Ask(QStringLiteral("Registro eliminado"), {}, Icon::Information);
    // The combo keeps the order of the load: the item at the row's number goes.
    ComboRegistro->removeItem(row - 1);
    GridTitles->RemoveRow(row);
    ComboRegistro->setCurrentIndex(GridTitles->SelectedRow() - 1);
    GridFiles->Clear(false);
}

void Principal::mnuDelFile_Click() {
    const int row = GridFiles->SelectedRow();
    // A file is deleted for its title, never for none.
    if (row < 1 || GridTitles->SelectedRow() < 1) return;
    const bool moreFiles = GridFiles->Rows() > 1;
    const FileRef file = Grids::FileAt(*GridFiles, row);
    if (Ask("¿Desea eliminar la entrada \"" + QDir(file.Dir).filePath(file.FileName) + "\"?",
            QStringLiteral("Eliminar registro"), Icon::Critical, Buttons::YesNo) != Button::Yes)
        return;
    if (Records::DelFileRecord(file.FileId, Grids::SelectedTitle(*GridTitles).TitleId, moreFiles) ==
        Records::RecordChange::Failed)
        return;
    const QString path = file.Path();
    // The archive holds other files too: only the entry goes.
    if (!file.Inner.isEmpty()) {
        Ask(QStringLiteral("Registro eliminado"), {}, Icon::Information);
    } else if (Ask(QStringLiteral("¿Eliminar también físicamente el archivo del disco duro?"),
                   QStringLiteral("Eliminar registro"), Icon::Critical,
                   Buttons::YesNo) == Button::Yes) {
        // No path is built from an unknown folder; the answer is the same.
        if (path.isEmpty())
            Ask(QStringLiteral("Archivo borrado"), {}, Icon::Information);
        else
            DeleteFileFromDisk(path);
    } else {
        Ask(QStringLiteral("Registro eliminado"), {}, Icon::Information);
    }
    GridFiles->RemoveRow(row);
    if (!moreFiles) PaintTitleRow(Grids::ColourMissingBack, Grids::ColourMissingFore);
}

void Principal::CmdLimpiaEmpty_Click() {
    if (Ask(QStringLiteral("esto borrará la base de datos"), {}, Icon::Exclamation,
            Buttons::YesNo) != Button::Yes)
        return;
    // No titles, nothing to empty: the window stays as it is.
    QSqlQuery any = Store::NewQuery();
    if (!Store::Exec(any, QStringLiteral("SELECT 1 FROM Titles LIMIT 1")) || !any.next()) return;
    any.finish();
    if (!Records::EmptyTitles()) return;
    Grids::FillTitles(Parts(), kOrderByName);
}

void Principal::mnuTap2Tzx_Click() {
    const FileRef file = Grids::SelectedFile(*GridFiles);
    // A tape inside an archive stays as it is.
    const QString tap = file.Inner.isEmpty() ? file.Path() : QString();
    const qint64 titleId = Grids::SelectedTitle(*GridTitles).TitleId;
    if (tap.isEmpty() || !titleId) return;
    std::string made;
    if (!ConvertTapToTzx(tap.toStdString(), &made)) return;
    const QString tzx = QString::fromStdString(made);
    // A file already there is shown as converted all the same.
    if (Records::AddFileToTitle(titleId, tzx) == Records::RecordChange::Failed) return;
    Grids::FillFiles(titleId, *GridFiles);
    Ask("Archivo convertido: " + tzx, {}, Icon::Information);
}

} // namespace cintal
