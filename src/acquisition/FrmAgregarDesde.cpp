#include "acquisition/FrmAgregarDesde.h"

#include "acquisition/BuscarDirs.h"
#include "acquisition/FrmWosIn.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace cintal {

FrmAgregarDesde::FrmAgregarDesde(QWidget* parent) : QDialog(parent) {
    setObjectName("FrmAgregarDesde");
    setWindowTitle(QStringLiteral("Importar registros"));
    Command1 = new QPushButton(QStringLiteral("Agregar archivos"));
    Command2 = new QPushButton(QStringLiteral("Importa listado WOS"));
    Command3 = new QPushButton(QStringLiteral("Spectrum Games Database"));
    Label1 =
        new QLabel(QStringLiteral("Busca archivos en la ruta especificada y los añade, tomando "
                                  "la información de archivos en el caso de los .TZX"));
    Label2 = new QLabel(
        QStringLiteral("Importa entradas desde listados web descargados de The World of Spectrum"));
    Label3 = new QLabel(QStringLiteral("Importa entradas y rutas de archivo de la base de datos "
                                       "generada por Spectrum games Database (versión 2.05)"));
    Command1->setObjectName("Command1");
    Command2->setObjectName("Command2");
    Command3->setObjectName("Command3");
    Command3->setEnabled(false);
    auto* layout = new QGridLayout(this);
    layout->setColumnStretch(1, 1);
    layout->setHorizontalSpacing(12);
    layout->setVerticalSpacing(10);
    int row = 0;
    for (auto [button, label] :
         {std::pair{Command1, Label1}, std::pair{Command2, Label2}, std::pair{Command3, Label3}}) {
        label->setWordWrap(true);
        label->setEnabled(button->isEnabled());
        button->setMinimumWidth(180);
        layout->addWidget(button, row, 0, Qt::AlignTop);
        layout->addWidget(label, row++, 1);
    }
    resize(620, sizeHint().height());
    connect(Command1, &QPushButton::clicked, this, &FrmAgregarDesde::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &FrmAgregarDesde::Command2_Click);
}

void FrmAgregarDesde::Command1_Click() {
    BuscarDirs window(this);
    RunModal(window);
    scanned = true;
}

void FrmAgregarDesde::Command2_Click() {
    FrmWosIn window(this);
    RunModal(window);
    imported = true;
}

} // namespace cintal
