#include "maintenance/frmConfig.h"

#include "catalogue/Settings.h"
#include "maintenance/Purge.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QProgressDialog>
#include <QVBoxLayout>

namespace cintal {

using namespace Emulators;

frmConfig::frmConfig(QWidget* parent) : QDialog(parent) {
    setObjectName("frmConfig");
    setWindowTitle(QStringLiteral("Form1"));

    Frame1 = new QGroupBox(QStringLiteral("Emuladores"), this);
    Label1 = new QLabel(QStringLiteral("Emulador"));
    Label2 = new QLabel(QStringLiteral("Ruta"));
    List1 = new QListWidget;
    List1->setObjectName("List1");
    List2 = new QListWidget;
    List2->setObjectName("List2");
    for (const QString& name : kListNames)
        List1->addItem(name);
    List1->setFixedWidth(130);
    // Five entries, no more: no room left empty below them.
    List1->setFixedHeight(96);
    List2->setFixedHeight(96);
    auto* g1 = new QGridLayout(Frame1);
    g1->addWidget(Label1, 0, 0);
    g1->addWidget(Label2, 0, 1);
    g1->addWidget(List1, 1, 0);
    g1->addWidget(List2, 1, 1);
    g1->setColumnStretch(1, 1);

    Frame2 = new QGroupBox(QStringLiteral("Formatos"), this);
    auto* g2 = new QGridLayout(Frame2);
    for (int i = 0; i < kFormats; ++i) {
        // A small picture bearing the format's name.
        Picture1[i] = new QLabel(kFormatNames[i]);
        Picture1[i]->setAlignment(Qt::AlignCenter);
        Picture1[i]->setFixedSize(40, 20);
        Picture1[i]->setStyleSheet(
            "background:#20307a; color:white; font-weight:bold; border:1px solid #101840;");
        Combo1[i] = new QComboBox;
        Combo1[i]->setObjectName(QStringLiteral("Combo1_%1").arg(i));
        g2->addWidget(Picture1[i], i % 4, (i / 4) * 2);
        g2->addWidget(Combo1[i], i % 4, (i / 4) * 2 + 1);
    }
    Combo2 = new QComboBox;
    Combo2->setObjectName("Combo2");
    g2->addWidget(new QLabel(QStringLiteral("Emulador por defecto")), 4, 0, 1, 1);
    g2->addWidget(Combo2, 4, 1);
    g2->setColumnStretch(1, 1);
    g2->setColumnStretch(3, 1);

    CmdLimpiaFiles = new QPushButton(QStringLiteral("Borra archivos inexistentes"));
    CmdLimpiaFiles->setObjectName("CmdLimpiaFiles");

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Frame1);
    layout->addWidget(Frame2);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(CmdLimpiaFiles);
    layout->addLayout(bottom);
    resize(560, sizeHint().height());

    CommonDialog1 = [this](const QString& start, const QString& name, const QString& filter) {
        const QString folder = QFileInfo(start).isFile() ? QFileInfo(start).absolutePath() : start;
        QFileDialog dialog(this, QString(), folder, filter);
        dialog.setFileMode(QFileDialog::ExistingFile);
        dialog.selectFile(name);
        return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()
                   ? dialog.selectedFiles().front()
                   : QString();
    };

    connect(List2, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { List2_DblClick(List2->row(item)); });
    connect(Combo2, &QComboBox::activated, this, [this] { Combo2_Click(); });
    for (int i = 0; i < kFormats; ++i)
        connect(Combo1[i], &QComboBox::activated, this, [this, i] { Combo1_Click(i); });
    connect(CmdLimpiaFiles, &QPushButton::clicked, this, [this] { CmdLimpiaFiles_Click(); });

    Form_Load();
}

void frmConfig::Form_Load() {
    Combo2->clear();
    for (const QString& name : kNames)
        Combo2->addItem(name);
    Combo2->setCurrentIndex(Combo2->findText(GetSetting(kSection, "DefaultEmul", QString())));
    for (int i = 0; i < kFormats; ++i) {
        Combo1[i]->clear();
        for (const QString& name : kNames)
            Combo1[i]->addItem(name);
        Combo1[i]->addItem(kByDefault);
        Combo1[i]->setCurrentIndex(
            Combo1[i]->findText(GetSetting(kSection, FormatKey(i), kByDefault)));
    }
    List2->clear();
    for (const QString& path : LoadPaths())
        List2->addItem(path);
}

void frmConfig::List2_DblClick(int index) {
    if (index < 0 || index >= kCount) return;
    const QString exe = kExecutables[index];
    const QString chosen = CommonDialog1(GetSetting(kSection, PathKey(index), kNotInstalled), exe,
                                         QStringLiteral("Ejecutable (*)"));
    if (!ChoosePath(index, chosen)) return;
    List2->item(index)->setText(chosen);
}

void frmConfig::Combo2_Click() {
    SetDefault(Combo2->currentText());
}

void frmConfig::Combo1_Click(int index) {
    if (index < 0 || index >= kFormats) return;
    SetForFormat(index, Combo1[index]->currentText());
}

void frmConfig::CmdLimpiaFiles_Click() {
    Purger purger;
    QProgressDialog progress(QStringLiteral("Comprobando archivos..."), QString(), 0, 100, this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    purger.progress = [&progress](qint64 done, qint64 total) {
        progress.setMaximum(static_cast<int>(std::max<qint64>(total, 1)));
        progress.setValue(static_cast<int>(done));
    };
    purger.Interactive();
}

} // namespace cintal
