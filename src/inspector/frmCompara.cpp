#include "inspector/frmCompara.h"

#include "inspector/TapeSound.h"

#include "catalogue/Ask.h"
#include "catalogue/Comunes.h"
#include "platform/TapeAt.h"
#include "tape/Prompt.h"
#include "widgets/Grids.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScreen>
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

// What the compare window says of a tape that was not read to its end.
QString NotReadWhole(const char* side, const TZXTape& tape) {
    const ReadStatus& st = tape.Status();
    const QString cause = QString::fromStdString(st.Cause());
    if (st.ordinal < 1) return QStringLiteral("La cinta %1 no se pudo leer: %2.").arg(side, cause);
    return QStringLiteral("La cinta %1 no se leyó entera: %2 (bloque %3, byte %4). Lo que sigue "
                          "no entra en la comparación.")
        .arg(side, cause, QString::number(st.ordinal), QString::number(st.position));
}

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

frmCompara::frmCompara(Grid* titles, Grid* files, QWidget* parent) : Info(titles, files, parent) {
    setObjectName("frmCompara");
    Reduce();
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
    fff9->setFont(TextInfo[Box::Comments]->font());
    fff9->setMaximumHeight(60);

    BuildPair();

    auto* extra = new QHBoxLayout;
    for (QWidget* w : std::initializer_list<QWidget*>{Command8, Command9, Command10})
        extra->addWidget(w);
    extra->addWidget(ggg9, 1);
    leftColumn->addLayout(extra);
    leftColumn->addWidget(fff9);
    WrapInScrollArea();

    connect(Command8, &QPushButton::clicked, this, &frmCompara::Command8_Click);
    connect(ComboCompara, &QComboBox::activated, this, &frmCompara::ComboCompara_Click);
    ChooseTape = [this] {
        return QFileDialog::getOpenFileName(this, QStringLiteral("Comparar con otra cinta"),
                                            QString(), QStringLiteral("Archivo TZX (*.tzx)"));
    };
    SetupGridTZX(*GridTZX2);
}

void frmCompara::Reduce() {
    for (QWidget* w : std::initializer_list<QWidget*>{
             ComboEstado, Label2, CmdTZXSave, Command2, Command3, Command5, Command6,
             CommandExtraer, CommandSube, CommandBaja, Frame2, OptDatos[0], OptDatos[1],
             OptDatos[2], FramePreview, Sound->CommandWav, Sound->CommandPlay, Sound->LabelTime})
        w->setVisible(false);
    TextInfo[Box::RePublisher]->setEnabled(true);
    Label1[9]->setEnabled(true);
}

void frmCompara::Loaded() {
    // The labels of the tape pane are greyed, the language's aside.
    for (int i = 0; i <= 9; ++i)
        if (Label1.count(i)) Label1[i]->setEnabled(false);
}

QString frmCompara::PendingQuestion() const {
    // Its own words, typo and all.
    return QStringLiteral("¿Guardar cambios en le archivo TZX?");
}

namespace {

// Takes w out of whichever layout below l holds it.
bool TakeOut(QLayout* l, QWidget* w) {
    for (int i = 0; i < l->count(); ++i) {
        QLayoutItem* item = l->itemAt(i);
        if (item->widget() == w) {
            delete l->takeAt(i);
            return true;
        }
        if (item->layout() && TakeOut(item->layout(), w)) return true;
    }
    return false;
}

} // namespace

void frmCompara::BuildPair() {
    // The two lists side by side under one row of headings, so that a row of
    // A stands level with its row of B whatever the scroll: they are as tall
    // as each other, neither has a scroll bar of its own, and one bar beside
    // them moves both.
    auto* pair = new QGridLayout;
    pair->setHorizontalSpacing(4);
    LabelCintaA = new QLabel(this);
    LabelCintaA->setObjectName("LabelCintaA");
    pair->addWidget(LabelCintaA, 0, 0);
    auto* chooser = new QHBoxLayout;
    LabelCompara = new QLabel(QStringLiteral("B: comparar con"), this);
    ComboCompara = new QComboBox(this);
    ComboCompara->setObjectName("ComboCompara");
    ComboCompara->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    ComboCompara->setMinimumContentsLength(12);
    chooser->addWidget(LabelCompara);
    chooser->addWidget(ComboCompara, 1);
    pair->addLayout(chooser, 0, 1, 1, 2);

    if (QLayout* l = layout()) TakeOut(l, GridTZX);
    GridTZX2 = new Grid(this);
    GridTZX2->setObjectName("GridTZX2");
    GridTZX2->setFont(GridTZX->font());
    GridTZX2->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ScrollBoth = new QScrollBar(Qt::Vertical, this);
    ScrollBoth->setObjectName("ScrollBoth");
    for (Grid* g : {GridTZX, GridTZX2}) {
        g->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        g->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        g->setMinimumHeight(120);
        // The wheel and the keys still move a list's own hidden bar: the
        // other list and the visible bar follow it.
        QScrollBar* own = g->verticalScrollBar();
        connect(own, &QScrollBar::valueChanged, ScrollBoth, &QScrollBar::setValue);
        connect(ScrollBoth, &QScrollBar::valueChanged, own, &QScrollBar::setValue);
    }
    QScrollBar* bar = GridTZX->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, ScrollBoth, [this, bar](int min, int max) {
        ScrollBoth->setRange(min, std::max(max, GridTZX2->verticalScrollBar()->maximum()));
        ScrollBoth->setPageStep(bar->pageStep());
        ScrollBoth->setSingleStep(bar->singleStep());
    });
    pair->addWidget(GridTZX, 1, 0);
    pair->addWidget(GridTZX2, 1, 1);
    pair->addWidget(ScrollBoth, 1, 2);
    pair->setColumnStretch(0, 1);
    pair->setColumnStretch(1, 1);
    pair->setRowStretch(1, 1);

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
    pair->addLayout(legend, 2, 0, 1, 3);
    LabelAviso = new QLabel(this);
    LabelAviso->setObjectName("LabelAviso");
    LabelAviso->setWordWrap(true);
    LabelAviso->setStyleSheet(QStringLiteral("color: #b00000; font-weight: bold"));
    LabelAviso->setVisible(false);
    pair->addWidget(LabelAviso, 3, 0, 1, 3);

    leftColumn->insertLayout(leftColumn->indexOf(TextPath) + 1, pair);
    // The lists take the height that the file list leaves; what stood for
    // the inspector's blocks and preview, hidden here, takes none.
    for (int i = 0; i < leftColumn->count(); ++i) {
        QLayoutItem* item = leftColumn->itemAt(i);
        leftColumn->setStretch(i, item->layout() == pair ? 5 : item->widget() == GridFiles ? 2 : 0);
    }
}

void frmCompara::WrapInScrollArea() {
    // The panes move into a scroll area, so that on a small screen the
    // window fits it and scrolls instead of running off its edge.
    QLayout* top = layout();
    auto* content = new QWidget;
    content->setObjectName("PanesContent");
    auto* inner = new QHBoxLayout(content);
    inner->setContentsMargins(top->contentsMargins());
    // Two block lists want the room more than the tape pane does.
    const int stretches[] = {7, 3};
    int n = 0;
    while (QLayoutItem* item = top->takeAt(0)) {
        if (QLayout* l = item->layout())
            inner->addLayout(l, n < 2 ? stretches[n] : 0);
        else if (QWidget* w = item->widget())
            inner->addWidget(w);
        else
            delete item;
        ++n;
    }
    top->setContentsMargins(0, 0, 0, 0);
    Panes = new QScrollArea(this);
    Panes->setObjectName("Panes");
    Panes->setFrameShape(QFrame::NoFrame);
    Panes->setWidgetResizable(true);
    Panes->setWidget(content);
    top->addWidget(Panes);
    // As big as a 1280x800 screen allows with the window's frame and the
    // desktop's panel, and never bigger than the screen it opens on.
    QSize size(1240, 720);
    if (const QScreen* s = screen())
        size = size.boundedTo(s->availableGeometry().size() - QSize(24, 64));
    resize(size);
}

int frmCompara::FirstFileRow() const {
    for (int row = 1; row <= GridFiles->Rows(); ++row)
        if (Grids::FileAt(*GridFiles, row).Extension.toLower() == QLatin1String("tzx")) return row;
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
    for (int row = 1; row <= GridFiles->Rows(); ++row) {
        const FileRef file = Grids::FileAt(*GridFiles, row);
        if (file.Extension.toLower() != QLatin1String("tzx")) continue;
        const QString path = file.Dir.isEmpty() ? file.FileName : file.Location();
        // Two tapes of one name in different folders: the folder tells them apart.
        ComboCompara->addItem(file.FileName + " (" + QFileInfo(file.Dir).fileName() + ")", path);
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

void frmCompara::ReadOther(const QString& path) {
    std::string why;
    if (!platform::ReadTapeAt(path.toStdString(), other, why))
        Ask(QString::fromStdString(why), Comunes::kAppTitle, Icon::Exclamation);
}

void frmCompara::CompareWith(const QString& path) {
    otherPath = path;
    ReadOther(path);
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
            ReadOther(otherPath);
        }
    }
    LabelCintaA->setText("A: " + QFileInfo(logic.Path()).fileName());
    if (otherPath.isEmpty()) {
        Info::FillGrid();
        GridTZX2->Clear(false);
        LabelSummary->clear();
        LabelArchive->clear();
        LabelAviso->clear();
        LabelAviso->setVisible(false);
        FitPositions();
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
    FitPositions();
    LabelSummary->setText(QString::fromStdString(CompareSummary(result)));
    LabelArchive->setText(QString::fromStdString(ArchiveInfoSummary(result)));
    // Blocks lost to a read that stopped would count as blocks of the other
    // tape alone: say so, and where.
    QStringList lost;
    const std::pair<const char*, const TZXTape*> sides[] = {{"A", &logic.Tape()}, {"B", &other}};
    for (const auto& [side, tape] : sides)
        if (!tape->Status().Whole()) lost << NotReadWhole(side, *tape);
    LabelAviso->setText(lost.join('\n'));
    LabelAviso->setVisible(!lost.isEmpty());
}

void frmCompara::FitPositions() {
    // Every column shows whole: the positions as wide as the longest of
    // either list, the description in what they leave.
    const int colStart = GridTZX->ColumnIndex("ColInicio");
    const int colEnd = GridTZX->ColumnIndex("ColFin");
    const int colDescr = GridTZX->ColumnIndex("ColDescr");
    if (colStart < 1 || colEnd < 1 || colDescr < 1) return;
    QString longest;
    for (Grid* g : {GridTZX, GridTZX2})
        for (int r = 1; r <= g->Rows(); ++r)
            for (int c : {colStart, colEnd})
                if (g->CellText(r, c).size() > longest.size()) longest = g->CellText(r, c);
    for (Grid* g : {GridTZX, GridTZX2}) {
        const int wanted = g->fontMetrics().horizontalAdvance(longest) + 16;
        QHeaderView* header = g->horizontalHeader();
        header->setStretchLastSection(false);
        header->setMinimumSectionSize(40);
        int fixed = 0;
        for (int c = 1; c <= g->Columns(); ++c) {
            if (c == colDescr) continue;
            if (c == colStart || c == colEnd)
                g->setColumnWidth(c - 1, std::max(g->columnWidth(c - 1), wanted));
            if (!g->isColumnHidden(c - 1)) fixed += g->columnWidth(c - 1);
        }
        header->setSectionResizeMode(colDescr - 1, QHeaderView::Stretch);
        g->setMinimumWidth(fixed + 60 + 2 * g->frameWidth());
    }
}

void frmCompara::Command8_Click() {
    logic.RemoveRedundantBlocks();
    FillGrid();
}

} // namespace cintal
