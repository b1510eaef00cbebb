#pragma once
// The grid of Cintal's windows: rows and columns counted from 1, columns found
// by key, cells with text, icon, alignment and colours, hidden rows and a
// stable sort on several keys. Cells live in plain arrays; the view sees only
// the shown rows through a model that maps them, so that a grid of 100,000
// titles fills, sorts and filters without an object per cell or a signal per
// row.

#include "widgets/IconSet.h"

#include <QColor>
#include <QTableView>
#include <QVariant>
#include <functional>
#include <optional>
#include <vector>

namespace cintal {

class GridModel;

class Grid : public QTableView {
    Q_OBJECT
public:
    // Alignment codes: 0 left, 1 centre, 2 right; -1 the grid's default.
    enum { AlignDefault = -1, AlignLeft = 0, AlignCenter = 1, AlignRight = 2 };
    // Sort orders and the one sort kind: text.
    enum { SortAscending = 1, SortDescending = 2, SortText = 103 };

    struct SortKey {
        int col = 0;
        int order = SortAscending;
        int kind = SortText;
    };

    struct Column;

    explicit Grid(QWidget* parent = nullptr);
    ~Grid() override;

    void AddColumn(const QString& key, const QString& header, int alignment = AlignDefault,
                   int icon = -1, int width = 100, bool visible = true);
    void Clear(bool removeColumns = false);
    int Rows() const;
    void SetRows(int rows);
    int Columns() const;
    void SetDefaultRowHeight(int pixels);
    int DefaultRowHeight() const;
    // Off, nothing is painted and writes are cheap; on again, the view
    // catches up in one go.
    void SetRedraw(bool on);
    bool Redraw() const { return redraw; }
    void SetRowMode(bool on);
    void SetImageList(const IconSet* icons);
    const IconSet* ImageList() const { return images; }

    // Position (from 1) of the column with that key, 0 if none.
    int ColumnIndex(const QString& key) const;
    QString ColumnKey(int col) const;
    QString ColumnHeader(int col) const;
    bool ColumnVisible(int col) const;
    int ColumnWidth(int col) const;
    // On screen, in pixels, of all visible columns together.
    int ColumnsWidth() const;
    QString ColumnTag(int col) const;
    void SetColumnTag(int col, const QString& tag);
    // A column whose cells show their icon alone; the text stays readable.
    void SetColumnTextHidden(int col, bool hidden);

    void CellDetails(int row, int col, const QString& text, int alignment = AlignDefault,
                     int icon = -1, std::optional<QColor> back = {},
                     std::optional<QColor> fore = {});
    QString CellText(int row, int col) const;
    int CellIcon(int row, int col) const;
    int CellAlignment(int row, int col) const;
    // Invalid when the cell has no colour of its own.
    QColor CellBackColor(int row, int col) const;
    QColor CellForeColor(int row, int col) const;
    void SetCellBackColor(int row, int col, const QColor& c);
    void SetCellForeColor(int row, int col, const QColor& c);

    // What a row stands for (its owner's ids and paths), kept beside its
    // cells and moving with them through sorts and removals, so that a
    // handler reads them as they are instead of parsing the texts shown.
    void SetRowData(int row, QVariant data);
    QVariant RowData(int row) const;

    bool RowVisible(int row) const;
    void SetRowVisible(int row, bool visible);
    int VisibleRows() const;

    // The selected row (from 1), or 0 when there is none.
    int SelectedRow() const;
    void SetSelectedRow(int row);
    void RemoveRow(int row);
    void ClearSelection();

    // Places each text of a column in the order shown to the user, from 0,
    // equal texts sharing a place: the grid knows no language of its own.
    using SortRanker = std::function<std::vector<int>(const std::vector<QString>&)>;

    std::vector<SortKey>& SortObject() { return sortKeys; }
    void Sort(const SortRanker& rank);
    // The sort order of a column's texts, one number per row (equal texts
    // share one), from whoever already knows it; kept until a text of the
    // column changes.
    void SetSortRanks(int col, std::vector<int> ranks);

signals:
    void SelectionChange();
    void HeaderClicked(int col);
    void RowDoubleClicked(int row);
    void RightButton(const QPoint& globalPos);

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    const Column* ColumnAt(int col) const;
    Column* ColumnAt(int col) {
        return const_cast<Column*>(static_cast<const Grid*>(this)->ColumnAt(col));
    }
    int ViewRow(int row) const;
    int Pixels(int units) const;
    void Touch(int row, int col);
    // Tells the view about rows and columns at once, keeping row keep (the
    // selected row when left out) selected where it is still shown.
    void Publish(int keep = -1);
    // The column's width in pixels, as the view lays it out.
    int OnScreenWidth(int col) const;

    GridModel* store;
    const IconSet* images = nullptr;
    bool redraw = true;
    int lastSelected = 0;
    std::vector<SortKey> sortKeys;
};

} // namespace cintal
