#include "inspector/Info.h"

#include "catalogue/Comunes.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"

namespace cintal {

void Info::SetupGridTZX(Grid& grid) {
    grid.SetDefaultRowHeight(16);
    grid.SetRedraw(false);
    grid.SetRowMode(true);
    grid.Clear(true);
    grid.AddColumn("ColRow", QStringLiteral("Nº"), Grid::AlignRight, -1, 30, true);
    grid.AddColumn("ColIdTipoBloque", "ColIdTipoBloque", Grid::AlignLeft, -1, 30, false);
    // Wide enough for the longest kind, "Parar la cinta si 48K", and for
    // positions of seven digits.
    grid.AddColumn("ColTipoBloque", "Bloque", Grid::AlignLeft, -1, 118, true);
    grid.AddColumn("ColDescr", QStringLiteral("Descripción"), Grid::AlignRight, -1, 150, true);
    grid.AddColumn("ColInicio", "Inicio", Grid::AlignLeft, -1, 50, true);
    grid.AddColumn("ColFin", "Final", Grid::AlignLeft, -1, 50, true);
    grid.SetRedraw(true);
}

void Info::WriteBlockRow(Grid& grid, int r, const Inspector::BlockRow& b,
                         std::optional<QColor> back) {
    // The number and the description take the grid's own alignment, not
    // their headers'.
    grid.CellDetails(r, 1, QString::number(b.number), Grid::AlignLeft, -1, back);
    grid.CellDetails(r, 2, QString::number(b.id), Grid::AlignRight, -1, back);
    grid.CellDetails(r, 3, b.kind, Grid::AlignDefault, -1, back);
    grid.CellDetails(r, 4, b.descr, Grid::AlignLeft, -1, back);
    grid.CellDetails(r, 5, Number(b.start), Grid::AlignRight, -1, back);
    grid.CellDetails(r, 6, Number(b.end), Grid::AlignRight, -1, back);
}

void Info::GridTZX_SelectionChange() {
    const Inspector::BlockPreview p = logic.Preview(SelectedBlock());
    using View = Inspector::BlockPreview::View;
    LabelContenido->setText(p.line);
    switch (p.view) {
    case View::Screen:
        ScrPreview->SetScreen(p.bytes);
        PreviewStack->setCurrentWidget(ScrPreview);
        break;
    case View::Picture: {
        QPixmap picture;
        picture.loadFromData(p.bytes);
        const QSize room = PreviewStack->size() - QSize(8, 8);
        PicturePreview->setPixmap(
            picture.isNull() ? QPixmap()
                             : picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        if (picture.isNull()) PicturePreview->setText(QStringLiteral("(imagen ilegible)"));
        PreviewStack->setCurrentWidget(PicturePreview);
        break;
    }
    case View::Text:
        TextPreview->setPlainText(p.text);
        PreviewStack->setCurrentWidget(TextPreview);
        break;
    case View::None:
        PreviewStack->setCurrentIndex(0);
        break;
    }
    CommandExtraer->setEnabled(p.extractable);
}

void Info::CommandExtraer_Click() {
    const int block = SelectedBlock();
    const QString proposed = logic.ProposedExtractPath(block);
    if (proposed.isEmpty()) return;
    const QString path = ChooseSaveFile ? ChooseSaveFile(proposed) : QString();
    if (path.isEmpty()) return;
    bool replace = false;
    const std::string existing = ExistingFile(path.toStdString());
    if (!existing.empty()) {
        if (Ask("Ya existe " + existing + ". ¿Desea reemplazarlo?", "Extraer", Icon::Exclamation,
                Buttons::YesNo) != Button::Yes)
            return;
        replace = true;
    }
    const QString why = logic.ExtractBlock(block, path, replace);
    if (why.isEmpty())
        Ask(("Bloque " + QString::number(block) + " guardado en " + path).toStdString(), "Extraer",
            Icon::Information);
    else
        Ask(("No se puede guardar " + path + ": " + why).toStdString(), "Extraer", Icon::Critical);
}

void Info::FillGrid() {
    logic.RefreshContents();
    GridTZX->SetRedraw(false);
    GridTZX->Clear(false);
    const auto rows = logic.BlockRows();
    GridTZX->SetRows(static_cast<int>(rows.size()));
    int r = 0;
    for (const Inspector::BlockRow& b : rows)
        WriteBlockRow(*GridTZX, ++r, b);
    GridTZX->SetRedraw(true);
    UpdateSaveButton();
    // The list was rebuilt without a selection: nothing to preview.
    GridTZX_SelectionChange();
}

void Info::Command3_Click() {
    if (logic.RemoveBlock(SelectedBlock())) FillGrid();
}

void Info::CommandSube_Click() {
    MoveSelectedBlock(true);
}

void Info::CommandBaja_Click() {
    MoveSelectedBlock(false);
}

void Info::MoveSelectedBlock(bool up) {
    const int select = logic.MoveBlock(GridTZX->SelectedRow(), up, GridTZX->Rows());
    if (select < 1) return;
    FillGrid();
    GridTZX->setFocus();
    GridTZX->SetSelectedRow(select);
}

void Info::AddBlock_Click(Attachment type) {
    const Inspector::AttachmentSpec& spec = Inspector::SpecOf(type);
    const QString caption = QString::fromUtf8(spec.caption);
    const QString filter = QString::fromUtf8(spec.filter);
    const QString file = ChooseFile ? ChooseFile(caption, filter) : QString();
    if (file.isEmpty()) return;
    const QString why = logic.AddBlock(type, file, SelectedBlock());
    if (!why.isEmpty()) {
        Ask(why.toStdString(), Comunes::kAppTitle.toStdString(), Icon::Exclamation);
        return;
    }
    FillGrid();
}

} // namespace cintal
