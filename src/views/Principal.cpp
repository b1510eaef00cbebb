#include "views/Principal.h"

#include "catalogue/Comunes.h"
#include "catalogue/Files.h"
#include "catalogue/Settings.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "maintenance/Emulators.h"
#include "platform/Places.h"
#include "platform/Shell.h"
#include "platform/TapeAt.h"
#include "tape/Content.h"
#include "tape/Prompt.h"
#include "views/frmSplash.h"
#include "widgets/Pictures.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QImageReader>
#include <QListView>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QStringListModel>
#include <QVBoxLayout>

namespace cintal {

namespace {

// Sizes of the original layout are in twips: 15 to a logical pixel.
constexpr int Twips(int t) {
    return t / 15;
}

bool OpenCatalogue(const QString& path) {
    QString reason;
    if (!QFileInfo::exists(path)) {
        const Button answer =
            Ask(("No se encuentra el catálogo " + path + ". ¿Desea crear un catálogo vacío?")
                    .toStdString(),
                {}, Icon::Question, Buttons::YesNo);
        if (answer != Button::Yes) return false;
        if (!Store::CreateEmpty(path, &reason)) {
            Ask(("No se puede abrir el catálogo " + path + ": " + reason).toStdString(), {},
                Icon::Critical);
            return false;
        }
    }
    if (!Comunes::InitGlobals(path, &reason)) {
        Ask(("No se puede abrir el catálogo " + path + ": " + reason).toStdString(), {},
            Icon::Critical);
        return false;
    }
    return true;
}

} // namespace

Principal::Principal(QWidget* parent) : QMainWindow(parent) {
    setObjectName("Principal");
    setWindowIcon(Pictures::AppIcon());
    ImageListFrom = Pictures::ImageListFrom();
    FormatIcon = Pictures::FormatIcon();
    BuildLayout();
    BuildCommands();
    Grids::HaveItBox = ChckHaveIt;
    Grids::UnknownBox = ChckSinIdentificar;
    Grids::FormatIcon = &FormatIcon;
    connect(ChckHaveIt, &QCheckBox::toggled, this, [this] { ChckHaveIt_Click(); });
    connect(ChckSinIdentificar, &QCheckBox::toggled, this,
            [this] { Grids::FilterTitles(*GridTitles); });
    connect(GridTitles, &Grid::HeaderClicked, this, &Principal::GridTitles_HeaderClick);
    connect(GridTitles, &Grid::SelectionChange, this, &Principal::GridTitles_SelectionChange);
    // After the file list has followed the selection.
    connect(GridTitles, &Grid::SelectionChange, this, [this] {
        mnuCambiaTitle->setEnabled(GridTitles->SelectedRow() > 0 && GridFiles->Rows() > 0);
    });
    connect(GridFiles, &Grid::RowDoubleClicked, this, [this] { GridFiles_DblClick(); });
    connect(ImgCaratula, &PictureBox::DoubleClicked, this, &Principal::ImgCaratula_DblClick);
    for (int i = 0; i < 4; ++i)
        connect(OptDatos[i], &QRadioButton::clicked, this, [this, i] { OptDatos_Click(i); });
}

Principal::~Principal() {
    if (Grids::HaveItBox == ChckHaveIt) Grids::HaveItBox = nullptr;
    if (Grids::UnknownBox == ChckSinIdentificar) Grids::UnknownBox = nullptr;
    if (Grids::FormatIcon == &FormatIcon) Grids::FormatIcon = nullptr;
}

TitleWindow Principal::Parts() {
    return TitleWindow{this, GridTitles, GridFiles, ComboRegistro, &ImageListFrom};
}

void Principal::BuildLayout() {
    resize(1180, 720);

    Toolbar = addToolBar(QStringLiteral("Herramientas"));
    Toolbar->setObjectName("Toolbar");
    Toolbar->setMovable(false);
    Toolbar->setIconSize(QSize(24, 24));

    // Left: the titles.
    ComboRegistro = new QComboBox;
    ComboRegistro->setObjectName("ComboRegistro");
    ComboRegistro->setEditable(true);
    ComboRegistro->setInsertPolicy(QComboBox::NoInsert);
    ComboRegistro->setMaxVisibleItems(20);
    // Every title is an item: a plain list of names, measured by no item
    // when shown, and a list that lays out rows of one height.
    ComboRegistro->setModel(new QStringListModel(ComboRegistro));
    ComboRegistro->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    ComboRegistro->setMinimumContentsLength(20);
    if (auto* list = qobject_cast<QListView*>(ComboRegistro->view()))
        list->setUniformItemSizes(true);
    GridTitles = new Grid;
    GridTitles->setObjectName("GridTitles");
    ChckHaveIt = new QCheckBox(QStringLiteral("Mostrar sólo disponibles"));
    ChckHaveIt->setObjectName("ChckHaveIt");
    ChckSinIdentificar = new QCheckBox(QStringLiteral("Sólo con archivos sin identificar"));
    ChckSinIdentificar->setObjectName("ChckSinIdentificar");
    ChckSinIdentificar->setToolTip(
        QStringLiteral("Los títulos con algún archivo que ninguna DAT conoce"));
    auto* boxes = new QHBoxLayout;
    boxes->addWidget(ChckHaveIt);
    boxes->addWidget(ChckSinIdentificar);
    boxes->addStretch();
    auto* left = new QWidget;
    auto* leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(ComboRegistro);
    leftLayout->addWidget(GridTitles, 1);
    leftLayout->addLayout(boxes);

    // Right, top: the title's data beside its picture.
    LabelNombre = new QLabel;
    LabelCompany = new QLabel;
    LabelYear = new QLabel;
    LabelType = new QLabel;
    for (QLabel* l : {LabelNombre, LabelCompany, LabelYear, LabelType}) {
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
        // A long name wraps inside the box instead of pushing the picture aside.
        l->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        l->setMinimumWidth(120);
    }
    QFont nameFont = LabelNombre->font();
    nameFont.setBold(true);
    nameFont.setPointSizeF(nameFont.pointSizeF() * 1.25);
    LabelNombre->setFont(nameFont);
    LabelNombre->setWordWrap(true);
    LabelNombre->setObjectName("LabelNombre");
    LabelCompany->setObjectName("LabelCompany");
    LabelYear->setObjectName("LabelYear");
    LabelType->setObjectName("LabelType");
    auto* data = new QGroupBox(QStringLiteral("Programa"));
    auto* form = new QFormLayout(data);
    form->addRow(QStringLiteral("Nombre:"), LabelNombre);
    form->addRow(QStringLiteral("Empresa:"), LabelCompany);
    form->addRow(QStringLiteral("Año:"), LabelYear);
    form->addRow(QStringLiteral("Tipo:"), LabelType);

    // The picture: a Spectrum screen is 256 x 192, the box of 3840 x 2880 twips.
    const QSize pictureBox(Twips(3840), Twips(2880));
    SCRImage1 = new ScrImage;
    SCRImage1->setObjectName("SCRImage1");
    SCRImage1->setFixedSize(pictureBox);
    // Says that the screen shown was read from inside one of the title's
    // files, for want of a screen file beside them.
    LabelScreenSource = new QLabel(QStringLiteral("(de la cinta)"), SCRImage1);
    LabelScreenSource->setObjectName("LabelScreenSource");
    LabelScreenSource->setStyleSheet(
        QStringLiteral("QLabel { background: rgba(0, 0, 0, 160); color: white; padding: 1px 4px; "
                       "font-size: 8pt; }"));
    LabelScreenSource->adjustSize();
    LabelScreenSource->move(4, 4);
    LabelScreenSource->hide();
    ImgCaratula = new PictureBox;
    ImgCaratula->setObjectName("ImgCaratula");
    ImgCaratula->setFixedSize(Twips(3840), Twips(2775));
    ImgCaratula->setToolTip(QStringLiteral("Doble click par abrir el archivo"));
    ImgCaratula->hide();
    const char* options[] = {"Pantalla", "Encarte", "Mapa", "Codesheet"};
    auto* optionRow = new QHBoxLayout;
    for (int i = 0; i < 4; ++i) {
        OptDatos[i] = new QRadioButton(QString::fromUtf8(options[i]));
        OptDatos[i]->setObjectName(QStringLiteral("OptDatos%1").arg(i));
        OptDatos[i]->setEnabled(i == 0);
        optionRow->addWidget(OptDatos[i]);
    }
    OptDatos[0]->setChecked(true);
    auto* picture = new QWidget;
    auto* pictureLayout = new QVBoxLayout(picture);
    pictureLayout->setContentsMargins(0, 0, 0, 0);
    auto* frame = new QWidget;
    frame->setFixedSize(pictureBox);
    auto* stack = new QGridLayout(frame);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->addWidget(SCRImage1, 0, 0, Qt::AlignTop | Qt::AlignLeft);
    stack->addWidget(ImgCaratula, 0, 0, Qt::AlignTop | Qt::AlignLeft);
    pictureLayout->addWidget(frame);
    pictureLayout->addLayout(optionRow);

    auto* top = new QWidget;
    auto* topLayout = new QHBoxLayout(top);
    topLayout->setContentsMargins(0, 0, 0, 0);
    topLayout->addWidget(data, 1);
    topLayout->addWidget(picture, 0, Qt::AlignTop);

    // Right, bottom: the title's files.
    GridFiles = new Grid;
    GridFiles->setObjectName("GridFiles");
    // The files are not sorted: their headings take no clicks.
    GridFiles->horizontalHeader()->setSectionsClickable(false);
    auto* right = new QWidget;
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addWidget(top);
    rightLayout->addWidget(GridFiles, 1);

    split = new QSplitter;
    split->addWidget(left);
    split->addWidget(right);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    split->setSizes({500, 540});
    auto* central = new QWidget;
    auto* centralLayout = new QHBoxLayout(central);
    centralLayout->setContentsMargins(6, 6, 6, 6);
    centralLayout->addWidget(split);
    setCentralWidget(central);
}

bool Principal::Form_Load(const QString& dbPath) {
    // 1. The filter box, from the settings; its handler runs if this changes it.
    ChckHaveIt->setChecked(
        GetSetting(QStringLiteral("Conf"), QStringLiteral("HaveIt"), QStringLiteral("0")).toInt() !=
        0);

    // 2. The splash, painted before the slow work starts.
    frmSplash splash;
    splash.setCursor(Qt::WaitCursor);
    splash.show();
    QApplication::processEvents();

    // 3. The shared state and the registers.
    const QString path = dbPath.isEmpty() ? Comunes::DefaultDbPath() : dbPath;
    if (!OpenCatalogue(path)) return false;

    // 4. The default screen.
    ShowScreen({});

    // 5, 6. The grids' columns.
    Grids::SetupGridTitles(*GridTitles);
    Grids::SetupGridFiles(*GridFiles);
    // An empty file grid shows its headers until a title fills it.
    GridFiles->SetRedraw(true);
    FitTitlesPane();

    // 7. The titles, with the splash's counter moving.
    Grids::Splash = &splash;
    Grids::FillTitles(Parts(), kOrderByName);
    Grids::Splash = nullptr;

    // 8. The splash goes.
    splash.close();
    return true;
}

void Principal::FitTitlesPane() {
    int needed = GridTitles->frameWidth() * 2 + GridTitles->verticalScrollBar()->sizeHint().width();
    needed += GridTitles->ColumnsWidth();
    // The files and the picture keep their room beside the titles: a window
    // too narrow for both grows, as far as the screen lets it.
    const QMargins margins = centralWidget()->layout()->contentsMargins();
    const int files = std::max(580, split->widget(1)->minimumSizeHint().width());
    int wanted = margins.left() + needed + split->handleWidth() + files + margins.right();
    if (const QScreen* s = screen()) wanted = std::min(wanted, s->availableGeometry().width());
    if (wanted > width()) resize(wanted, height());
    split->setSizes({needed, std::max(400, width() - needed)});
}

void Principal::ChckHaveIt_Click() {
    SaveSetting(QStringLiteral("Conf"), QStringLiteral("HaveIt"),
                ChckHaveIt->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    Grids::FilterTitles(*GridTitles);
}

void Principal::GridTitles_HeaderClick(int col) {
    Grids::SortGrid(col, *GridTitles);
}

void Principal::GridTitles_SelectionChange() {
    const int row = GridTitles->SelectedRow();
    if (row < 1) {
        ForgetTitle();
        return;
    }
    ImgCaratula->ClearPicture();
    const TitleRef title = Grids::TitleAt(*GridTitles, row);
    LabelNombre->setText(title.Name);
    LabelCompany->setText(title.Publisher);
    LabelYear->setText(title.Year);
    LabelType->setText(title.Type);
    Grids::FillFiles(title.TitleId, *GridFiles);
    ComboRegistro->setEditText(LabelNombre->text());
    BuscaPantalla();
    BuscaCaratula();
    BuscaMapa();
    BuscaCodeSheet();
    CmdModify->setEnabled(true);
    // Comparing needs a tape to start from.
    Command2->setEnabled(Grids::HasTape(*GridFiles));
}

void Principal::ForgetTitle() {
    // Files, data and pictures left behind would belong to no title, and a
    // command on them would act for title 0.
    for (QLabel* l : {LabelNombre, LabelCompany, LabelYear, LabelType})
        l->clear();
    GridFiles->Clear(false);
    GridFiles->SetRedraw(true);
    ComboRegistro->setCurrentIndex(-1);
    ComboRegistro->clearEditText();
    ImgCaratula->ClearPicture();
    ImgCaratula->Tag.clear();
    Command2->setEnabled(false);
    ShowScreen({});
    // The chosen option stays chosen; only "Pantalla" stays at hand.
    for (int option = 1; option < 4; ++option)
        MarkOption(option, false);
    MarkOption(0, false);
    OptDatos[0]->setEnabled(true);
}

bool Principal::ShowScreenFromFiles() {
    for (int row = 1; row <= GridFiles->Rows(); ++row) {
        const QString path = Grids::FileAt(*GridFiles, row).Location();
        if (path.isEmpty()) continue;
        // Only the head of each file is read: a title of many files still
        // selects at once.
        if (const auto screen = platform::ScreenAt(path.toStdString())) {
            ShowScreen({});
            SCRImage1->SetScreen(
                QByteArray(screen->data(), static_cast<qsizetype>(screen->size())));
            LabelScreenSource->show();
            return true;
        }
    }
    return false;
}

void Principal::ShowScreen(const QString& path) {
    LabelScreenSource->hide();
    // An empty path is the default screen the program ships with.
    const QString fallback = Places::SharedFile(QStringLiteral("z80.scr"));
    SCRImage1->SetDefaultFile(fallback);
    SCRImage1->SetFile(path.isEmpty() ? fallback : path);
}

void Principal::MarkOption(int option, bool found) {
    QRadioButton* o = OptDatos[static_cast<std::size_t>(option)];
    o->setEnabled(found);
    QFont f = o->font();
    f.setBold(found);
    o->setFont(f);
    if (found) {
        // Blue stays once set: a miss only takes the bold away.
        // Disabled options keep the desktop's grey.
        QPalette p = o->palette();
        for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive}) {
            p.setColor(g, QPalette::WindowText, QColor(0, 0, 0xFF));
            p.setColor(g, QPalette::ButtonText, QColor(0, 0, 0xFF));
        }
        o->setPalette(p);
    }
}

void Principal::BuscaPantalla() {
    const QString base = SideBaseName(LabelNombre->text());
    if (GridFiles->Rows() == 0) {
        ShowScreen({});
        return;
    }
    for (int row = 1; row <= GridFiles->Rows(); ++row) {
        const QString path =
            FindSideFile(Grids::FileAt(*GridFiles, row).Dir, SideKind::Screen, base);
        if (!path.isEmpty()) {
            ShowScreen(path);
            MarkOption(0, true);
            return;
        }
        ShowScreen({});
        MarkOption(0, false);
    }
    // No screen file: the first of the title's files that holds a screen
    // lends it.
    if (ShowScreenFromFiles()) MarkOption(0, true);
}

void Principal::LookupSideFile(int option, SideKind kind) {
    const QString base = SideBaseName(LabelNombre->text());
    QRadioButton* o = OptDatos[static_cast<std::size_t>(option)];
    for (int row = 1; row <= GridFiles->Rows(); ++row) {
        const QString path = FindSideFile(Grids::FileAt(*GridFiles, row).Dir, kind, base);
        if (!path.isEmpty()) {
            MarkOption(option, true);
            // Another option is showing: this picture waits for its click.
            if (!o->isChecked()) return;
            ImgCaratula->Tag = path;
            ShowScaled(path);
            return;
        }
        MarkOption(option, false);
        if (o->isChecked()) {
            ImgCaratula->ClearPicture();
            ImgCaratula->Tag.clear();
        }
    }
}

void Principal::BuscaCaratula() {
    LookupSideFile(1, SideKind::Inlay);
}
void Principal::BuscaMapa() {
    LookupSideFile(2, SideKind::Map);
}
void Principal::BuscaCodeSheet() {
    LookupSideFile(3, SideKind::CodeSheet);
}

void Principal::ShowScaled(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage picture = reader.read();
    // A file that is there but is no picture leaves the area empty.
    if (picture.isNull() || picture.width() == 0) {
        ImgCaratula->ClearPicture();
        return;
    }
    const double pictureRatio = double(picture.height()) / picture.width();
    const double areaRatio = 2775.0 / 3840.0;
    QRect place;
    if (pictureRatio > areaRatio) {
        const int width = static_cast<int>(2880 / pictureRatio);
        place = QRect((3840 - width) / 2, 0, width, 2880);
    } else {
        const int height = static_cast<int>(pictureRatio * 3840);
        place = QRect(0, (2880 - height) / 2, 3840, height);
    }
    ImgCaratula->DrawPicture(picture, place);
}

void Principal::OptDatos_Click(int index) {
    ImgCaratula->ClearPicture();
    if (index == 0) {
        SCRImage1->show();
        ImgCaratula->hide();
        return;
    }
    SCRImage1->hide();
    if (index == 1) BuscaCaratula();
    if (index == 2) BuscaMapa();
    if (index == 3) BuscaCodeSheet();
    ImgCaratula->show();
}

void Principal::ImgCaratula_DblClick() {
    if (ImgCaratula->Tag.isEmpty()) {
        ImgCaratula->setToolTip(QString());
        return;
    }
    Shell::Current().Open(ImgCaratula->Tag);
    ImgCaratula->setToolTip(QStringLiteral("Doble click para abrir el archivo"));
}

void Principal::GridFiles_DblClick() {
    // A file whose folder is unknown has no path to open.
    const QString path = Grids::SelectedFile(*GridFiles).Location();
    if (!path.isEmpty()) Emulators::OpenLocation(path);
}

} // namespace cintal
