#include "acquisition/BuscarDirs.h"

#include "widgets/FolderTree.h"

#include "catalogue/Settings.h"

#include <QApplication>
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
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace cintal {

namespace {

// The root of a folder: the nearest thing to a drive on this system.
QString RootOf(const QString& path) {
    return QDir(path).isRoot() ? path : QDir::rootPath();
}

} // namespace

BuscarDirs::BuscarDirs(QWidget* parent)
    : FolderJob("BuscarDirs", QStringLiteral("Agregar archivos"), 860, parent) {
    List1 = List("List1");
    List2 = List("List2");
    CommandSelecciona = new QPushButton(QStringLiteral("Agregar nuevos programas"));
    CommandSelecciona->setObjectName("CommandSelecciona");
    connect(CommandSelecciona, &QPushButton::clicked, this, &BuscarDirs::CommandSelecciona_Click);

    Frame1 = new QGroupBox(QStringLiteral("Archivos agregados"));
    Frame1->setObjectName("Frame1");
    const ScanCounters& c = scanner.counters;
    QGridLayout* grid =
        Counters(Frame1, {{"Total encontrados:", &LabelTotal, &c.Total},
                          {"Total procesados:", &LabelParcial, &c.Parcial},
                          {"A entradas nuevas:", &LabelCreada, &c.Creada},
                          {"A entradas existentes:", &LabelAgregada, &c.Agregada},
                          {"Archivos omitidos:", &LabelOmitida, &c.Omitida},
                          {"Compañías agregadas:", &LabelNwComp, &c.NwComp},
                          {"Archivos comprimidos:", &LabelComprimidos, &c.Comprimidos},
                          {"Cintas en su interior:", &LabelInteriores, &c.Interiores},
                          {"Tiempo empleado:", &LabelTiempo, nullptr, "0:00:00"},
                          {"Archivos con info:", &Label7}});
    // Kept from the old window, out of sight: nothing counts it any more.
    Label1 = static_cast<QLabel*>(grid->itemAtPosition(grid->rowCount() - 1, 0)->widget());
    Label1->hide();
    Label7->hide();

    LabelEstado = new QLabel(QStringLiteral("Estado"));
    LabelEstado->setObjectName("LabelEstado");
    Avisos = List("Avisos");

    QVBoxLayout* left = FolderColumn(3);
    left->addWidget(CommandSelecciona);
    left->addWidget(new QLabel(QStringLiteral("Carpetas:")));
    left->addWidget(List1, 1);
    auto* middle = new QVBoxLayout;
    middle->addWidget(new QLabel(QStringLiteral("Archivos:")));
    middle->addWidget(List2, 1);
    auto* right = new QVBoxLayout;
    right->addWidget(Frame1);
    right->addWidget(LabelEstado);
    right->addWidget(ProgressBar1);
    right->addWidget(new QLabel(QStringLiteral("Avisos")));
    right->addWidget(Avisos, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 3);
    layout->addLayout(middle, 3);
    layout->addLayout(right, 2);

    scanner.onProgress = [this](const Scanner& s) { ShowProgress(s); };
    Form_Load();
}

void BuscarDirs::Form_Load() {
    QString path = GetSetting(QStringLiteral("Caminos"), QStringLiteral("Ruta"));
    // A saved folder that is gone: start from the user's home.
    if (path.isEmpty() || !QDir(path).exists()) path = QDir::homePath();
    dir1Path = QDir(path).absolutePath();
    LabelRuta->setText(dir1Path);
    Dir1->Reveal(dir1Path);
}

void BuscarDirs::Dir1_Click(const QString& path) {
    FolderJob::Dir1_Click(path);
    SaveSetting(QStringLiteral("Caminos"), QStringLiteral("Unidad"), RootOf(path));
    SaveSetting(QStringLiteral("Caminos"), QStringLiteral("Ruta"), path);
}

void BuscarDirs::CommandSelecciona_Click() {
    listed = -1;
    List1->clear();
    List2->clear();
    Avisos->clear();
    Busy([this] { scanner.Run(dir1Path); });
}

void BuscarDirs::ShowProgress(const Scanner& s) {
    ShowCounts();
    LabelTiempo->setText(Scanner::FormatElapsed(s.elapsedMs));
    LabelEstado->setText(s.Estado);
    // The lists fill as the walk finds folders and files.
    for (int i = List1->count(); i < s.List1.size(); ++i)
        List1->addItem(s.List1[i]);
    for (int i = List2->count(); i < s.List2.size(); ++i)
        List2->addItem(s.List2[i]);
    if (listed < 0 && s.current >= 0) {
        ProgressBar1->setRange(0, static_cast<int>(s.List2.size()));
        listed = 0;
    }
    if (s.current >= 0 && s.current < List2->count()) {
        List2->setCurrentRow(s.current);
        ProgressBar1->setValue(s.current + 1);
    }
    for (std::size_t i = static_cast<std::size_t>(Avisos->count()); i < s.warnings.size(); ++i)
        Avisos->addItem(s.warnings[i].path + ": " + s.warnings[i].text);
}

} // namespace cintal
