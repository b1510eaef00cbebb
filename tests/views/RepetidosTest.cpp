// "Archivos repetidos" from the main window: the groups of files with the
// same bytes, and a double click that leads back to a file's title.

#include "MainWindowFixture.h"
#include "maintenance/FrmRepetidos.h"

#include <QAction>
#include <QDir>
#include <QLabel>

namespace cintal::test {
namespace {

using RepetidosTest = MainWindowTest;

TEST_F(RepetidosTest, ListsTheGroupsAndADoubleClickSelectsTheFilesTitle) {
    Path(1, dir.path());
    const qint64 uno = TitleWithId("Uno");
    const qint64 dos = TitleWithId("Dos");
    File(uno, "uno", "tzx", 1, {1, {}, {}, 1400});
    File(dos, "copia", "tzx", 1, {1, {}, {}, 1400});
    File(dos, "Juegos", "zip", 1, {1, {}, {}, 1400});
    File(dos, "otro", "tzx", 1, {1, {}, {}, 1400});
    Sql(db, "UPDATE tFiles SET Sha1 = 'aa' WHERE FileName <> 'otro'");
    Sql(db, "UPDATE tFiles SET Sha1 = 'bb', InnerPath = NULL WHERE FileName = 'otro'");
    Sql(db, "UPDATE tFiles SET InnerPath = 'cintas/uno.tzx' WHERE FileName = 'Juegos'");
    Load();

    std::vector<std::string> rows;
    frm.RunModal = [&](QDialog& window) {
        auto& w = static_cast<FrmRepetidos&>(window);
        Grid* g = w.GridFiles;
        for (int r = 1; r <= g->Rows(); ++r) {
            QStringList cells;
            for (int c = 1; c <= g->Columns(); ++c)
                cells << g->CellText(r, c);
            rows.push_back(S(cells.join('|')));
        }
        EXPECT_EQ(S(w.LabelResumen->text()), "1 grupo, 3 archivos");
        w.GridFiles_DblClick(2);
    };
    frm.findChild<QAction*>("CmdRepetidos")->trigger();
    const QString d = dir.path();
    EXPECT_EQ(rows,
              (Texts{S("1|1400|aa|Uno|" + d + "/uno.tzx"), S("1|1400|aa|Dos|" + d + "/copia.tzx"),
                     S("1|1400|aa|Dos|" + d + "/Juegos.zip|cintas/uno.tzx")}));
    EXPECT_EQ(S(TitleCell("ColName")), "Dos");
    EXPECT_EQ(frm.GridFiles->Rows(), 3);
}

} // namespace
} // namespace cintal::test
