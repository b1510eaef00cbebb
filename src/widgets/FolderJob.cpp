#include "widgets/FolderJob.h"

#include "widgets/FolderTree.h"

#include "platform/Spanish.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QVBoxLayout>

namespace cintal {

FolderJob::FolderJob(const char* name, const QString& title, int width, QWidget* parent)
    : QDialog(parent) {
    setObjectName(name);
    setWindowTitle(title);
    resize(width, 560);
    Dir1 = new FolderTree([this](const QString& path) { Dir1_Click(path); });
    LabelRuta = new QLabel;
    LabelRuta->setObjectName("LabelRuta");
    LabelRuta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ProgressBar1 = new QProgressBar;
    ProgressBar1->setObjectName("ProgressBar1");
    ProgressBar1->setValue(0);
}

void FolderJob::Dir1_Click(const QString& path) {
    dir1Path = path;
    LabelRuta->setText(path);
}

QGridLayout* FolderJob::Counters(QGroupBox* box, std::initializer_list<CounterRow> rows) {
    auto* grid = new QGridLayout(box);
    int r = 0;
    for (const CounterRow& row : rows) {
        auto* l = new QLabel(QString::fromUtf8(row.start));
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setMinimumWidth(70);
        *row.label = l;
        if (row.count) counts.emplace_back(l, row.count);
        grid->addWidget(new QLabel(QString::fromUtf8(row.caption)), r, 0);
        grid->addWidget(l, r++, 1);
    }
    return grid;
}

void FolderJob::ShowCounts() {
    for (const auto& [label, count] : counts)
        label->setText(Number(*count));
}

QListWidget* FolderJob::List(const char* name) {
    auto* list = new QListWidget;
    list->setObjectName(name);
    return list;
}

QVBoxLayout* FolderJob::FolderColumn(int treeStretch) {
    auto* column = new QVBoxLayout;
    column->addWidget(new QLabel(QStringLiteral("Carpeta:")));
    column->addWidget(LabelRuta);
    column->addWidget(Dir1, treeStretch);
    return column;
}

void FolderJob::Busy(const std::function<void()>& work) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    work();
    QApplication::restoreOverrideCursor();
}

} // namespace cintal
