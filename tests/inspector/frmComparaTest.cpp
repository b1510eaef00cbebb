// The compare window on two tapes of a title: the aligned lists with their
// colours and sums, the clean-up of redundant blocks, and what closing keeps.

#include "inspector/frmCompara.h"
#include "WindowFixture.h"

#include <QApplication>
#include <QDir>

namespace cintal::test {
namespace {

class frmComparaTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        Title("Juego", "1986", 1, "Arcade", 1, 3);
        for (const char* f : {"juego.z80", "juego.tzx", "copia.tzx"}) {
            const QString name = QString::fromLatin1(f);
            Sql(db,
                "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) "
                "VALUES (1, ?, ?, 1, 1)",
                {name.section('.', 0, 0), name.section('.', 1)});
        }
        test::WriteFile(S(Disk("juego.z80")), "Z80");
        test::WriteFile(S(Disk("juego.tzx")), Tape({Archive({{0, "Juego"}}), Std(RomHeader(0, "a")),
                                                    Std(RomData(10)), Pause(5), Merge()},
                                                   1, 13));
        test::WriteFile(
            S(Disk("copia.tzx")),
            Tape({Std(RomHeader(0, "a")), Std(RomData(12)), Pause(5), Text("Nuevo")}, 1, 13));
    }
    void Open() {
        SelectTitle("Juego");
        window = std::make_unique<frmCompara>(frm.GridTitles, frm.GridFiles);
        window->Form_Load();
    }
    // Each row as "A-number|B-number|colour", the colour's name or "-".
    Texts Aligned() const {
        Texts rows;
        for (int r = 1; r <= window->GridTZX->Rows(); ++r) {
            const QColor c = window->GridTZX->CellBackColor(r, 3);
            const std::string colour = !c.isValid()                       ? "-"
                                       : c == frmCompara::ChangedColour() ? "distinto"
                                       : c == frmCompara::OnlyAColour()   ? "A"
                                       : c == frmCompara::OnlyBColour()   ? "B"
                                                                          : "?";
            rows.push_back(
                S(window->GridTZX->CellText(r, 1) + "|" + window->GridTZX2->CellText(r, 1)) + "|" +
                colour);
        }
        return rows;
    }
    std::unique_ptr<frmCompara> window;
};

TEST_F(frmComparaTest, OpensOnTheFirstTapeWithTheSecondBesideItAligned) {
    Open();
    EXPECT_EQ(window->TextPath->text(), Disk("juego.tzx"));
    EXPECT_EQ(window->ComboCompara->currentText(),
              "copia.tzx (" + QDir(dir.path()).dirName() + ")");
    EXPECT_EQ(window->ComboCompara->itemText(window->ComboCompara->count() - 1), "Otro archivo...");
    EXPECT_FALSE(window->ComboEstado->isVisible());
    EXPECT_FALSE(window->Label1[0]->isEnabled());
    EXPECT_TRUE(window->Label1[12]->isEnabled());
    EXPECT_EQ(Aligned(), (Texts{"1||-", "2|1|-", "3|2|distinto", "4|3|-", "|4|B", "5||-"}));
    EXPECT_EQ(S(window->LabelSummary->text()),
              "Iguales: 2  Distintos: 1  Sólo en A: 0  Sólo en B: 1");
    EXPECT_EQ(S(window->LabelArchive->text()), "La información de archivo es distinta");

    // The tape against itself: nothing differs.
    window->CompareWith(Disk("juego.tzx"));
    EXPECT_EQ(S(window->LabelSummary->text()),
              "Iguales: 3  Distintos: 0  Sólo en A: 0  Sólo en B: 0");
    EXPECT_EQ(S(window->LabelArchive->text()), "La información de archivo es igual");

    // Any tape from the disk, through the last entry.
    const QString other = Disk("otra.tzx");
    test::WriteFile(S(other), Tape({Pause(5)}, 1, 13));
    window->ChooseTape = [&] { return other; };
    window->ComboCompara_Click(window->ComboCompara->count() - 1);
    EXPECT_EQ(window->ComboCompara->currentText(), "otra.tzx");
    EXPECT_EQ(S(window->LabelSummary->text()),
              "Iguales: 1  Distintos: 0  Sólo en A: 2  Sólo en B: 0");
}

TEST_F(frmComparaTest, Command8DropsRedundantBlocksInMemoryOnly) {
    Open();
    const Bytes before = ReadFile(S(Disk("juego.tzx")));
    window->Command8_Click();
    EXPECT_EQ(Shown(), Texts{Box("Eliminados 1 bloques sobrantes.", "", Icon::Information)});
    EXPECT_EQ(window->Logic().Tape().Blocks().Count(), 4);
    // Blocks taken out wait to be saved like a typed text.
    EXPECT_FALSE(window->PendingClear());
    prompt.Answer(Button::No);
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_EQ(Shown()[1], Box("¿Guardar cambios en le archivo TZX?",
                              "Hay modificaciones pendientes", Icon::None, Buttons::YesNoCancel));
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), before));
}

TEST_F(frmComparaTest, ClosingAsksInItsOwnWordsAndSavesTheTitleWithoutItsSource) {
    Open();
    window->SetBoxText(Box::Title, "Juego Nuevo");
    window->TextInfo_KeyUp();
    window->TextName->setText("Juego 2");
    const std::string question =
        Box("¿Guardar cambios en le archivo TZX?", "Hay modificaciones pendientes", Icon::None,
            Buttons::YesNoCancel);
    prompt.Answer(Button::Cancel);
    EXPECT_FALSE(window->Form_Unload());
    prompt.Answer(Button::Yes);
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_EQ(Shown(), (Texts{question, question}));
    // The tape is saved from the fields; the name box isn't copied first.
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))),
                          Tape({Archive({{0, "Juego Nuevo"}}), Std(RomHeader(0, "a")),
                                Std(RomData(10)), Pause(5), Merge()},
                               1, 13)));
    EXPECT_EQ(Sql(db, "SELECT Name, Estado FROM Titles"),
              (std::vector<QVariantList>{{"Juego 2", 3}}));
    EXPECT_EQ(S(frm.GridTitles->CellText(1, frm.GridTitles->ColumnIndex("ColEstado"))), "3");
}

TEST_F(frmComparaTest, BothListsStandLevelScrollAsOneAndFitTheScreen) {
    // Long tapes that differ here and there, so that the lists scroll.
    Bytes a = Tape({}, 1, 13), b = Tape({}, 1, 13);
    for (int i = 0; i < 150; ++i) {
        a += Pause(i + 1);
        b += i % 40 == 7 ? Text("Otro") + Pause(i + 1) : Pause(i + 1);
    }
    test::WriteFile(S(Disk("juego.tzx")), a);
    test::WriteFile(S(Disk("copia.tzx")), b);
    Open();
    // A 1280x800 screen with the frame and the desktop's panel taken off.
    window->resize(1240, 720);
    window->show();
    QApplication::processEvents();
    EXPECT_EQ(window->Panes->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(window->Panes->horizontalScrollBar()->maximum(), 0);
    auto top = [&](Grid* g) { return g->viewport()->mapTo(window.get(), QPoint(0, 0)).y(); };
    EXPECT_EQ(top(window->GridTZX), top(window->GridTZX2));
    EXPECT_EQ(window->GridTZX->viewport()->height(), window->GridTZX2->viewport()->height());
    const int rows = window->GridTZX->Rows();
    ASSERT_EQ(window->GridTZX2->Rows(), rows);
    for (int at : {0, window->ScrollBoth->maximum() / 2, window->ScrollBoth->maximum()}) {
        window->ScrollBoth->setValue(at);
        EXPECT_EQ(window->GridTZX->rowAt(0), window->GridTZX2->rowAt(0)) << at;
    }
    // At the end both show their last rows.
    for (Grid* g : {window->GridTZX, window->GridTZX2})
        EXPECT_LE(g->visualRect(g->model()->index(rows - 1, 0)).bottom(), g->viewport()->height());
    // Either list scrolled on its own takes the other along.
    window->GridTZX2->verticalScrollBar()->setValue(5);
    EXPECT_EQ(window->GridTZX->rowAt(0), window->GridTZX2->rowAt(0));
    EXPECT_EQ(window->ScrollBoth->value(), window->GridTZX->verticalScrollBar()->value());
    // Every column of the right list shows, Inicio and Final included.
    Grid* g = window->GridTZX2;
    const int fin = g->ColumnIndex("ColFin") - 1;
    EXPECT_LE(g->columnViewportPosition(fin) + g->columnWidth(fin), g->viewport()->width());
    EXPECT_GE(g->columnWidth(fin), g->fontMetrics().horizontalAdvance(g->CellText(rows, fin + 1)));
    // A 1024x768 screen: the window fits it, and its panes scroll.
    EXPECT_LE(window->minimumSizeHint().width(), 1000);
    EXPECT_LE(window->minimumSizeHint().height(), 700);
}

TEST_F(frmComparaTest, ATapeReadInPartIsToldWithWhereItStopped) {
    Open();
    // The file ends inside the fields of its third block.
    const Bytes whole = Tape({Std(RomHeader(0, "a")), Std(RomData(12))}, 1, 13);
    const QString cut = Disk("corta.tzx");
    test::WriteFile(S(cut), whole + B({0x10}));
    window->ChooseTape = [&] { return cut; };
    window->ComboCompara_Click(window->ComboCompara->count() - 1);
    EXPECT_TRUE(window->LabelAviso->isVisibleTo(window.get()));
    EXPECT_EQ(S(window->LabelAviso->text()),
              "La cinta B no se leyó entera: el archivo termina dentro del bloque 0x10 (bloque 3, "
              "byte " +
                  std::to_string(whole.size() + 1) + "). Lo que sigue no entra en la comparación.");
    // A tape read whole says nothing.
    window->CompareWith(Disk("copia.tzx"));
    EXPECT_FALSE(window->LabelAviso->isVisibleTo(window.get()));
}

} // namespace
} // namespace cintal::test
