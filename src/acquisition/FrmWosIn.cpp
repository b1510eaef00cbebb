#include "acquisition/FrmWosIn.h"

#include "widgets/FolderTree.h"

#include "catalogue/Settings.h"
#include "platform/PathCase.h"
#include "platform/Places.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace cintal {

namespace {

const char* kChecks[10] = {
    "Juegos", "Recopilaciones", "Conversacionales", "Tecleados",    "Utilidades", "Demos",
    "TRD",    "Revistas",       "Discos",           "Educacionales"};

} // namespace

FrmWosIn::FrmWosIn(QWidget* parent)
    : FolderJob("FrmWosIn", QStringLiteral("Importa listado WOS"), 900, parent) {
    File1 = List("File1");
    File1->setFixedHeight(File1->fontMetrics().height() * 2);
    File1->setFocusPolicy(Qt::NoFocus);

    CommandSelecciona = new QPushButton(QStringLiteral("Importa entradas"));
    CommandSelecciona->setObjectName("CommandSelecciona");
    CommandSelecciona->setEnabled(false);
    connect(CommandSelecciona, &QPushButton::clicked, this, &FrmWosIn::CommandSelecciona_Click);

    Frame1 = new QGroupBox(QStringLiteral("Importa entradas:"));
    Frame1->setObjectName("Frame1");
    auto* choice = new QGridLayout(Frame1);
    auto* options = new QButtonGroup(this);
    Option1[0] = new QRadioButton(QStringLiteral("Todos"));
    Option1[1] = new QRadioButton(QStringLiteral("Sólo nuevos"));
    for (int i = 0; i < 2; ++i) {
        Option1[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        options->addButton(Option1[i], i);
        choice->addWidget(Option1[i], 0, i);
        connect(Option1[i], &QRadioButton::clicked, this, [this, i] { Option1_Click(i); });
    }
    Option1[0]->setChecked(true);
    for (int i = 0; i < 10; ++i) {
        Check1[i] = new QCheckBox(QString::fromUtf8(kChecks[i]));
        Check1[i]->setObjectName(QStringLiteral("Check1_%1").arg(i));
        Check1[i]->setChecked(true);
        // Only the kinds of listing with a folder of pages can be chosen.
        Check1[i]->setEnabled(kCheckFolder[i] >= 0);
        choice->addWidget(Check1[i], 1 + i / 2, i % 2);
    }

    auto* counts = new QGroupBox(QStringLiteral("Títulos importados"));
    const WosCounters& c = importer.counters;
    Counters(counts, {{"Páginas leídas:", &LabelPaginas, &c.Paginas},
                      {"Títulos nuevos:", &LabelNuevos, &c.Nuevos},
                      {"Títulos existentes:", &LabelExistentes, &c.Existentes},
                      {"Compañías agregadas:", &LabelNwComp, &c.NwComp},
                      {"Tiempo empleado:", &LabelTiempo, nullptr, "0:00:00"}});

    Label1 = new QLabel;
    Label1->setObjectName("Label1");
    Avisos = List("Avisos");

    QVBoxLayout* left = FolderColumn(1);
    left->addWidget(File1);
    left->addWidget(CommandSelecciona);
    auto* right = new QVBoxLayout;
    right->addWidget(Frame1);
    right->addWidget(counts);
    right->addWidget(Label1);
    right->addWidget(ProgressBar1);
    right->addWidget(new QLabel(QStringLiteral("Avisos")));
    right->addWidget(Avisos, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(right, 1);

    importer.onProgress = [this](const WosImporter& w) { ShowProgress(w); };
    Form_Load();
}

void FrmWosIn::Form_Load() {
    // The catalogue's folder (the program's own when it runs from where it
    // was copied), unless the pages are elsewhere: then the folder the last
    // import ran from.
    QString path = Places::Current().data;
    if (!QDir(path).exists()) path = QDir::homePath();
    if (!WosImporter::IsListingRoot(path)) {
        const QString last = GetSetting(QStringLiteral("Caminos"), QStringLiteral("RutaWos"));
        if (!last.isEmpty() && QDir(last).exists()) path = last;
    }
    Dir1_Click(QDir(path).absolutePath());
    Dir1->Reveal(dir1Path);
}

void FrmWosIn::Dir1_Click(const QString& path) {
    FolderJob::Dir1_Click(path);
    Dir1_Change();
}

void FrmWosIn::Dir1_Change() {
    // File1 lists the folder's "legend.html": the mark of the listing's root.
    File1->clear();
    const QString legend = platform::FindEntry(dir1Path, QStringLiteral("legend.html"));
    if (!legend.isEmpty()) File1->addItem(QFileInfo(legend).fileName());
    CommandSelecciona->setEnabled(File1->count() > 0);
}

void FrmWosIn::Option1_Click(int index) {
    for (int i = 0; i < 10; ++i)
        Check1[i]->setEnabled(index == 0 && kCheckFolder[i] >= 0);
}

void FrmWosIn::CommandSelecciona_Click() {
    // "Sólo nuevos" leaves the kinds out of play: every folder is read, and
    // as on every run only the titles not there yet are added.
    const bool byKind = Option1[0]->isChecked();
    for (std::size_t f = 0; f < importer.folders.size(); ++f)
        importer.folders[f] = !byKind;
    if (byKind)
        for (int i = 0; i < 10; ++i)
            if (kCheckFolder[i] >= 0 && Check1[i]->isChecked())
                importer.folders[static_cast<std::size_t>(kCheckFolder[i])] = true;
    SaveSetting(QStringLiteral("Caminos"), QStringLiteral("RutaWos"), dir1Path);
    Avisos->clear();
    Busy([this] { importer.Run(dir1Path); });
}

void FrmWosIn::ShowProgress(const WosImporter& w) {
    ShowCounts();
    LabelTiempo->setText(Scanner::FormatElapsed(w.elapsedMs));
    Label1->setText(w.Label1);
    ProgressBar1->setRange(0, std::max(1, w.pagesTotal));
    ProgressBar1->setValue(w.pagesTotal ? w.pagesDone : 0);
    // Every page lies below the folder chosen: its path from there is enough.
    for (std::size_t i = static_cast<std::size_t>(Avisos->count()); i < w.warnings.size(); ++i) {
        const ScanWarning& warning = w.warnings[i];
        Avisos->addItem(QDir(w.root).relativeFilePath(warning.path) + ": " + warning.text);
        Avisos->item(Avisos->count() - 1)->setToolTip(warning.path + ": " + warning.text);
    }
}

} // namespace cintal
