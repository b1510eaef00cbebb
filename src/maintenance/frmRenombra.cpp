#include "maintenance/frmRenombra.h"

#include "catalogue/Records.h"
#include "widgets/Grid.h"
#include "widgets/Grids.h"
#include "widgets/ScrImage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace cintal {

frmRenombra::frmRenombra(Grid* titles, Grid* files, QWidget* parent)
    : QDialog(parent), GridTitles(titles), GridFiles(files) {
    setObjectName("frmRenombra");
    resize(620, 320);
    Label3 = new QLabel(QStringLiteral("Nuevo nombre:"));
    Text1 = new QLineEdit;
    Text1->setObjectName("Text1");
    Label1 = new QLabel(QStringLiteral("Renombra archivos relacionados:"));
    List1 = new QListWidget;
    List1->setObjectName("List1");
    SCRImage1 = new ScrImage;
    SCRImage1->setObjectName("SCRImage1");
    SCRImage1->setFixedSize(256, 192);
    SCRImage1->setVisible(false);
    Command1 = new QPushButton(QStringLiteral("Renombra"));
    Command1->setObjectName("Command1");
    Command1->setDefault(true);
    Command2 = new QPushButton(QStringLiteral("Cancela"));
    Command2->setObjectName("Command2");
    connect(Command1, &QPushButton::clicked, this, &frmRenombra::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);

    auto* left = new QVBoxLayout;
    left->addWidget(Label3);
    left->addWidget(Text1);
    left->addWidget(Label1);
    left->addWidget(List1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    left->addLayout(buttons);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addWidget(SCRImage1, 0, Qt::AlignTop);
    Form_Load();
}

void frmRenombra::Form_Load() {
    const int row = GridFiles->SelectedRow();
    if (row < 1) return;
    const FileRef file = Grids::FileAt(*GridFiles, row);
    renamer.Load(file.Dir, file.FileName, file.PathIndex, file.Inner);
    setWindowTitle(Records::PathIn(file.Dir, renamer.oldFull));
    QString name = Grids::SelectedTitle(*GridTitles).Name;
    Text1->setText(name.replace(QStringLiteral(": "), QStringLiteral(" - ")));
    for (const RenameEntry& e : renamer.entries) {
        auto* item = new QListWidgetItem(e.label, List1);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    if (!renamer.screenFile.isEmpty()) {
        SCRImage1->setVisible(true);
        SCRImage1->SetFile(renamer.screenFile);
    }
}

void frmRenombra::Command1_Click() {
    for (int i = 0; i < List1->count(); ++i)
        renamer.entries[static_cast<std::size_t>(i)].ticked =
            List1->item(i)->checkState() == Qt::Checked;
    Tag = renamer.Rename(Text1->text());
    if (Tag == Renamer::kFallido) return;
    Grids::RenameFile(*GridFiles, GridFiles->SelectedRow(), Tag);
    if (BuscaPantalla) BuscaPantalla();
    accept();
}

} // namespace cintal
