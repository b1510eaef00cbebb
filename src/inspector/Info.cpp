#include "inspector/Info.h"

#include "inspector/TitlePane.h"

#include "catalogue/Comunes.h"
#include "catalogue/Files.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "platform/KeyFilter.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "views/ComboAutoComplete.h"
#include "views/Grids.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QVBoxLayout>

namespace cintal {

namespace {

// The lengths of the boxes of the tape pane; 0 means no limit.
int BoxLimit(int box) {
    switch (box) {
    case 3:
        return 4;
    case 2:
    case 4:
        return 0;
    default:
        return 255;
    }
}

bool MultiLine(int box) {
    return box == 1 || box == 2 || box == 9 || box == 255;
}

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

// The pictures of the small buttons, drawn here.
enum class Arrow { Left, Right, Up, Down };
QIcon ArrowPicture(Arrow arrow) {
    QPixmap pm(16, 16);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(0x1B, 0x5E, 0x20), 1));
    p.setBrush(QColor(0x43, 0xA0, 0x47));
    QPolygonF shape;
    switch (arrow) {
    case Arrow::Left: // towards the catalogue pane
        shape << QPointF(2, 8) << QPointF(8, 2.5) << QPointF(8, 5.5) << QPointF(14, 5.5)
              << QPointF(14, 10.5) << QPointF(8, 10.5) << QPointF(8, 13.5);
        break;
    case Arrow::Right: // towards the tape pane
        shape << QPointF(14, 8) << QPointF(8, 2.5) << QPointF(8, 5.5) << QPointF(2, 5.5)
              << QPointF(2, 10.5) << QPointF(8, 10.5) << QPointF(8, 13.5);
        break;
    case Arrow::Up:
        p.setBrush(QColor(0x1E, 0x88, 0xE5));
        p.setPen(QPen(QColor(0x0D, 0x47, 0xA1), 1));
        shape << QPointF(8, 3) << QPointF(14, 13) << QPointF(2, 13);
        break;
    case Arrow::Down:
        p.setBrush(QColor(0x1E, 0x88, 0xE5));
        p.setPen(QPen(QColor(0x0D, 0x47, 0xA1), 1));
        shape << QPointF(2, 3) << QPointF(14, 3) << QPointF(8, 13);
        break;
    }
    p.drawPolygon(shape);
    return QIcon(pm);
}

QIcon SavePicture() {
    QPixmap pm(16, 16);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    // A cassette with a down arrow: the tape is written.
    p.setPen(QPen(QColor(0x37, 0x47, 0x4F), 1));
    p.setBrush(QColor(0x54, 0x6E, 0x7A));
    p.drawRoundedRect(QRectF(1.5, 4.5, 13, 9), 1.5, 1.5);
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(5, 9), 1.6, 1.6);
    p.drawEllipse(QPointF(11, 9), 1.6, 1.6);
    p.setPen(QPen(QColor(0xE5, 0x39, 0x35), 2, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(8, 0.5), QPointF(8, 4));
    return QIcon(pm);
}

QIcon DeletePicture() {
    QPixmap pm(16, 16);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(0xC6, 0x28, 0x28), 2.4, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(4, 4), QPointF(12, 12));
    p.drawLine(QPointF(12, 4), QPointF(4, 12));
    return QIcon(pm);
}

QToolButton* PictureButton(const QIcon& icon, const char* name, QWidget* parent) {
    auto* b = new QToolButton(parent);
    b->setIcon(icon);
    b->setObjectName(name);
    b->setAutoRaise(false);
    return b;
}

const QStringList kEstados = {"Desconocido",  "No existe TZX",
                              "Desaparecido", "Distribución prohibida",
                              "TZX perfecto", "Basic"};
const QStringList kLanguages = {"English",    "Spanish",   "Slovakian", "German",    "French",
                                "Czech",      "Italian",   "Dutch",     "Croatian",  "Hungarian",
                                "Greek",      "Danish",    "Serbian",   "Slovenian", "Swedish",
                                "Portugeuse", "Norwegian", "Russian",   "Finnish",   "Yugoslavian",
                                "Polish",     "Bosnian"};
const QStringList kOrigins = {
    "Original Release",   "Re-Release", "Compilation",         "Hacked Version",
    "Buggered / Corrupt", "Incomplete", "Magazine Cover Tape", "Type-In",
    "Demo version"};

} // namespace

Info::Info(Grid* titles, Grid* files, QWidget* parent) : Info(titles, files, parent, false) {}

Info::Info(Grid* titles, Grid* files, QWidget* parent, bool compareTwin)
    : ModalWindow(parent), mainTitles(titles), mainFiles(files), compareTwin(compareTwin) {
    setObjectName("Info");
    setModal(true);
    BuildLayout();
    Wire();
    ChooseFile = [this](const QString& caption, const QString& filter) {
        return QFileDialog::getOpenFileName(this, caption, QString(), filter);
    };
}

Info::~Info() = default;

void Info::BuildLayout() {
    auto* top = new QHBoxLayout(this);
    auto* left = leftColumn = new QVBoxLayout;
    auto* right = new QVBoxLayout;
    // The block list with its preview wants the room more than the tape pane.
    top->addLayout(left, 3);
    top->addLayout(right, 2);

    // The catalogue pane: arrows on its right edge point at it.
    Frame1 = new QGroupBox(QStringLiteral("Información (base de datos)"), this);
    Frame1->setObjectName("Frame1");
    auto* g1 = new QGridLayout(Frame1);
    TextName = new QLineEdit;
    TextName->setObjectName("TextName");
    TextName->setMaxLength(50);
    ComboPub = new QComboBox;
    ComboPub->setObjectName("ComboPub");
    ComboPub->setEditable(true);
    ComboPub->setInsertPolicy(QComboBox::NoInsert);
    ListYear = new QComboBox;
    ListYear->setObjectName("ListYear");
    ComboTipo = new QComboBox;
    ComboTipo->setObjectName("ComboTipo");
    ComboTipo->setEditable(true);
    ComboTipo->setInsertPolicy(QComboBox::NoInsert);
    ComboEstado = new QComboBox;
    ComboEstado->setObjectName("ComboEstado");
    const std::pair<int, QWidget*> dbRows[] = {
        {0, TextName}, {1, ComboPub}, {2, ListYear}, {3, ComboTipo}};
    const char* dbLabels[] = {"Título", "Compañía", "Año", "Tipo"};
    const int arrowOf[] = {0, 1, 3, 5};
    for (int i = 0; i < 4; ++i) {
        LabelInfo[i] = new QLabel(QString::fromUtf8(dbLabels[i]));
        g1->addWidget(LabelInfo[i], i, 0);
        g1->addWidget(dbRows[i].second, i, 1);
        const int index = arrowOf[i];
        CommandaDB[index] = PictureButton(
            ArrowPicture(Arrow::Left), QStringLiteral("CommandaDB%1").arg(index).toUtf8(), Frame1);
        CommandaDB[index]->setToolTip(QStringLiteral("Copiar desde la cinta"));
        g1->addWidget(CommandaDB[index], i, 2);
    }
    Label2 = new QLabel(QStringLiteral("Fuente"));
    g1->addWidget(Label2, 4, 0);
    g1->addWidget(ComboEstado, 4, 1);
    g1->setColumnStretch(1, 1);
    left->addWidget(Frame1);

    GridFiles = new Grid(this);
    GridFiles->setObjectName("GridFiles");
    GridFiles->setMinimumHeight(90);
    left->addWidget(GridFiles, 2);
    TextPath = new QLineEdit(QStringLiteral("-No hay selección-"));
    TextPath->setObjectName("TextPath");
    TextPath->setMaxLength(255);
    TextPath->setReadOnly(true);
    left->addWidget(TextPath);
    GridTZX = new Grid(this);
    GridTZX->setObjectName("GridTZX");
    QFont narrow = GridTZX->font();
    narrow.setFamilies({"Arial Narrow", "Liberation Sans Narrow", "DejaVu Sans Condensed"});
    GridTZX->setFont(narrow);
    blocksRow = new QHBoxLayout;
    SplitBlocks = new QSplitter(Qt::Horizontal, this);
    SplitBlocks->setObjectName("SplitBlocks");
    SplitBlocks->setChildrenCollapsible(false);
    SplitBlocks->addWidget(GridTZX);
    blocksRow->addWidget(SplitBlocks, 3);
    FramePreview = new QGroupBox(QStringLiteral("Contenido del bloque"), this);
    FramePreview->setObjectName("FramePreview");
    auto* pv = new QVBoxLayout(FramePreview);
    LabelContenido = new QLabel(FramePreview);
    LabelContenido->setObjectName("LabelContenido");
    LabelContenido->setWordWrap(true);
    PreviewStack = new QStackedWidget(FramePreview);
    PreviewStack->addWidget(new QWidget);
    ScrPreview = new ScrImage;
    ScrPreview->setObjectName("ScrPreview");
    PreviewStack->addWidget(ScrPreview);
    PicturePreview = new QLabel;
    PicturePreview->setObjectName("PicturePreview");
    PicturePreview->setAlignment(Qt::AlignCenter);
    PreviewStack->addWidget(PicturePreview);
    TextPreview = new QPlainTextEdit;
    TextPreview->setObjectName("TextPreview");
    TextPreview->setReadOnly(true);
    TextPreview->setLineWrapMode(QPlainTextEdit::NoWrap);
    TextPreview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    PreviewStack->addWidget(TextPreview);
    pv->addWidget(LabelContenido);
    pv->addWidget(PreviewStack, 1);
    FramePreview->setMinimumWidth(200);
    SplitBlocks->addWidget(FramePreview);
    // A wider window widens the preview; the list keeps what its columns need.
    SplitBlocks->setStretchFactor(0, 0);
    SplitBlocks->setStretchFactor(1, 1);
    left->addLayout(blocksRow, 5);

    auto* buttons = new QHBoxLayout;
    CmdTZXSave = new QPushButton(SavePicture(), QStringLiteral("Guardar Info"), this);
    CmdTZXSave->setObjectName("CmdTZXSave");
    CmdDBSave = new QPushButton(QStringLiteral("Command11"), this);
    CmdDBSave->setObjectName("CmdDBSave");
    CmdDBSave->setVisible(false);
    Command3 = new QPushButton(DeletePicture(), QStringLiteral("Borra"), this);
    Command3->setObjectName("Command3");
    CommandSube = PictureButton(ArrowPicture(Arrow::Up), "CommandSube", this);
    CommandSube->setToolTip(QStringLiteral("Subir el bloque"));
    CommandBaja = PictureButton(ArrowPicture(Arrow::Down), "CommandBaja", this);
    CommandBaja->setToolTip(QStringLiteral("Bajar el bloque"));
    CommandExtraer = new QPushButton(QStringLiteral("Extraer"), this);
    CommandExtraer->setObjectName("CommandExtraer");
    CommandExtraer->setEnabled(false);
    CommandExtraer->setToolTip(QStringLiteral("Guardar el contenido del bloque en un archivo"));
    for (QWidget* w : std::initializer_list<QWidget*>{CmdTZXSave, Command3, CommandSube,
                                                      CommandBaja, CommandExtraer})
        buttons->addWidget(w);
    buttons->addStretch(1);
    left->addLayout(buttons);
    auto* adds = new QHBoxLayout;
    Command2 = new QPushButton(QStringLiteral("addBMP"), this);
    Command5 = new QPushButton(QStringLiteral("addZED"), this);
    Command6 = new QPushButton(QStringLiteral("addSCR"), this);
    Command7 = new QPushButton(QStringLiteral("addInstr"), this);
    Command2->setObjectName("Command2");
    Command5->setObjectName("Command5");
    Command6->setObjectName("Command6");
    Command7->setObjectName("Command7");
    Command2->setToolTip(QStringLiteral("Añadir una imagen antes del bloque elegido"));
    Command5->setToolTip(QStringLiteral("Añadir un documento ZX-Edit antes del bloque elegido"));
    Command6->setToolTip(QStringLiteral("Añadir una pantalla antes del bloque elegido"));
    Command7->setToolTip(QStringLiteral("Añadir instrucciones antes del bloque elegido"));
    Check1 = new QCheckBox(QStringLiteral("Oculta grupos"), this);
    Check2 = new QCheckBox(QStringLiteral("LimitASCII"), this);
    Check1->setObjectName("Check1");
    Check2->setObjectName("Check2");
    for (QWidget* w : std::initializer_list<QWidget*>{Command2, Command5, Command6, Command7})
        adds->addWidget(w);
    adds->addStretch(1);
    adds->addWidget(Check1);
    adds->addWidget(Check2);
    left->addLayout(adds);
    // Enter in a box types a line or nothing: no button of this window is
    // pressed by it, least of all "Guardar Info".
    for (QPushButton* b : findChildren<QPushButton*>()) {
        b->setAutoDefault(false);
        b->setDefault(false);
    }

    // The tape pane: arrows on its left edge point at it.
    FrameInfo = new QGroupBox(QStringLiteral("Información (TZX)"), this);
    FrameInfo->setObjectName("FrameInfo0");
    auto* g2 = new QGridLayout(FrameInfo);
    struct Row {
        int box;
        int label;
        const char* caption;
    };
    const Row rows[] = {{0, 1, "Título"}, {1, 2, "Compañía"},      {9, 9, "Reeditado por"},
                        {3, 0, "Año"},    {4, 12, "Idioma"},       {5, 3, "Tipo"},
                        {6, 4, "Precio"}, {7, 5, "Protección"},    {8, 6, "Origin"},
                        {2, 7, "Autor"},  {255, 8, "Comentarios:"}};
    QFont mono(QStringLiteral("Monospac821 BT"));
    mono.setStyleHint(QFont::TypeWriter);
    mono.setFixedPitch(true);
    mono.setPointSizeF(8.25);
    ComboLang = new QComboBox;
    ComboLang->setObjectName("ComboLang");
    ComboLang->setEditable(true);
    ComboLang->setInsertPolicy(QComboBox::NoInsert);
    ComboLang->addItems(kLanguages);
    ComboOrigin = new QComboBox;
    ComboOrigin->setObjectName("ComboOrigin");
    ComboOrigin->setEditable(true);
    ComboOrigin->setInsertPolicy(QComboBox::NoInsert);
    ComboOrigin->addItems(kOrigins);
    int line = 0;
    for (const Row& r : rows) {
        QWidget* box;
        if (MultiLine(r.box)) {
            auto* edit = new QPlainTextEdit;
            edit->setTabChangesFocus(true);
            if (r.box == 255) {
                edit->setFont(mono);
                edit->setMinimumHeight(120);
            } else {
                edit->setMaximumHeight(r.box == 2 ? 56 : 44);
            }
            box = edit;
        } else {
            auto* edit = new QLineEdit;
            if (BoxLimit(r.box) > 0) edit->setMaxLength(BoxLimit(r.box));
            box = edit;
        }
        box->setObjectName(QStringLiteral("TextInfo%1").arg(r.box));
        TextInfo[r.box] = box;
        Label1[r.label] = new QLabel(QString::fromUtf8(r.caption));
        Label1[r.label]->setObjectName(QStringLiteral("Label1_%1").arg(r.label));
        if (r.box == 0 || r.box == 1 || r.box == 3 || r.box == 5) {
            CommandATZX[r.box] =
                PictureButton(ArrowPicture(Arrow::Right),
                              QStringLiteral("CommandATZX%1").arg(r.box).toUtf8(), FrameInfo);
            CommandATZX[r.box]->setToolTip(QStringLiteral("Copiar desde la base de datos"));
            g2->addWidget(CommandATZX[r.box], line, 0, Qt::AlignTop);
        }
        g2->addWidget(Label1[r.label], line, 1, Qt::AlignTop);
        if (r.box == 4) {
            box->setVisible(false);
            g2->addWidget(ComboLang, line, 2);
        } else if (r.box == 8) {
            box->setVisible(false);
            g2->addWidget(ComboOrigin, line, 2);
        } else {
            g2->addWidget(box, line, 2);
        }
        ++line;
    }
    // The republisher is shown, not edited.
    TextInfo[9]->setEnabled(false);
    Label1[9]->setEnabled(false);
    g2->setColumnStretch(2, 1);
    g2->setRowStretch(line - 1, 1);
    right->addWidget(FrameInfo, 1);

    auto* opts = new QHBoxLayout;
    const char* optCaptions[] = {"Archive info", "Extra info", "Archive info"};
    for (int i = 0; i < 3; ++i) {
        OptDatos[i] = new QRadioButton(QString::fromUtf8(optCaptions[i]), this);
        OptDatos[i]->setObjectName(QStringLiteral("OptDatos%1").arg(i));
        opts->addWidget(OptDatos[i]);
    }
    OptDatos[2]->setChecked(true);
    opts->addStretch(1);
    right->addLayout(opts);
    Frame2 = new QGroupBox(QStringLiteral("Información Extra (Cintal)"), this);
    Frame2->setObjectName("Frame2");
    auto* g3 = new QGridLayout(Frame2);
    const char* extra[] = {"Bajo licencia", "Depósito Legal"};
    for (int i = 0; i < 2; ++i) {
        auto* edit = new QLineEdit;
        edit->setMaxLength(255);
        edit->setObjectName(QStringLiteral("TextInfo%1").arg(10 + i));
        Label1[10 + i] = new QLabel(QString::fromUtf8(extra[i]));
        g3->addWidget(Label1[10 + i], i, 0);
        g3->addWidget(edit, i, 1);
    }
    Frame2->setEnabled(false);
    right->addWidget(Frame2);
    if (compareTwin) {
        // What the compare window lacks of the inspector.
        for (QWidget* w : std::initializer_list<QWidget*>{
                 ComboEstado, Label2, CmdTZXSave, Command2, Command3, Command5, Command6,
                 CommandExtraer, CommandSube, CommandBaja, Frame2, OptDatos[0], OptDatos[1],
                 OptDatos[2], FramePreview})
            w->setVisible(false);
        TextInfo[9]->setEnabled(true);
        Label1[9]->setEnabled(true);
    }
    resize(1280, 800);
}

void Info::Wire() {
    for (auto& [box, widget] : TextInfo) {
        const int index = box;
        new KeyFilter(
            widget, [this, index](int key) { return TextInfo_KeyPress(index, key); },
            [this] { TextInfo_KeyUp(); });
    }
    new KeyFilter(ComboLang->lineEdit(),
                  [this](int key) { return ComboAutoComplete(ComboLang, key, false); });
    new KeyFilter(ComboOrigin->lineEdit(),
                  [this](int key) { return ComboAutoComplete(ComboOrigin, key, false); });
    new KeyFilter(ComboPub->lineEdit(),
                  [this](int key) { return ComboAutoComplete(ComboPub, key, false); });
    // Losing the focus to the combo's own list, or to a box shown meanwhile,
    // isn't leaving the combo.
    auto onLeave = [this](QComboBox* combo, std::function<void()> handler) {
        class Leave : public QObject {
        public:
            Leave(QObject* parent, std::function<void()> f) : QObject(parent), f(std::move(f)) {}
            bool eventFilter(QObject*, QEvent* e) override {
                if (e->type() == QEvent::FocusOut) {
                    const auto reason = static_cast<QFocusEvent*>(e)->reason();
                    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
                        f();
                }
                return false;
            }
            std::function<void()> f;
        };
        combo->installEventFilter(new Leave(combo, handler));
        if (combo->lineEdit()) combo->lineEdit()->installEventFilter(new Leave(combo, handler));
    };
    onLeave(ComboLang, [this] { ComboLang_LostFocus(); });
    onLeave(ComboOrigin, [this] { ComboOrigin_LostFocus(); });
    onLeave(ComboPub, [this] { ComboPub_LostFocus(); });

    connect(GridFiles, &Grid::SelectionChange, this, [this] {
        if (GridFiles->SelectedRow() > 0) GridFiles_SelectionChange();
    });
    connect(CmdTZXSave, &QPushButton::clicked, this, [this] {
        // A combo left for the button has had its say by now: the click
        // takes the focus first.
        CmdTZXSave_Click();
    });
    connect(CmdDBSave, &QPushButton::clicked, this, &Info::CmdDBSave_Click);
    connect(GridTZX, &Grid::SelectionChange, this, &Info::GridTZX_SelectionChange);
    connect(CommandExtraer, &QPushButton::clicked, this, &Info::CommandExtraer_Click);
    ChooseSaveFile = [this](const QString& proposed) {
        // Replacing a file is asked here, through the program's own box.
        return QFileDialog::getSaveFileName(this, QStringLiteral("Extraer el bloque"), proposed,
                                            QString(), nullptr, QFileDialog::DontConfirmOverwrite);
    };
    connect(Command3, &QPushButton::clicked, this, &Info::Command3_Click);
    connect(CommandSube, &QToolButton::clicked, this, &Info::CommandSube_Click);
    connect(CommandBaja, &QToolButton::clicked, this, &Info::CommandBaja_Click);
    connect(Command2, &QPushButton::clicked, this, [this] { AddBlock_Click(1); });
    connect(Command5, &QPushButton::clicked, this, [this] { AddBlock_Click(5); });
    connect(Command6, &QPushButton::clicked, this, [this] { AddBlock_Click(2); });
    connect(Command7, &QPushButton::clicked, this, [this] { AddBlock_Click(3); });
    for (auto& [index, button] : CommandaDB) {
        const int i = index;
        connect(button, &QToolButton::clicked, this, [this, i] { CommandaDB_Click(i); });
    }
    for (auto& [index, button] : CommandATZX) {
        const int i = index;
        connect(button, &QToolButton::clicked, this, [this, i] { CommandATZX_Click(i); });
    }
}

void Info::SetTitleCell(const char* key, const QString& text, int icon) {
    TitlePane::SetSelectedCell(mainTitles, key, text, icon);
}

void Info::Form_Load() {
    AsciiOnly = true;
    TitlePane::FillPublishers(ComboPub);
    TitlePane::FillYears(ListYear);
    ComboEstado->clear();
    if (!compareTwin) ComboEstado->addItems(kEstados);

    SetupGridTZX(*GridTZX);
    // The list is never narrower than its columns; the preview takes the rest.
    if (!compareTwin)
        GridTZX->setMinimumWidth(GridTZX->ColumnsWidth() + 2 * GridTZX->frameWidth() +
                                 GridTZX->verticalScrollBar()->sizeHint().width());
    Grids::SetupGridFiles(*GridFiles);

    const TitleRef title = TitlePane::SelectedTitle(mainTitles);
    setProperty("Tag", title.TitleId);
    if (!compareTwin)
        ComboEstado->setCurrentIndex(title.Estado >= 0 && title.Estado <= 5 ? title.Estado : -1);
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
    // The compare window greys the labels of its tape pane, the language's aside.
    if (compareTwin)
        for (int i = 0; i <= 9; ++i)
            if (Label1.count(i)) Label1[i]->setEnabled(false);
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
    OpenFile(file.Dir.isEmpty() ? file.FileName : file.Path());
}

void Info::OpenFile(const QString& path) {
    TextPath->setText(path);
    logic.Open(path);
    FillGrid();
    setWindowTitle(logic.Caption());
    ShowArchiveInfo();
    logic.SetPending(false);
    UpdateSaveButton();
}

void Info::UpdateSaveButton() {
    const QString why = logic.SaveBlocker();
    CmdTZXSave->setEnabled(why.isEmpty());
    CmdTZXSave->setToolTip(why.isEmpty() ? QStringLiteral("Guardar la cinta") : why);
}

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

QString Info::BoxText(int index) const {
    QWidget* w = TextInfo.at(index);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(w)) return FromEditor(edit->toPlainText());
    return static_cast<QLineEdit*>(w)->text();
}

void Info::SetBoxText(int index, const QString& text) {
    QWidget* w = TextInfo.at(index);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(w))
        edit->setPlainText(ToEditor(text));
    else
        static_cast<QLineEdit*>(w)->setText(text);
}

Inspector::BoxTexts Info::Boxes() const {
    Inspector::BoxTexts boxes;
    for (int box : Inspector::kBoxes)
        boxes[box] = BoxText(box);
    return boxes;
}

void Info::ShowArchiveInfo() {
    const Inspector::BoxTexts boxes = logic.ShowArchiveInfo();
    for (int box : Inspector::kBoxes)
        SetBoxText(box, boxes.at(box));
    ComboLang->setCurrentIndex(-1);
    ComboLang->setEditText(BoxText(4));
    ComboOrigin->setCurrentIndex(-1);
    ComboOrigin->setEditText(BoxText(8));
}

int Info::TextInfo_KeyPress(int index, int key) {
    if (!Inspector::KeyAllowed(key, AsciiOnly)) {
        Inspector::TellAsciiOnly();
        return 0;
    }
    // A box of several lines stops taking characters at its limit, as the
    // one-line boxes do by themselves.
    const int limit = BoxLimit(index);
    // The length counts as the tape holds it, a line end being one byte.
    auto* edit = qobject_cast<QPlainTextEdit*>(TextInfo.at(index));
    if (limit > 0 && edit && ((key >= 32 && key != 127) || key == 13) &&
        !edit->textCursor().hasSelection() && Inspector::WrittenLength(BoxText(index)) >= limit)
        return 0;
    return key;
}

void Info::TextInfo_KeyUp() {
    logic.KeyUp(Boxes());
}

void Info::ComboLang_LostFocus() {
    SetBoxText(4, ComboLang->currentText());
    logic.SetField(4, BoxText(4));
}

void Info::ComboOrigin_LostFocus() {
    SetBoxText(8, ComboOrigin->currentText());
    logic.SetField(8, BoxText(8));
}

void Info::ComboPub_LostFocus() {
    ComboPubTag = TitlePane::PublisherLostFocus(ComboPub);
}

void Info::CmdDBSave_Click() {
    SaveTitle(true);
}

void Info::SaveTitle(bool withEstado) {
    ComboPub_LostFocus();
    const qint64 titleId = TitlePane::SelectedTitle(mainTitles).TitleId;
    if (!TextName->text().isEmpty()) {
        TitleFields fields;
        fields.name = TextName->text();
        fields.idPub = ComboPubTag.toLongLong();
        fields.year = ListYear->currentText();
        fields.estado = withEstado ? ComboEstado->currentIndex() : -1;
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
    logic.SetField(0, BoxText(0));
    return SaveTapeAndRow();
}

bool Info::SaveTapeAndRow() {
    // A file that can't be saved goes straight to the engine's refusal.
    if (logic.SaveBlocker().isEmpty() && !logic.AcceptLongTexts()) return false;
    // The open file's row: while the user moves to another file, the
    // selection already stands on that one.
    const int row = openRow;
    const qint64 fileId = Grids::FileAt(*GridFiles, row).FileId;
    const Inspector::TapeSaved saved = logic.SaveTape(fileId);
    if (!saved.attempted) return false;
    if (saved.written) {
        FillGrid();
        setWindowTitle(logic.Caption());
    }
    if (!saved.rowFound || row < 1) return saved.written;

    const IconSet* icons = Grids::FormatIcon;
    auto icon = [icons](const QString& key) { return icons ? icons->ItemIndex(key) : -1; };
    const QColor back = Grids::CellBack, fore = Grids::CellFore;
    auto coloured = [&](const char* key, const QString& text, int align, int image) {
        GridFiles->CellDetails(row, GridFiles->ColumnIndex(key), text, align, image,
                               back.isValid() ? std::optional<QColor>(back) : std::nullopt,
                               fore.isValid() ? std::optional<QColor>(fore) : std::nullopt);
    };
    coloured("ColLoadSchema", saved.loadSchema, Grid::AlignDefault, -1);
    const QString lang = saved.idLang.toUpper();
    if (icons && icons->KeyExists(lang))
        coloured("ColLanguage", lang, Grid::AlignCenter, icon(lang));
    else
        coloured("ColLanguage", saved.idLang, Grid::AlignCenter, icon(QStringLiteral("UNK")));
    const OriginMark origin = DecodeOrigin(saved.origin);
    coloured("ColOrigin", origin.text, Grid::AlignDefault, icon(origin.icon));
    GridFiles->CellDetails(row, GridFiles->ColumnIndex("ColSize"), Number(saved.fileSize) + "  ",
                           Grid::AlignRight);
    return saved.written;
}

void Info::CommandaDB_Click(int index) {
    switch (index) {
    case 0:
        TextName->setText(BoxText(0));
        break;
    case 1:
        ComboPub->setCurrentIndex(-1);
        ComboPub->setEditText(BoxText(1));
        break;
    case 3: {
        // The year list is closed: a year it doesn't hold can't be copied.
        const QString year = BoxText(3);
        const int at = ListYear->findText(year, Qt::MatchExactly);
        if (at >= 0)
            ListYear->setCurrentIndex(at);
        else
            Ask(("El año " + year + " no está en la lista").toStdString(),
                Comunes::kAppTitle.toStdString(), Icon::Information);
        break;
    }
    case 5:
        ComboTipo->setEditText(BoxText(5));
        break;
    default:
        break;
    }
}

void Info::CommandATZX_Click(int index) {
    switch (index) {
    case 0:
        SetBoxText(0, TextName->text());
        break;
    case 1:
        SetBoxText(1, ComboPub->currentText());
        break;
    case 3:
        SetBoxText(3, ListYear->currentText());
        break;
    case 5:
        SetBoxText(5, ComboTipo->currentText());
        break;
    default:
        return;
    }
    // A copied text is an edit of the tape like a typed one.
    const bool pending = logic.Pending();
    const std::string before = logic.WrittenText(index);
    logic.WriteBoxes(Boxes());
    logic.SetPending(pending || logic.WrittenText(index) != before);
}

void Info::Command3_Click() {
    if (logic.RemoveBlock(SelectedBlock())) FillGrid();
}

void Info::CommandSube_Click() {
    const int select = logic.MoveBlock(GridTZX->SelectedRow(), true, GridTZX->Rows());
    if (select < 1) return;
    FillGrid();
    GridTZX->setFocus();
    GridTZX->SetSelectedRow(select);
}

void Info::CommandBaja_Click() {
    const int select = logic.MoveBlock(GridTZX->SelectedRow(), false, GridTZX->Rows());
    if (select < 1) return;
    FillGrid();
    GridTZX->setFocus();
    GridTZX->SetSelectedRow(select);
}

void Info::AddBlock_Click(int attType) {
    QString caption, filter;
    switch (attType) {
    case 1:
        caption = QStringLiteral("Añadir una imagen");
        filter = QStringLiteral("Imagen (*.jpg *.jpeg *.gif)");
        break;
    case 5:
        caption = QStringLiteral("Añadir un documento ZX-Edit");
        filter = QStringLiteral("Documento ZX-Edit (*.zed)");
        break;
    case 2:
        caption = QStringLiteral("Añadir una pantalla");
        filter = QStringLiteral("Pantalla (*.scr)");
        break;
    default:
        caption = QStringLiteral("Añadir instrucciones");
        filter = QStringLiteral("Texto (*.txt)");
        break;
    }
    const QString file = ChooseFile ? ChooseFile(caption, filter) : QString();
    if (file.isEmpty()) return;
    const QString why = logic.AddBlock(attType, file, SelectedBlock());
    if (!why.isEmpty()) {
        Ask(why.toStdString(), Comunes::kAppTitle.toStdString(), Icon::Exclamation);
        return;
    }
    FillGrid();
}

bool Info::SettlePending() {
    if (!logic.Pending()) return true;
    // The compare window asks in its own words, typo and all.
    const char* question =
        compareTwin ? "¿Guardar cambios en le archivo TZX?" : "¿Guardar cambios en el archivo TZX?";
    const Button answer =
        Ask(question, "Hay modificaciones pendientes", Icon::None, Buttons::YesNoCancel);
    if (answer == Button::Cancel) return false;
    if (answer == Button::No) return true;
    // The compare window has no name box to copy first. A save stopped or
    // declined on the way keeps the edits, and the user with them.
    return compareTwin ? SaveTapeAndRow() : CmdTZXSave_Click();
}

bool Info::Form_Unload() {
    if (!SettlePending()) return false;
    if (mainFiles) Grids::FillFiles(property("Tag").toLongLong(), *mainFiles);
    // The compare window never writes the title's source.
    SaveTitle(!compareTwin);
    return true;
}

} // namespace cintal
