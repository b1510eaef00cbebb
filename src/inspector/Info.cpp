#include "inspector/Info.h"

#include "inspector/TapeSound.h"
#include "inspector/TitlePane.h"

#include "catalogue/Comunes.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "platform/PathCase.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "widgets/Grids.h"

#include <QDir>
#include <QPlainTextEdit>
#include <QScrollBar>

namespace cintal {

namespace {

// The boxes keep the lines of the original controls, CR LF; an editor of
// several lines works with LF alone.
QString ToEditor(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}
QString FromEditor(QString text) {
    return text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

const QStringList kEstados = {"Desconocido",  "No existe TZX",
                              "Desaparecido", "Distribución prohibida",
                              "TZX perfecto", "Basic"};
} // namespace

int Info::BoxLimit(Box box) {
    switch (box) {
    case Box::Year:
        return 4;
    case Box::Author:
    case Box::Language:
        return 0;
    default:
        return 255;
    }
}

void Info::SetTitleCell(const char* key, const QString& text, int icon) {
    TitlePane::SetSelectedCell(mainTitles, key, text, icon);
}

void Info::Form_Load() {
    AsciiOnly = true;
    TitlePane::FillPublishers(ComboPub);
    TitlePane::FillYears(ListYear);
    SetupGridTZX(*GridTZX);
    FitBlockList();
    Grids::SetupGridFiles(*GridFiles);

    const TitleRef title = TitlePane::SelectedTitle(mainTitles);
    setProperty("Tag", title.TitleId);
    ShowSource(title.Estado);
    TextName->setText(title.Name);
    TitlePane::ShowPublisher(ComboPub, title.Publisher, title.TitleId);
    ComboTipo->setEditText(title.Type);
    const int year = TitlePane::YearValue(title.Year);
    if (year >= 1980 && year <= 2030)
        ListYear->setCurrentIndex(year - 1980 + 1);
    else if (year == 0)
        ListYear->setCurrentIndex(0);

    Grids::FillFiles(property("Tag").toLongLong(), *GridFiles);
    const int first = FirstFileRow();
    if (first >= 1 && first <= GridFiles->Rows()) {
        GridFiles->SetSelectedRow(first);
        // Selecting the row may already have raised the event; opening twice
        // would read the tape twice for nothing.
        if (logic.Path().isEmpty()) GridFiles_SelectionChange();
    }
    UpdateSaveButton();
    Loaded();
}

void Info::Form_LoadTape(const QString& path) {
    tapeOnly = true;
    AsciiOnly = true;
    SetupGridTZX(*GridTZX);
    FitBlockList();
    for (QWidget* w : {static_cast<QWidget*>(Frame1), static_cast<QWidget*>(GridFiles)})
        w->hide();
    // Nothing to copy from or to without a title.
    for (const auto& [box, button] : CommandATZX)
        button->hide();
    OpenFile(path);
    Loaded();
}

void Info::ShowSource(int estado) {
    ComboEstado->clear();
    ComboEstado->addItems(kEstados);
    ComboEstado->setCurrentIndex(estado >= 0 && estado <= 5 ? estado : -1);
}

void Info::FitBlockList() {
    // The list is never narrower than its columns; the preview takes the rest.
    GridTZX->setMinimumWidth(GridTZX->ColumnsWidth() + 2 * GridTZX->frameWidth() +
                             GridTZX->verticalScrollBar()->sizeHint().width());
}

void Info::GridFiles_SelectionChange() {
    const int row = GridFiles->SelectedRow();
    if (reselecting) return;
    if (openRow > 0 && row != openRow && !SettlePending()) {
        // The user stays with the open tape: its row is selected again.
        reselecting = true;
        GridFiles->SetSelectedRow(openRow);
        reselecting = false;
        return;
    }
    openRow = row;
    const FileRef file = Grids::FileAt(*GridFiles, row);
    OpenFile(file.Dir.isEmpty() ? file.FileName : file.Location());
}

void Info::OpenFile(const QString& path) {
    Sound->Stop();
    TextPath->setText(path);
    logic.Open(path);
    FillGrid();
    setWindowTitle(logic.Caption());
    ShowArchiveInfo();
    logic.SetPending(false);
    UpdateSaveButton();
    ShowReadOnly();
}

void Info::ShowReadOnly() {
    const QString why = logic.ReadOnlyReason();
    for (QWidget* w : std::initializer_list<QWidget*>{Command3, CommandSube, CommandBaja, Command2,
                                                      Command5, Command6, Command7}) {
        if (!w->property("ownTip").isValid()) w->setProperty("ownTip", w->toolTip());
        w->setEnabled(why.isEmpty());
        w->setToolTip(why.isEmpty() ? w->property("ownTip").toString() : why);
    }
    for (const auto& [box, w] : TextInfo) {
        if (auto* edit = qobject_cast<QPlainTextEdit*>(w))
            edit->setReadOnly(!why.isEmpty());
        else
            static_cast<QLineEdit*>(w)->setReadOnly(!why.isEmpty());
    }
    for (QWidget* w : std::initializer_list<QWidget*>{ComboLang, ComboOrigin})
        w->setEnabled(why.isEmpty());
    for (const auto& [box, button] : CommandATZX)
        button->setEnabled(why.isEmpty());
}

void Info::UpdateSaveButton() {
    const QString why = logic.SaveBlocker();
    CmdTZXSave->setEnabled(why.isEmpty());
    CmdTZXSave->setToolTip(why.isEmpty() ? QStringLiteral("Guardar la cinta") : why);
}

QString Info::BoxText(Box box) const {
    QWidget* w = TextInfo.at(box);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(w)) return FromEditor(edit->toPlainText());
    return static_cast<QLineEdit*>(w)->text();
}

void Info::SetBoxText(Box box, const QString& text) {
    QWidget* w = TextInfo.at(box);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(w))
        edit->setPlainText(ToEditor(text));
    else
        static_cast<QLineEdit*>(w)->setText(text);
}

Inspector::BoxTexts Info::Boxes() const {
    Inspector::BoxTexts boxes;
    for (const Inspector::BoxSpec& b : Inspector::kBoxes)
        boxes[b.box] = BoxText(b.box);
    return boxes;
}

void Info::ShowArchiveInfo() {
    const Inspector::BoxTexts boxes = logic.ShowArchiveInfo();
    for (const Inspector::BoxSpec& b : Inspector::kBoxes)
        SetBoxText(b.box, boxes.at(b.box));
    ComboLang->setCurrentIndex(-1);
    ComboLang->setEditText(BoxText(Box::Language));
    ComboOrigin->setCurrentIndex(-1);
    ComboOrigin->setEditText(BoxText(Box::Origin));
}

int Info::TextInfo_KeyPress(Box box, int key) {
    if (!Inspector::KeyAllowed(key, AsciiOnly)) {
        Inspector::TellAsciiOnly();
        return 0;
    }
    // A box of several lines stops taking characters at its limit, as the
    // one-line boxes do by themselves.
    const int limit = BoxLimit(box);
    // The length counts as the tape holds it, a line end being one byte.
    auto* edit = qobject_cast<QPlainTextEdit*>(TextInfo.at(box));
    if (limit > 0 && edit && ((key >= 32 && key != 127) || key == 13) &&
        !edit->textCursor().hasSelection() && Inspector::WrittenLength(BoxText(box)) >= limit)
        return 0;
    return key;
}

void Info::TextInfo_KeyUp() {
    logic.KeyUp(Boxes());
}

void Info::ComboLang_LostFocus() {
    SetBoxText(Box::Language, ComboLang->currentText());
    logic.SetField(Box::Language, BoxText(Box::Language));
}

void Info::ComboOrigin_LostFocus() {
    SetBoxText(Box::Origin, ComboOrigin->currentText());
    logic.SetField(Box::Origin, BoxText(Box::Origin));
}

void Info::ComboPub_LostFocus() {
    ComboPubTag = TitlePane::PublisherLostFocus(ComboPub);
}

void Info::CmdDBSave_Click() {
    SaveTitle();
}

void Info::SaveTitle() {
    ComboPub_LostFocus();
    const qint64 titleId = TitlePane::SelectedTitle(mainTitles).TitleId;
    if (!TextName->text().isEmpty()) {
        TitleFields fields;
        fields.name = TextName->text();
        fields.idPub = ComboPubTag.toLongLong();
        fields.year = ListYear->currentText();
        fields.estado = ComboEstado->currentIndex();
        const int failures = Store::Failures();
        const TitleSaved saved = SaveTitleRow(titleId, fields);
        if (saved == TitleSaved::NoRow || Store::Failures() != failures) return;
        // A list without a selection keeps the stored source, here too.
        if (fields.estado >= 0)
            SetTitleCell("ColEstado", QString::number(fields.estado), fields.estado);
        SetTitleCell("ColPublisher", ComboPub->currentText());
        SetTitleCell("ColPubId", ComboPubTag);
        SetTitleCell("ColYear", fields.year);
    }
    SetTitleCell("ColName", StoredTitleName(TextName->text()));
    emit TitleRowSaved();
}

bool Info::CmdTZXSave_Click() {
    logic.SetField(Box::Title, BoxText(Box::Title));
    return SaveTapeAndRow();
}

bool Info::SaveTapeAndRow() {
    // A file that can't be saved goes straight to the engine's refusal.
    if (logic.SaveBlocker().isEmpty() && !logic.AcceptLongTexts()) return false;
    // The open file's row: while the user moves to another file, the
    // selection already stands on that one.
    const int row = openRow;
    std::optional<qint64> fileId;
    if (!tapeOnly) fileId = Grids::FileAt(*GridFiles, row).FileId;
    const Inspector::TapeSaved saved = logic.SaveTape(fileId);
    if (!saved.attempted) return false;
    if (saved.written) {
        FillGrid();
        setWindowTitle(logic.Caption());
    }
    if (saved.row && row > 0) Grids::WriteFileRow(*GridFiles, row, *saved.row);
    return saved.written;
}

void Info::CommandaDB_Click(Box box) {
    switch (box) {
    case Box::Title:
        TextName->setText(BoxText(box));
        break;
    case Box::Publisher:
        ComboPub->setCurrentIndex(-1);
        ComboPub->setEditText(BoxText(box));
        break;
    case Box::Year: {
        // The year list is closed: a year it doesn't hold can't be copied.
        const QString year = BoxText(box);
        const int at = ListYear->findText(year, Qt::MatchExactly);
        if (at >= 0)
            ListYear->setCurrentIndex(at);
        else
            Ask(("El año " + year + " no está en la lista").toStdString(),
                Comunes::kAppTitle.toStdString(), Icon::Information);
        break;
    }
    case Box::Type:
        ComboTipo->setEditText(BoxText(box));
        break;
    default:
        break;
    }
}

void Info::CommandATZX_Click(Box box) {
    const std::map<Box, QString> record = {{Box::Title, TextName->text()},
                                           {Box::Publisher, ComboPub->currentText()},
                                           {Box::Year, ListYear->currentText()},
                                           {Box::Type, ComboTipo->currentText()}};
    const auto copied = record.find(box);
    if (copied == record.end()) return;
    SetBoxText(box, copied->second);
    // A copied text is an edit of the tape like a typed one.
    const bool pending = logic.Pending();
    const std::string before = logic.WrittenText(box);
    logic.WriteBoxes(Boxes());
    logic.SetPending(pending || logic.WrittenText(box) != before);
}

bool Info::SettlePending() {
    if (!logic.Pending()) return true;
    const Button answer = Ask(PendingQuestion().toStdString(), "Hay modificaciones pendientes",
                              Icon::None, Buttons::YesNoCancel);
    if (answer == Button::Cancel) return false;
    if (answer == Button::No) return true;
    // A save stopped or declined on the way keeps the edits, and the user
    // with them.
    return SaveOpenTape();
}

QString Info::PendingQuestion() const {
    return QStringLiteral("¿Guardar cambios en el archivo TZX?");
}

bool Info::Form_Unload() {
    if (!SettlePending()) return false;
    Sound->Stop();
    if (tapeOnly) return true;
    if (mainFiles) Grids::FillFiles(property("Tag").toLongLong(), *mainFiles);
    SaveTitle();
    return true;
}

} // namespace cintal
