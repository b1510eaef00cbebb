#include "maintenance/Ordena.h"

#include "catalogue/Comunes.h"
#include "tape/Prompt.h"
#include "widgets/FolderTree.h"
#include "widgets/Grid.h"
#include "widgets/Grids.h"

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
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace cintal {

namespace {

// A subfolder that would lead out of the chosen folder is refused, with the
// reason.
bool SubFolderRefused(const QString& subFolder) {
    const QString why = Reorganiser::SubFolderRefusal(subFolder);
    if (why.isEmpty()) return false;
    Ask(why.toStdString(), {}, Icon::Exclamation);
    return true;
}

} // namespace

Ordena::Ordena(Grid* titles, Grid* files, QWidget* parent)
    : FolderJob("Ordena", QStringLiteral("Ordena archivos"), 900, parent), GridTitles(titles),
      GridFiles(files) {
    Label1 = new QLabel(QStringLiteral("Subdirectorio:"));
    TxtSubFolder = new QLineEdit(QStringLiteral("Programas"));
    TxtSubFolder->setObjectName("TxtSubFolder");
    TxtSubFolder->setMaxLength(30);

    auto* sortBox = new QGroupBox(QStringLiteral("Ordenar por"));
    auto* sortLayout = new QVBoxLayout(sortBox);
    auto* group = new QButtonGroup(this);
    const char* captions[4] = {"Directorio único", "Alfabético", "Fecha", "Publisher"};
    for (int i = 0; i < 4; ++i) {
        OptionSortBy[i] = new QRadioButton(QString::fromUtf8(captions[i]));
        OptionSortBy[i]->setObjectName(QStringLiteral("OptionSortBy_%1").arg(i));
        group->addButton(OptionSortBy[i], i);
        sortLayout->addWidget(OptionSortBy[i]);
    }
    OptionSortBy[0]->setChecked(true);

    CheckCatalogo = new QCheckBox(QStringLiteral("Actualizar el catálogo"));
    CheckCatalogo->setObjectName("CheckCatalogo");
    CheckCatalogo->setChecked(true);
    CommandSimular = new QPushButton(QStringLiteral("Simular"));
    CommandSimular->setObjectName("CommandSimular");
    CommandOrdenar = new QPushButton(QStringLiteral("Reordenar"));
    CommandOrdenar->setObjectName("CommandOrdenar");
    connect(CommandSimular, &QPushButton::clicked, this, &Ordena::CommandSimular_Click);
    connect(CommandOrdenar, &QPushButton::clicked, this, &Ordena::CommandOrdenar_Click);

    auto* counts = new QGroupBox;
    const ReorgCounters& c = reorganiser.counters;
    Counters(counts, {{"Títulos:", &LabelTitulos, &c.Titulos},
                      {"Archivos movidos:", &LabelMovidos, &c.Movidos},
                      {"Archivos laterales movidos:", &LabelLaterales, &c.Laterales},
                      {"Omitidos:", &LabelOmitidos, &c.Omitidos},
                      {"Fallidos:", &LabelFallidos, &c.Fallidos}});
    LabelFallidos->setObjectName("LabelFallidos");
    ListPlan = List("ListPlan");

    auto* sub = new QHBoxLayout;
    sub->addWidget(Label1);
    sub->addWidget(TxtSubFolder, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CommandSimular);
    buttons->addWidget(CommandOrdenar);
    QVBoxLayout* left = FolderColumn(1);
    left->addLayout(sub);
    auto* right = new QVBoxLayout;
    right->addWidget(sortBox);
    right->addWidget(CheckCatalogo);
    right->addLayout(buttons);
    right->addWidget(counts);
    right->addWidget(ProgressBar1);
    right->addWidget(ListPlan, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(right, 1);

    reorganiser.onProgress = [this](const Reorganiser& w) { ShowCounters(w); };
    Dir1_Click(QDir::homePath());
}

void Ordena::Dir1_Click(const QString& path) {
    FolderJob::Dir1_Click(path);
    Dir1->Mark(path);
}

SortBy Ordena::Order() const {
    for (int i = 0; i < 4; ++i)
        if (OptionSortBy[i]->isChecked()) return static_cast<SortBy>(i);
    return SortBy::Single;
}

std::vector<ReorgTitle> Ordena::ListedTitles() {
    std::vector<ReorgTitle> titles;
    // What the main window lists: a hidden row is filtered out.
    for (int row = 1; row <= GridTitles->Rows(); ++row) {
        if (!GridTitles->RowVisible(row)) continue;
        const TitleRef listed = Grids::TitleAt(*GridTitles, row);
        ReorgTitle t;
        t.TitleId = listed.TitleId;
        t.name = listed.Name;
        t.year = listed.Year;
        t.publisher = listed.Publisher;
        LoadReorgFiles(t);
        titles.push_back(std::move(t));
    }
    return titles;
}

void Ordena::ShowCounters(const Reorganiser& r) {
    ShowCounts();
    ProgressBar1->setRange(0, std::max(1, r.titlesTotal));
    ProgressBar1->setValue(static_cast<int>(r.counters.Titulos));
}

void Ordena::ShowPlan() {
    ListPlan->clear();
    QStringList lines;
    lines.reserve(static_cast<int>(reorganiser.steps.size()));
    for (const ReorgStep& s : reorganiser.steps)
        lines << s.Text();
    ListPlan->addItems(lines);
}

void Ordena::CommandSimular_Click() {
    if (SubFolderRefused(TxtSubFolder->text())) return;
    const QString target = Reorganiser::Target(dir1Path, TxtSubFolder->text());
    Busy([&] {
        reorganiser.Plan(target, Order(), ListedTitles());
        ShowPlan();
        ShowCounters(reorganiser);
    });
}

void Ordena::CommandOrdenar_Click() {
    if (SubFolderRefused(TxtSubFolder->text())) return;
    const QString target = Reorganiser::Target(dir1Path, TxtSubFolder->text());
    if (QFileInfo(target).isDir() && Ask("El directorio ya existe. ¿desea continuar?", {},
                                         Icon::Critical, Buttons::YesNo) == Button::No)
        return;
    Busy([&] {
        reorganiser.Plan(target, Order(), ListedTitles());
        ListPlan->clear();
        reorganiser.Run(CheckCatalogo->isChecked());
        ShowCounters(reorganiser);
        for (const QString& note : reorganiser.notes)
            ListPlan->addItem(note);
        // The main window ends on its last listed title, with its files where
        // they now are.
        int last = 0;
        for (int row = GridTitles->Rows(); row >= 1 && !last; --row)
            if (GridTitles->RowVisible(row)) last = row;
        if (last) {
            GridTitles->SetSelectedRow(last);
            Grids::FillFiles(Grids::TitleAt(*GridTitles, last).TitleId, *GridFiles);
        }
    });
}

} // namespace cintal
