#include "widgets/FolderTree.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QTimer>

namespace cintal {

FolderTree::FolderTree(std::function<void(const QString&)> onClick, QWidget* parent)
    : QTreeView(parent), folders(new QFileSystemModel(this)) {
    setObjectName("Dir1");
    folders->setFilter(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Drives);
    folders->setRootPath(QDir::rootPath());
    setModel(folders);
    for (int c = 1; c < folders->columnCount(); ++c)
        hideColumn(c);
    header()->hide();
    connect(this, &QTreeView::clicked, this,
            [this, onClick](const QModelIndex& i) { onClick(folders->filePath(i)); });
    connect(folders, &QFileSystemModel::directoryLoaded, this, [this](const QString& loaded) {
        if (chosen == loaded || chosen.startsWith(loaded)) Open();
    });
}

void FolderTree::Reveal(const QString& path) {
    chosen = path;
    Open();
}

void FolderTree::Open() {
    // Open every level above the folder; each one asks the model to read the
    // next, and this runs again as it arrives.
    QString above = chosen;
    QStringList chain;
    while (!above.isEmpty()) {
        chain.prepend(above);
        const QString up = QFileInfo(above).path();
        if (up == above) break;
        above = up;
    }
    for (const QString& level : chain) {
        const QModelIndex i = folders->index(level);
        if (!i.isValid()) return;
        if (level != chosen) expand(i);
    }
    setCurrentIndex(folders->index(chosen));
    // Scrolled once the view has laid out the rows that just arrived.
    QTimer::singleShot(100, this, [this] {
        scrollTo(folders->index(chosen), QAbstractItemView::PositionAtCenter);
    });
}

} // namespace cintal
