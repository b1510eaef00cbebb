#pragma once
// The windows that run long work over a folder chosen in a tree: the tree
// with the chosen path above it, a box of counters the work fills in as it
// goes, and a progress bar.

#include <QDialog>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

class QGridLayout;
class QGroupBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QVBoxLayout;

namespace cintal {

class FolderTree;

class FolderJob : public QDialog {
public:
    // The folder chosen, as Dir1 holds it.
    QString Dir1Path() const { return dir1Path; }
    // Each window adds what a new folder means to it.
    virtual void Dir1_Click(const QString& path);

    FolderTree* Dir1;
    QLabel* LabelRuta;
    QProgressBar* ProgressBar1;

protected:
    FolderJob(const char* name, const QString& title, int width, QWidget* parent);

    struct CounterRow {
        const char* caption;
        QLabel** label;
        // The work's own counter that the label shows, if it shows one.
        const qint64* count = nullptr;
        const char* start = "0";
    };
    // Lays the counters out in box, a caption beside each; the grid is left
    // for a window that has a row of its own to add.
    QGridLayout* Counters(QGroupBox* box, std::initializer_list<CounterRow> rows);
    // Writes every counter laid out with its count as the work has it now.
    void ShowCounts();
    // A list the window names, so that its tests can find it.
    static QListWidget* List(const char* name);
    // "Carpeta:", the chosen path and the tree, which takes treeStretch.
    QVBoxLayout* FolderColumn(int treeStretch);
    // The work runs under the busy cursor: the window doesn't answer meanwhile.
    static void Busy(const std::function<void()>& work);

    QString dir1Path;

private:
    std::vector<std::pair<QLabel*, const qint64*>> counts;
};

} // namespace cintal
