// The grid's rows as the view sees them: hidden rows left out, the selected
// title and each row's own data kept with their row through hiding, sorting
// and removal.

#include "catalogue/Collate.h"
#include "widgets/Grid.h"

#include <gtest/gtest.h>

namespace cintal::test {
namespace {

// The names of the rows the view is handed, in order.
QStringList Shown(const Grid& grid) {
    QStringList names;
    const QAbstractItemModel* model = grid.model();
    for (int r = 0; r < model->rowCount(); ++r)
        names << model->index(r, 0).data().toString();
    return names;
}

TEST(GridTest, ShownRowsAndSelectionFollowTheirTitles) {
    Grid grid;
    grid.SetRowMode(true);
    grid.AddColumn("ColName", "Nombre");
    const QStringList names{"Delta", "Alfa", "Eco", "Charlie", "Bravo"};
    grid.SetRows(static_cast<int>(names.size()));
    for (int r = 1; r <= grid.Rows(); ++r) {
        grid.CellDetails(r, 1, names[r - 1]);
        grid.SetRowData(r, qint64(100 + r));
    }
    int changes = 0;
    QObject::connect(&grid, &Grid::SelectionChange, [&] { ++changes; });

    // Hidden while painting is off: the view learns of both at once.
    grid.SetRedraw(false);
    grid.SetRowVisible(2, false);
    grid.SetRowVisible(5, false);
    EXPECT_EQ(Shown(grid), QStringList({"Delta", "Alfa", "Eco", "Charlie", "Bravo"}));
    grid.SetRedraw(true);
    EXPECT_EQ(Shown(grid), QStringList({"Delta", "Eco", "Charlie"}));
    EXPECT_EQ(grid.VisibleRows(), 3);

    grid.SetSelectedRow(4);
    EXPECT_EQ(grid.SelectedRow(), 4);
    EXPECT_EQ(changes, 1);
    // A hidden row can't be selected.
    grid.SetSelectedRow(2);
    EXPECT_EQ(grid.SelectedRow(), 0);
    grid.SetSelectedRow(4);
    changes = 0;

    // Sorted, the title stays selected where its row went, with its data.
    grid.SortObject() = {{1, Grid::SortDescending, Grid::SortText}};
    grid.Sort(SortRanks);
    EXPECT_EQ(Shown(grid), QStringList({"Eco", "Delta", "Charlie"}));
    EXPECT_EQ(grid.SelectedRow(), 3);
    EXPECT_EQ(grid.CellText(3, 1), "Charlie");
    EXPECT_EQ(grid.RowData(3).toLongLong(), 104);
    EXPECT_EQ(grid.RowData(5).toLongLong(), 102);
    EXPECT_FALSE(grid.RowVisible(5));
    EXPECT_EQ(changes, 0);

    // A row above goes: the selection moves up with its title, no change.
    grid.RemoveRow(1);
    EXPECT_EQ(grid.SelectedRow(), 2);
    EXPECT_EQ(grid.RowData(2).toLongLong(), 104);
    EXPECT_EQ(changes, 0);

    // Hiding the selected row takes the selection with it.
    grid.SetRowVisible(2, false);
    EXPECT_EQ(grid.SelectedRow(), 0);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Shown(grid), QStringList({"Delta"}));

    grid.Clear();
    EXPECT_EQ(grid.model()->rowCount(), 0);
    EXPECT_FALSE(grid.RowData(1).isValid());
}

} // namespace
} // namespace cintal::test
