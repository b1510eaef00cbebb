#include "inspector/Info.h"

#include "inspector/TapeSound.h"
#include "inspector/TitlePane.h"

#include "widgets/ComboAutoComplete.h"
#include "widgets/KeyFilter.h"
#include "widgets/Pictures.h"

#include <QFileDialog>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace cintal {

namespace {

// The boxes the arrows copy between the panes, in the catalogue pane's order.
constexpr std::array<Box, 4> kCopied = {Box::Title, Box::Publisher, Box::Year, Box::Type};

bool MultiLine(Box box) {
    return box == Box::Publisher || box == Box::Author || box == Box::RePublisher ||
           box == Box::Comments;
}

// An editable combo takes what is typed without adding it to its list.
QComboBox* NewCombo(const char* name, bool editable) {
    auto* combo = new QComboBox;
    combo->setObjectName(name);
    if (editable) {
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
    }
    return combo;
}

QToolButton* PictureButton(const QIcon& icon, const char* name, QWidget* parent) {
    auto* b = new QToolButton(parent);
    b->setIcon(icon);
    b->setObjectName(name);
    b->setAutoRaise(false);
    return b;
}

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

Info::Info(Grid* titles, Grid* files, QWidget* parent)
    : ModalWindow(parent), mainTitles(titles), mainFiles(files) {
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
    ComboPub = NewCombo("ComboPub", true);
    ListYear = NewCombo("ListYear", false);
    ComboTipo = NewCombo("ComboTipo", true);
    ComboEstado = NewCombo("ComboEstado", false);
    QWidget* const dbRows[] = {TextName, ComboPub, ListYear, ComboTipo};
    for (int i = 0; i < 4; ++i) {
        const Box box = kCopied[i];
        LabelInfo[i] = new QLabel(Inspector::BoxLabel(box));
        g1->addWidget(LabelInfo[i], i, 0);
        g1->addWidget(dbRows[i], i, 1);
        CommandaDB[box] =
            PictureButton(Pictures::ToolPicture(Pictures::Tool::CopyToCatalogue),
                          QStringLiteral("CommandaDB%1").arg(int(box)).toUtf8(), Frame1);
        CommandaDB[box]->setToolTip(QStringLiteral("Copiar desde la cinta"));
        g1->addWidget(CommandaDB[box], i, 2);
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
    CmdTZXSave = new QPushButton(Pictures::ToolPicture(Pictures::Tool::SaveTape),
                                 QStringLiteral("Guardar Info"), this);
    CmdTZXSave->setObjectName("CmdTZXSave");
    CmdDBSave = new QPushButton(QStringLiteral("Command11"), this);
    CmdDBSave->setObjectName("CmdDBSave");
    CmdDBSave->setVisible(false);
    Command3 = new QPushButton(Pictures::ToolPicture(Pictures::Tool::DeleteBlock),
                               QStringLiteral("Borra"), this);
    Command3->setObjectName("Command3");
    CommandSube =
        PictureButton(Pictures::ToolPicture(Pictures::Tool::BlockUp), "CommandSube", this);
    CommandSube->setToolTip(QStringLiteral("Subir el bloque"));
    CommandBaja =
        PictureButton(Pictures::ToolPicture(Pictures::Tool::BlockDown), "CommandBaja", this);
    CommandBaja->setToolTip(QStringLiteral("Bajar el bloque"));
    CommandExtraer = new QPushButton(QStringLiteral("Extraer"), this);
    CommandExtraer->setObjectName("CommandExtraer");
    CommandExtraer->setEnabled(false);
    CommandExtraer->setToolTip(QStringLiteral("Guardar el contenido del bloque en un archivo"));
    Sound = new TapeSound(this, logic, *GridTZX, [this] { return SelectedBlock(); });
    for (QWidget* w : std::initializer_list<QWidget*>{CmdTZXSave, Command3, CommandSube,
                                                      CommandBaja, CommandExtraer})
        buttons->addWidget(w);
    buttons->addStretch(1);
    for (QWidget* w :
         std::initializer_list<QWidget*>{Sound->LabelTime, Sound->CommandPlay, Sound->CommandWav})
        buttons->addWidget(w);
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
    // The boxes in the window's order, each with the index of its label.
    const std::pair<Box, int> rows[] = {
        {Box::Title, 1},     {Box::Publisher, 2}, {Box::RePublisher, 9}, {Box::Year, 0},
        {Box::Language, 12}, {Box::Type, 3},      {Box::Price, 4},       {Box::Protection, 5},
        {Box::Origin, 6},    {Box::Author, 7},    {Box::Comments, 8}};
    QFont mono(QStringLiteral("Monospac821 BT"));
    mono.setStyleHint(QFont::TypeWriter);
    mono.setFixedPitch(true);
    mono.setPointSizeF(8.25);
    ComboLang = NewCombo("ComboLang", true);
    ComboLang->addItems(kLanguages);
    ComboOrigin = NewCombo("ComboOrigin", true);
    ComboOrigin->addItems(kOrigins);
    int line = 0;
    for (const auto& [b, label] : rows) {
        QWidget* box;
        if (MultiLine(b)) {
            auto* edit = new QPlainTextEdit;
            edit->setTabChangesFocus(true);
            if (b == Box::Comments) {
                edit->setFont(mono);
                edit->setMinimumHeight(120);
            } else {
                edit->setMaximumHeight(b == Box::Author ? 56 : 44);
            }
            box = edit;
        } else {
            auto* edit = new QLineEdit;
            if (BoxLimit(b) > 0) edit->setMaxLength(BoxLimit(b));
            box = edit;
        }
        box->setObjectName(QStringLiteral("TextInfo%1").arg(int(b)));
        TextInfo[b] = box;
        Label1[label] = new QLabel(QString::fromUtf8(Inspector::BoxCaption(b)));
        Label1[label]->setObjectName(QStringLiteral("Label1_%1").arg(label));
        if (std::find(kCopied.begin(), kCopied.end(), b) != kCopied.end()) {
            CommandATZX[b] =
                PictureButton(Pictures::ToolPicture(Pictures::Tool::CopyToTape),
                              QStringLiteral("CommandATZX%1").arg(int(b)).toUtf8(), FrameInfo);
            CommandATZX[b]->setToolTip(QStringLiteral("Copiar desde la base de datos"));
            g2->addWidget(CommandATZX[b], line, 0, Qt::AlignTop);
        }
        g2->addWidget(Label1[label], line, 1, Qt::AlignTop);
        if (b == Box::Language) {
            box->setVisible(false);
            g2->addWidget(ComboLang, line, 2);
        } else if (b == Box::Origin) {
            box->setVisible(false);
            g2->addWidget(ComboOrigin, line, 2);
        } else {
            g2->addWidget(box, line, 2);
        }
        ++line;
    }
    // The republisher is shown, not edited.
    TextInfo[Box::RePublisher]->setEnabled(false);
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
    resize(1280, 800);
}

void Info::Wire() {
    for (auto& [box, widget] : TextInfo) {
        const Box b = box;
        new KeyFilter(
            widget, [this, b](int key) { return TextInfo_KeyPress(b, key); },
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
    Sound->ChooseSaveFile = [this](const QString& proposed) {
        return QFileDialog::getSaveFileName(this, QStringLiteral("Exportar WAV"), proposed,
                                            QStringLiteral("Sonido WAV (*.wav)"), nullptr,
                                            QFileDialog::DontConfirmOverwrite);
    };
    connect(Command3, &QPushButton::clicked, this, &Info::Command3_Click);
    connect(CommandSube, &QToolButton::clicked, this, &Info::CommandSube_Click);
    connect(CommandBaja, &QToolButton::clicked, this, &Info::CommandBaja_Click);
    const std::pair<QPushButton*, Attachment> adds[] = {{Command2, Attachment::Picture},
                                                        {Command5, Attachment::ZxEdit},
                                                        {Command6, Attachment::Screen},
                                                        {Command7, Attachment::Instructions}};
    for (const auto& [button, type] : adds) {
        const Attachment t = type;
        connect(button, &QPushButton::clicked, this, [this, t] { AddBlock_Click(t); });
    }
    for (auto& [box, button] : CommandaDB) {
        const Box b = box;
        connect(button, &QToolButton::clicked, this, [this, b] { CommandaDB_Click(b); });
    }
    for (auto& [box, button] : CommandATZX) {
        const Box b = box;
        connect(button, &QToolButton::clicked, this, [this, b] { CommandATZX_Click(b); });
    }
}

} // namespace cintal
