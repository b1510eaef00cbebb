#include "inspector/frmCompara.h"

#include "catalogue/Comunes.h"
#include "platform/PathCase.h"
#include "tape/Prompt.h"
#include "views/Grids.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QScrollBar>

namespace cintal {

namespace {

// Digits repeated up to the comment's 255 characters: the width ruler of
// the comment box.
QString Ruler() {
    QString text;
    while (text.size() < 255)
        text += QString::number(text.size() % 10);
    return text;
}

QLabel* Swatch(const QString& text, const QColor& colour) {
    auto* label = new QLabel(text);
    label->setAutoFillBackground(true);
    QPalette p = label->palette();
    p.setColor(QPalette::Window, colour);
    label->setPalette(p);
    label->setContentsMargins(6, 1, 6, 1);
    return label;
}

const int kOtherFile = -2;

} // namespace

QColor frmCompara::ChangedColour() {
    return QColor(0xFF, 0xE0, 0x82);
}
QColor frmCompara::OnlyAColour() {
    return QColor(0xF8, 0xBB, 0xBB);
}
QColor frmCompara::OnlyBColour() {
    return QColor(0xB3, 0xD9, 0xF7);
}

frmCompara::frmCompara(Grid* titles, Grid* files, QWidget* parent)
    : Info(titles, files, parent, true) {
    setObjectName("frmCompara");
    Command8 = new QPushButton(QStringLiteral("Command8"), this);
    Command8->setObjectName("Command8");
    Command8->setToolTip(QStringLiteral("Quitar los bloques sobrantes"));
    Command9 = new QPushButton(QStringLiteral("Extraer"), this);
    Command9->setObjectName("Command9");
    Command10 = new QPushButton(QStringLiteral("InfoSeek"), this);
    Command10->setObjectName("Command10");
    for (QPushButton* b : {Command8, Command9, Command10})
        b->setAutoDefault(false);
    ggg9 = new QPlainTextEdit(QStringLiteral("012345678901234567890123456789"), this);
    ggg9->setObjectName("ggg9");
    ggg9->setMaximumHeight(40);
    fff9 = new QPlainTextEdit(Ruler(), this);
    fff9->setObjectName("fff9");
    fff9->setFont(TextInfo[255]->font());
    fff9->setMaximumHeight(60);

    // The second list, beside the blocks, with what it shows above it and
    // the sum of the comparison below.
    auto* column = new QVBoxLayout;
    auto* chooser = new QHBoxLayout;
    LabelCompara = new QLabel(QStringLiteral("Comparar con:"), this);
    ComboCompara = new QComboBox(this);
    ComboCompara->setObjectName("ComboCompara");
    chooser->addWidget(LabelCompara);
    chooser->addWidget(ComboCompara, 1);
    column->addLayout(chooser);
    GridTZX2 = new Grid(this);
    GridTZX2->setObjectName("GridTZX2");
    GridTZX2->setFont(GridTZX->font());
    GridTZX2->setEditTriggers(QAbstractItemView::NoEditTriggers);
    column->addWidget(GridTZX2, 1);
    blocksRow->addLayout(column, 1);

    auto* legend = new QHBoxLayout;
    legend->addWidget(Swatch(QStringLiteral("Distinto"), ChangedColour()));
    legend->addWidget(Swatch(QStringLiteral("Sólo en A"), OnlyAColour()));
    legend->addWidget(Swatch(QStringLiteral("Sólo en B"), OnlyBColour()));
    LabelSummary = new QLabel(this);
    LabelSummary->setObjectName("LabelSummary");
    LabelArchive = new QLabel(this);
    LabelArchive->setObjectName("LabelArchive");
    legend->addSpacing(12);
    legend->addWidget(LabelSummary);
    legend->addSpacing(12);
    legend->addWidget(LabelArchive);
    legend->addStretch(1);
    leftColumn->insertLayout(leftColumn->indexOf(blocksRow) + 1, legend);

    auto* extra = new QHBoxLayout;
    for (QWidget* w : std::initializer_list<QWidget*>{Command8, Command9, Command10})
        extra->addWidget(w);
    extra->addWidget(ggg9, 1);
    leftColumn->addLayout(extra);
    leftColumn->addWidget(fff9);
    // Two block lists want the room more than the tape pane does.
    if (auto* top = qobject_cast<QHBoxLayout*>(layout())) {
        top->setStretch(0, 7);
        top->setStretch(1, 3);
    }
    resize(1280, 800);

    // One look along both lists: they scroll together.
    connect(GridTZX->verticalScrollBar(), &QScrollBar::valueChanged, GridTZX2->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(GridTZX2->verticalScrollBar(), &QScrollBar::valueChanged, GridTZX->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(Command8, &QPushButton::clicked, this, &frmCompara::Command8_Click);
    connect(ComboCompara, &QComboBox::activated, this, &frmCompara::ComboCompara_Click);
    ChooseTape = [this] {
        return QFileDialog::getOpenFileName(this, QStringLiteral("Comparar con otra cinta"),
                                            QString(), QStringLiteral("Archivo TZX (*.tzx)"));
    };
    SetupGridTZX(*GridTZX2);
}

int frmCompara::FirstFileRow() const {
    const int col = GridFiles->ColumnIndex("ColExtension");
    for (int row = 1; row <= GridFiles->Rows(); ++row)
        if (GridFiles->CellText(row, col).toLower() == QLatin1String("tzx")) return row;
    return 1;
}

int frmCompara::SelectedBlock() const {
    const int row = GridTZX->SelectedRow();
    if (row < 1) return 0;
    // A row of the other tape alone has no block here: the next one below
    // stands in its place.
    for (int r = row; r <= GridTZX->Rows(); ++r) {
        const QString number = GridTZX->CellText(r, 1);
        if (!number.isEmpty()) return number.toInt();
    }
    return static_cast<int>(const_cast<Inspector&>(logic).Tape().Blocks().Count()) + 1;
}

void frmCompara::FillCompareList() {
    filling = true;
    ComboCompara->clear();
    const int colExt = GridFiles->ColumnIndex("ColExtension");
    const int colPath = GridFiles->ColumnIndex("ColPath");
    const int colName = GridFiles->ColumnIndex("ColFileName");
    for (int row = 1; row <= GridFiles->Rows(); ++row) {
        if (GridFiles->CellText(row, colExt).toLower() != QLatin1String("tzx")) continue;
        const QString dir = GridFiles->CellText(row, colPath);
        const QString name = GridFiles->CellText(row, colName);
        QString path = dir.isEmpty() ? name : QDir(dir).filePath(name);
        const QString found = dir.isEmpty() ? QString() : platform::FindEntry(dir, name);
        if (!found.isEmpty()) path = found;
        // Two tapes of one name in different folders: the folder tells them apart.
        ComboCompara->addItem(name + " (" + QFileInfo(dir).fileName() + ")", path);
    }
    ComboCompara->addItem(QStringLiteral("Otro archivo..."), kOtherFile);
    ComboCompara->setCurrentIndex(-1);
    filling = false;
}

void frmCompara::ComboCompara_Click(int index) {
    if (index < 0 || filling) return;
    const QVariant data = ComboCompara->itemData(index);
    if (data.typeId() == QMetaType::Int && data.toInt() == kOtherFile) {
        const QString path = ChooseTape ? ChooseTape() : QString();
        if (path.isEmpty()) {
            // Nothing chosen: the list shows what it showed.
            const int at = ComboCompara->findData(otherPath);
            ComboCompara->setCurrentIndex(at);
            return;
        }
        ComboCompara->insertItem(index, QFileInfo(path).fileName(), path);
        ComboCompara->setCurrentIndex(index);
        CompareWith(path);
        return;
    }
    CompareWith(data.toString());
}

void frmCompara::CompareWith(const QString& path) {
    otherPath = path;
    other.FileName = path.toStdString();
    other.ReadTape();
    const int at = ComboCompara->findData(path);
    if (at >= 0 && ComboCompara->currentIndex() != at) ComboCompara->setCurrentIndex(at);
    FillGrid();
}

void frmCompara::FillGrid() {
    if (ComboCompara->count() == 0 && GridFiles->Rows() > 0) {
        FillCompareList();
        // The title's second tape, if any, stands on the right at first.
        if (ComboCompara->count() > 2) {
            ComboCompara->setCurrentIndex(1);
            otherPath = ComboCompara->itemData(1).toString();
            other.FileName = otherPath.toStdString();
            other.ReadTape();
        }
    }
    if (otherPath.isEmpty()) {
        Info::FillGrid();
        GridTZX2->Clear(false);
        LabelSummary->clear();
        LabelArchive->clear();
        return;
    }
    logic.RefreshContents();
    result = CompareTapes(logic.Tape(), other);
    const auto rowsA = Inspector::BlockRowsOf(logic.Tape());
    const auto rowsB = Inspector::BlockRowsOf(other);
    for (Grid* g : {GridTZX, GridTZX2}) {
        g->SetRedraw(false);
        g->Clear(false);
        g->SetRows(static_cast<int>(result.rows.size()));
    }
    int r = 0;
    for (const CompareRow& row : result.rows) {
        ++r;
        std::optional<QColor> back;
        switch (row.kind) {
        case RowKind::Changed:
            back = ChangedColour();
            break;
        case RowKind::OnlyA:
            back = OnlyAColour();
            break;
        case RowKind::OnlyB:
            back = OnlyBColour();
            break;
        default:
            break;
        }
        // The empty side of a row is painted too, so that the eye follows it across.
        if (row.a > 0)
            WriteBlockRow(*GridTZX, r, rowsA[static_cast<std::size_t>(row.a - 1)], back);
        else if (back)
            for (int c = 1; c <= GridTZX->Columns(); ++c)
                GridTZX->CellDetails(r, c, QString(), Grid::AlignDefault, -1, back);
        if (row.b > 0)
            WriteBlockRow(*GridTZX2, r, rowsB[static_cast<std::size_t>(row.b - 1)], back);
        else if (back)
            for (int c = 1; c <= GridTZX2->Columns(); ++c)
                GridTZX2->CellDetails(r, c, QString(), Grid::AlignDefault, -1, back);
    }
    for (Grid* g : {GridTZX, GridTZX2})
        g->SetRedraw(true);
    LabelSummary->setText(QString::fromStdString(CompareSummary(result)));
    LabelArchive->setText(QString::fromStdString(ArchiveInfoSummary(result)));
}

void frmCompara::Command8_Click() {
    logic.RemoveRedundantBlocks();
    FillGrid();
}

} // namespace cintal
