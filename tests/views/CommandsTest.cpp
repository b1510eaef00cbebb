// The main window's toolbar, popup menus and the file it is given, driven as
// a user would: the questions asked, what the grids show afterwards, what the
// store and the disk hold, and what is handed to the browser.

#include "MainWindowFixture.h"
#include "inspector/Info.h"
#include "widgets/ComboAutoComplete.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>

namespace cintal::test {
namespace {

class CommandsTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        QDir(dir.path()).mkpath("uno");
        one = dir.filePath("uno");
    }

    // True when every cell the user sees of the selected title row has these colours.
    bool RowColoured(const QColor& back, const QColor& fore) const {
        Grid* g = frm.GridTitles;
        for (int c = 1; c <= g->Columns(); ++c)
            if (g->ColumnVisible(c) && (g->CellBackColor(g->SelectedRow(), c) != back ||
                                        g->CellForeColor(g->SelectedRow(), c) != fore))
                return false;
        return true;
    }
    int Count(const char* table) {
        return Sql(db, QStringLiteral("SELECT count(*) FROM %1").arg(table))[0][0].toInt();
    }

    const QColor base = QApplication::palette().color(QPalette::Base);
    const QColor text = QApplication::palette().color(QPalette::Text);
    const QColor grey = QColor(0xE0, 0xE0, 0xE0), greyText = QColor(0x66, 0x99, 0xCC);
    const std::string question = Box("¿Eliminar también físicamente el archivo del disco duro?",
                                     "Eliminar registro", Icon::Critical, Buttons::YesNo);
    QString one;
};

TEST_F(CommandsTest, ToolbarShowsItsTipsAndKeepsUnbuiltCommandsOutOfReach) {
    TitleWithId("Juego");
    Load();
    const std::vector<std::pair<QAction*, std::string>> tips = {
        {frm.CmdSearch, "Buscar archivos en disco"},
        {frm.CmdModify, "Información del registro"},
        {frm.Command3, "Reordenar colección"},
        {frm.Command7, "Opciones"},
        {frm.CmdLimpiaEmpty, "Vacía la base de datos"}};
    for (const auto& [action, tip] : tips) {
        EXPECT_EQ(S(action->toolTip()), tip);
        EXPECT_TRUE(action->isVisible() && !action->icon().isNull()) << tip;
        EXPECT_EQ(action->isEnabled(), action != frm.CmdModify) << tip;
    }
    EXPECT_EQ(S(frm.Command2->text()), "Comparar cintas");
    EXPECT_TRUE(frm.Command2->isVisible() && !frm.Command2->icon().isNull());
    EXPECT_FALSE(frm.Command2->isEnabled());
    Select("Juego");
    EXPECT_TRUE(frm.CmdModify->isEnabled());
    // Comparing needs a tape among the title's files.
    EXPECT_FALSE(frm.Command2->isEnabled());
    File(1, "juego", "TZX");
    frm.GridTitles->ClearSelection();
    Select("Juego");
    EXPECT_TRUE(frm.Command2->isEnabled());
    frm.GridTitles->ClearSelection();
    EXPECT_FALSE(frm.Command2->isEnabled());
}

TEST_F(CommandsTest, AFileAddedByHandColoursTheRowButNotItsHaveItCell) {
    const qint64 t = TitleWithId("Juego", 0, 0);
    const QString file = QDir(one).filePath("juego.tzx");
    WriteFile(file, QByteArray::fromStdString(Tape({Std(RomData(10))})));
    Load();
    Select("Juego");
    ASSERT_TRUE(RowColoured(grey, greyText));
    QStringList filters;
    QString answer;
    frm.ChooseFile = [&](const QString& filter) {
        filters << filter;
        return answer;
    };

    frm.mnuAddDBfile_Click(); // the dialog closed without a choice
    EXPECT_TRUE(prompt.shown.empty());
    answer = file;
    frm.mnuAddDBfile_Click();
    EXPECT_EQ(S(filters.value(0)),
              "Archivo TZX (*.tzx)|*.tzx|Archivo TAP (*.tap)|*.tap|Archivo Z80 (*.z80)|*.z80|"
              "Archivo sna (*.sna)|*.sna|Archivo DSK (*.dsk)|*.dsk|Archivo TRD (*.trd)|*.trd|"
              "Archivo slt (*.slt)|*.slt|Archivo sp (*.sp)|*.sp|");
    // The folder is the first of an empty table: its number is told too.
    EXPECT_EQ(Shown(), (Texts{Box("1"), Box("Archivo Agregado", "", Icon::Information)}));
    EXPECT_EQ(frm.GridFiles->Rows(), 1);
    EXPECT_TRUE(RowColoured(base, text));
    EXPECT_EQ(S(TitleCell("ColHaveIt")), "0");
    EXPECT_EQ(Sql(db, "SELECT HaveIt FROM Titles WHERE TitleId = ?", {t})[0][0].toInt(), 1);

    prompt.shown.clear();
    frm.mnuAddDBfile_Click();
    EXPECT_EQ(Shown(), Texts{Box("Ya existe")});
    EXPECT_EQ(Count("tFiles"), 1);
}

TEST_F(CommandsTest, DeletingATitleAsksFirstAndDropsTheComboItemAtItsRow) {
    TitleWithId("Alfa", 0, 1, "1986");
    TitleWithId("Beta", 0, 1, "1985");
    const qint64 gamma = TitleWithId("Gamma", 0, 1, "1984");
    File(gamma, "gamma", "tzx");
    Load();
    frm.GridTitles_HeaderClick(frm.GridTitles->ColumnIndex("ColYear")); // oldest first
    Select("Gamma");
    ASSERT_EQ(frm.GridTitles->SelectedRow(), 1);
    ASSERT_EQ(frm.GridFiles->Rows(), 1);
    const std::string ask =
        Box("¿Desea eliminar la entrada \"" + std::to_string(gamma) + " - Gamma\"?",
            "Eliminar registro", Icon::Critical, Buttons::YesNo);

    prompt.Answer(Button::No);
    frm.mnuDelTitle_Click();
    EXPECT_EQ(Shown(), Texts{ask});
    EXPECT_EQ(Count("Titles"), 3);
    EXPECT_EQ(frm.GridTitles->Rows(), 3);

    prompt.Answer(Button::Yes);
    frm.mnuDelTitle_Click();
    EXPECT_EQ(Shown(), (Texts{ask, ask, Box("Registro eliminado", "", Icon::Information)}));
    EXPECT_EQ(Count("Titles"), 2);
    EXPECT_EQ(Count("tFiles"), 1) << "a title's files outlive it";
    Grid* g = frm.GridTitles;
    ASSERT_EQ(g->Rows(), 2);
    EXPECT_EQ(S(g->CellText(1, g->ColumnIndex("ColName"))), "Beta");
    // The list keeps the order of the load: its first item went, not "Gamma".
    ASSERT_EQ(frm.ComboRegistro->count(), 2);
    EXPECT_EQ(S(frm.ComboRegistro->itemText(0)), "Beta");
    EXPECT_EQ(S(frm.ComboRegistro->itemText(1)), "Gamma");
    EXPECT_EQ(frm.GridFiles->Rows(), 0);
}

TEST_F(CommandsTest, DeletingFilesAsksTwiceAndGreysTheTitleOnlyWithItsLastFile) {
    Path(1, one);
    const qint64 t = TitleWithId("Juego");
    for (const char* name : {"rock'n'roll", "di \"hola\"", "queda", "perdido"})
        File(t, name, "tzx");
    File(t, "sin carpeta", "tzx", 9); // a PathIndex the register lacks
    for (const char* name : {"rock'n'roll.tzx", "di \"hola\".tzx", "queda.tzx"})
        WriteFile(QDir(one).filePath(name), "ZXTape!");
    Load();
    Select("Juego");
    auto del = [&](const QString& name, std::initializer_list<Button> answers) {
        prompt.shown.clear();
        prompt.answers.assign(answers);
        SelectFile(name);
        frm.mnuDelFile_Click();
        return Shown();
    };
    auto ask = [&](const QString& name) {
        return Box("¿Desea eliminar la entrada \"" + S(QDir(one).filePath(name)) + "\"?",
                   "Eliminar registro", Icon::Critical, Buttons::YesNo);
    };
    const std::string deleted = Box("Archivo borrado", "", Icon::Information);

    EXPECT_EQ(del("perdido.tzx", {Button::No}).size(), 1u); // No to the first question
    EXPECT_EQ(Count("tFiles"), 5);
    for (const QString name : {"rock'n'roll.tzx", "di \"hola\".tzx"}) {
        EXPECT_EQ(del(name, {Button::Yes, Button::Yes}), (Texts{ask(name), question, deleted}));
        EXPECT_FALSE(QFile::exists(QDir(one).filePath(name)));
    }
    // Not on disk, or in a folder the catalogue doesn't know: deleted all the same.
    EXPECT_EQ(del("perdido.tzx", {Button::Yes, Button::Yes}).back(), deleted);
    EXPECT_EQ(del("sin carpeta.tzx", {Button::Yes, Button::Yes}).back(), deleted);
    EXPECT_TRUE(RowColoured(base, text)) << "one file is left";

    EXPECT_EQ(
        del("queda.tzx", {Button::Yes, Button::No}),
        (Texts{ask("queda.tzx"), question, Box("Registro eliminado", "", Icon::Information)}));
    EXPECT_TRUE(QFile::exists(QDir(one).filePath("queda.tzx")));
    EXPECT_EQ(Count("tFiles"), 0);
    EXPECT_EQ(frm.GridFiles->Rows(), 0);
    EXPECT_TRUE(RowColoured(grey, greyText));
    EXPECT_EQ(S(TitleCell("ColHaveIt")), "1");
    EXPECT_EQ(Sql(db, "SELECT HaveIt FROM Titles")[0][0].toInt(), 0);
}

TEST_F(CommandsTest, WebLookUpsTurnBlanksIntoPlusAndLeaveTheUnknownPublisherOut) {
    Publisher(1, "- Desconocida -");
    Publisher(2, "- Desconocido -");
    Publisher(3, "Ocean Software");
    TitleWithId("Mi Juego Largo", 1);
    TitleWithId("Otro Juego", 2);
    TitleWithId("Año & Cía", 3);
    TitleWithId("Sin Editor", 0);
    Load();
    const std::string infoseek = "https://www.worldofspectrum.org/infoseek.cgi?regexp=^";
    for (const char* name : {"Mi Juego Largo", "Otro Juego", "Año & Cía", "Sin Editor"}) {
        Select(name);
        frm.mnuInfoseek_Click();
    }
    Select("Mi Juego Largo");
    frm.MnuTipShop_Click();
    EXPECT_EQ(S(shell.calls.join('\n')),
              infoseek + "Mi+Juego+Largo\n" + infoseek + "Otro+Juego&pub=^-+Desconocido+-\n" +
                  infoseek + "Año+&+Cía&pub=^Ocean+Software\n" + infoseek + "Sin+Editor\n" +
                  "https://www.the-tipshop.co.uk/cgi-bin/search.pl?name=Mi+Juego+Largo");
    EXPECT_TRUE(prompt.shown.empty());

    shell.result = false;
    frm.MnuTipShop_Click();
    EXPECT_EQ(Shown(),
              Texts{Box("No se puede abrir el navegador para "
                        "https://www.the-tipshop.co.uk/cgi-bin/search.pl?name=Mi+Juego+Largo",
                        "", Icon::Exclamation)});
}

TEST_F(CommandsTest, EmptyingTheCatalogueTakesTitlesOnly) {
    Path(1, one);
    Publisher(1, "Ocean");
    const qint64 t = TitleWithId("Juego", 1);
    TitleWithId("Otro", 1);
    File(t, "juego", "tzx");
    Load();
    Select("Juego");
    const std::string ask =
        Box("esto borrará la base de datos", "", Icon::Exclamation, Buttons::YesNo);

    prompt.Answer(Button::No);
    frm.CmdLimpiaEmpty_Click();
    EXPECT_EQ(Count("Titles"), 2);
    EXPECT_EQ(frm.GridTitles->Rows(), 2);

    prompt.Answer(Button::Yes);
    frm.CmdLimpiaEmpty_Click();
    EXPECT_EQ(Shown(), (Texts{ask, ask}));
    EXPECT_EQ(Count("Titles"), 0);
    EXPECT_EQ(Count("tFiles") + Count("Paths") + Count("Publishers"), 3);
    EXPECT_EQ(S(frm.windowTitle()), "Cintal - 0 programas hallados");
    EXPECT_EQ(frm.GridTitles->Rows(), 0);
    EXPECT_EQ(frm.GridFiles->Rows(), 0);
}

TEST_F(CommandsTest, EmptyingACatalogueWithoutTitlesLeavesTheWindowAsItIs) {
    Path(1, one);
    const qint64 t = TitleWithId("Juego");
    TitleWithId("Otro");
    File(t, "juego", "tzx");
    Load();
    Select("Juego");
    const std::string caption = S(frm.windowTitle());
    // Another program (cintal-cli, a second window) has emptied the titles.
    Sql(db, "DELETE FROM Titles");

    prompt.Answer(Button::Yes);
    frm.CmdLimpiaEmpty_Click();
    EXPECT_EQ(Shown(),
              Texts{Box("esto borrará la base de datos", "", Icon::Exclamation, Buttons::YesNo)});
    EXPECT_EQ(S(frm.windowTitle()), caption);
    EXPECT_EQ(frm.GridTitles->Rows(), 2);
    EXPECT_EQ(frm.GridTitles->model()->rowCount(), 2);
    EXPECT_EQ(S(TitleCell("ColName")), "Juego");
    EXPECT_EQ(frm.GridFiles->Rows(), 1);
    EXPECT_EQ(frm.ComboRegistro->count(), 2);
}

TEST_F(CommandsTest, ATapBecomesATzxOfTheTitleAndTheRecordThenOpensTheInspector) {
    Path(1, one);
    const qint64 t = TitleWithId("Juego");
    File(t, "juego", "tap");
    const Bytes header = RomHeader(3, "juego"), data = RomData(5);
    WriteFile(QDir(one).filePath("juego.tap"),
              QByteArray::fromStdString(Le(header.size(), 2) + header + Le(data.size(), 2) + data));
    Load();
    QStringList opened;
    frm.RunModal = [&](QDialog& window) {
        opened << window.objectName();
        window.close();
    };
    frm.CmdModify_Click(); // no title selected: nothing opens
    Select("Juego");
    frm.CmdModify_Click();
    EXPECT_EQ(opened, QStringList{"TitleInfo"});
    SelectFile("juego.tap");
    frm.mnuTap2Tzx_Click();

    const QString tzx = QDir(one).filePath("juego.tzx");
    const Bytes expected = "ZXTape!\x1A" + B({1, 13}) + B({0x10}) + Le(1000, 2) +
                           Le(header.size(), 2) + header + B({0x10}) + Le(1000, 2) +
                           Le(data.size(), 2) + data;
    EXPECT_TRUE(SameBytes(Contents(tzx).toStdString(), expected));
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(Shown()[0], Box("Archivo convertido: " + S(tzx), "", Icon::Information));
    EXPECT_EQ(Sql(db, "SELECT FileName, Extension, TitleId FROM tFiles WHERE Extension = 'tzx'"),
              (std::vector<QVariantList>{{"juego", "tzx", t}}));
    EXPECT_EQ(frm.GridFiles->Rows(), 2);

    // A TZX among the files opens the inspector, whichever row is selected.
    SelectFile("juego.tap");
    frm.CmdModify_Click();
    EXPECT_EQ(opened, (QStringList{"TitleInfo", "Info"}));

    // Once the TZX exists the engine refuses, and nothing is added. Closing
    // the inspector listed the files again, without a selection.
    prompt.shown.clear();
    SelectFile("juego.tap");
    frm.mnuTap2Tzx_Click();
    EXPECT_EQ(Shown(), Texts{Box("Ya existe " + S(tzx), "Convertir en TZX", Icon::Critical)});
    EXPECT_EQ(Count("tFiles"), 2);
}

TEST(ComboAutoCompleteTest, ProposesTheRestOfTheFirstItemAndSwallowsOtherKeys) {
    QComboBox box;
    box.setEditable(true);
    box.addItems({"Beta", "Alfa", "Alfombra"});
    box.setCurrentIndex(-1);
    QLineEdit* edit = box.lineEdit();
    ASSERT_TRUE(edit->text().isEmpty());
    auto state = [&] { return S(edit->text() + "|" + edit->selectedText()); };

    EXPECT_EQ(ComboAutoComplete(&box, 'a', false), 0);
    EXPECT_EQ(state(), "Alfa|lfa");
    EXPECT_EQ(edit->selectionStart(), 1);
    EXPECT_EQ(box.currentIndex(), 1);
    EXPECT_EQ(ComboAutoComplete(&box, 'z', false), 'z') << "no item: the key is the box's";
    EXPECT_EQ(ComboAutoComplete(&box, 'z', true), 0);
    for (int key : {13, 9, 27, 128, 0xF1})
        EXPECT_EQ(ComboAutoComplete(&box, key, false), 0) << key;
    EXPECT_EQ(state(), "Alfa|lfa");

    // Typed without a selection, the whole text counts, in any case.
    edit->setText("alfo");
    EXPECT_EQ(ComboAutoComplete(&box, 'm', false), 0);
    EXPECT_EQ(state(), "Alfombra|bra");
    // Backspace steps back one letter before the selection.
    EXPECT_EQ(ComboAutoComplete(&box, 8, false), 0);
    EXPECT_EQ(state(), "Alfombra|mbra");
    EXPECT_EQ(ComboAutoComplete(&box, 8, false), 0);
    EXPECT_EQ(state(), "Alfa|a");

    edit->setSelection(1, 3);
    EXPECT_EQ(ComboAutoComplete(&box, 8, false), 0);
    EXPECT_EQ(state(), "|");
    edit->setText("Beta");
    edit->setCursorPosition(0);
    EXPECT_EQ(ComboAutoComplete(&box, 8, false), 0);
    EXPECT_EQ(state(), "|");
}

// A file given on the command line, as a double click in the file manager
// gives it.
TEST_F(CommandsTest, AGivenTapeOpensInTheInspectorWithItsTitleOrAlone) {
    Path(1, one);
    File(TitleWithId("Juego"), "juego", "tzx");
    const Bytes tape = Tape({Archive({{0, "Juego"}}), Std(RomHeader(3, "juego"))}, 1, 13);
    WriteFile(QDir(one).filePath("juego.tzx"), QByteArray::fromStdString(tape));
    QDir(dir.path()).mkpath("fuera");
    const QString loose = dir.filePath("fuera/suelta.tzx");
    WriteFile(loose, QByteArray::fromStdString(tape));
    const QString text = dir.filePath("fuera/nota.txt");
    WriteFile(text, "hola");
    Load();
    struct Seen {
        QString name, path;
        bool titlePane;
    };
    std::vector<Seen> seen;
    std::function<void(Info&)> act = [](Info&) {};
    frm.RunModal = [&](QDialog& window) {
        auto& info = static_cast<Info&>(window);
        seen.push_back({info.TextName->text(), info.TextPath->text(), !info.Frame1->isHidden()});
        act(info);
        window.close();
    };

    // In the catalogue: its title, selected in the main window too.
    frm.OpenGivenFile(QDir(one).filePath("juego.tzx"));
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(S(seen[0].name), "Juego");
    EXPECT_EQ(seen[0].path, QDir(one).filePath("juego.tzx"));
    EXPECT_TRUE(seen[0].titlePane);
    EXPECT_EQ(S(TitleCell("ColName")), "Juego");

    // Outside it: the tape pane alone, whose information still saves.
    act = [](Info& info) {
        info.SetBoxText(Box::Title, "Suelta");
        info.TextInfo_KeyUp();
        EXPECT_TRUE(info.CmdTZXSave_Click());
    };
    frm.OpenGivenFile(loose);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[1].path, loose);
    EXPECT_FALSE(seen[1].titlePane);
    EXPECT_NE(Contents(loose).indexOf("Suelta"), -1);
    EXPECT_EQ(Count("tFiles"), 1);
    EXPECT_EQ(Shown(), Texts{}) << "nothing was left pending to ask about";

    // Not a tape, or no file: said over the main window.
    frm.OpenGivenFile(text);
    frm.OpenGivenFile(dir.filePath("fuera/no.tzx"));
    EXPECT_EQ(seen.size(), 2u);
    EXPECT_EQ(Shown(), (Texts{Box("El archivo " + S(text) +
                                      " no es una cinta TZX: no se puede ver en el inspector",
                                  "Cintal", Icon::Exclamation),
                              Box("No se encuentra el archivo " + S(dir.filePath("fuera/no.tzx")),
                                  "Cintal", Icon::Exclamation)}));
}

} // namespace
} // namespace cintal::test
