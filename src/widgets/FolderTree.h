#pragma once
// The drive and folder lists of the windows that choose a folder: one tree
// of the file system's folders, opened down to the chosen one.

#include <QFileSystemModel>
#include <QTreeView>
#include <functional>

namespace cintal {

class FolderTree : public QTreeView {
public:
    // onClick gets the folder the user clicked.
    FolderTree(std::function<void(const QString&)> onClick, QWidget* parent = nullptr);

    // Opens the tree down to path and marks it; the levels arrive in the
    // background, and the tree goes on opening as they do.
    void Reveal(const QString& path);
    // Marks path without opening the levels above it.
    void Mark(const QString& path) { setCurrentIndex(folders->index(path)); }

private:
    void Open();

    QFileSystemModel* folders;
    QString chosen;
};

} // namespace cintal
