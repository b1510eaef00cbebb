// The tape inspector driven as a collector would: opened from the main
// window on a title, boxes typed into, arrows pressed, blocks moved, the tape
// saved and the window closed; then the bytes on disk, the rows of the store
// and the cells of both grids are looked at.

#include "inspector/Info.h"
#include "WindowFixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLocale>
#include <QScrollBar>
#include <functional>

namespace cintal::test {
namespace {

class InfoTest : public WindowTest {
protected:
    qint64 TitleWithId(const QString& name, const QVariant& year = "1986", qint64 idPub = 1,
                       const QVariant& estado = 4) {
        Title(name, year, idPub, "Arcade", 1, estado);
        return LastId("Titles", "TitleId");
    }
    qint64 File(qint64 title, const QString& name, const QString& ext) {
        Sql(db,
            "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt, Origin, "
            "IdLang, LoadSchema, FileSize) VALUES (?, ?, ?, 1, 1, 'Original', 'spa', 'Normal', 7)",
            {title, name, ext});
        return LastId("tFiles", "FileId");
    }
    void Put(const QString& name, const Bytes& bytes) { test::WriteFile(S(Disk(name)), bytes); }

    // The main window on the catalogue, the title selected, the inspector open.
    Info& Open(const QString& title) {
        SelectTitle(title);
        info = std::make_unique<Info>(frm.GridTitles, frm.GridFiles);
        info->Form_Load();
        return *info;
    }
    // The title "Juego" with the one tape juego.tzx, the inspector open on it.
    qint64 OpenTape(const Bytes& bytes, const QVariant& year = "1986", const QVariant& estado = 4) {
        const qint64 f = File(TitleWithId("Juego", year, 1, estado), "juego", "tzx");
        Put("juego.tzx", bytes);
        Open("Juego");
        return f;
    }

    static Texts Rows(Grid* g, std::initializer_list<const char*> keys) {
        Texts rows;
        for (int r = 1; r <= g->Rows(); ++r) {
            QStringList cells;
            for (const char* key : keys)
                cells << g->CellText(r, g->ColumnIndex(key));
            rows.push_back(S(cells.join('|')));
        }
        return rows;
    }
    Texts Blocks() const {
        return Rows(info->GridTZX, {"ColRow", "ColTipoBloque", "ColInicio", "ColFin"});
    }
    QString FileCell(const char* key) const {
        return info->GridFiles->CellText(info->GridFiles->SelectedRow(),
                                         info->GridFiles->ColumnIndex(key));
    }
    // A key typed into a box as the desktop delivers it: press, then release.
    static void Type(QWidget* w, int key, const QString& text,
                     Qt::KeyboardModifiers mods = Qt::NoModifier) {
        QKeyEvent press(QEvent::KeyPress, key, mods, text);
        QApplication::sendEvent(w, &press);
        QKeyEvent release(QEvent::KeyRelease, key, mods, text);
        QApplication::sendEvent(w, &release);
    }
    std::string Field(std::string ArchiveInfo::*f) { return info->Logic().Tape().ArchiveInfo().*f; }

    // A tape of version 1.10 with its archive info last, as old tools left it.
    Bytes OldTape() {
        return Tape({Std(RomHeader(0, "juego")), Std(RomData(40)), Pause(1000), Group("Nivel"),
                     B({0x22}),
                     Archive({{0, "Juego"},
                              {1, "Dinamic"},
                              {3, "1986"},
                              {4, "Spanish"},
                              {7, "Normal"},
                              {255, "Uno\rDos\r"}})},
                    1, 10);
    }

    std::unique_ptr<Info> info;
    const std::string agree = Box("¿Desea agregar la compañía a la base de datos?",
                                  "Compañía desconocida", Icon::Exclamation, Buttons::YesNo);
    const std::string question =
        Box("¿Guardar cambios en el archivo TZX?", "Hay modificaciones pendientes", Icon::None,
            Buttons::YesNoCancel);
};

TEST_F(InfoTest, OpensTheFirstFileWhateverItIsAndShowsTheTitleAndTheTapeOfAnother) {
    const qint64 t = TitleWithId("Juego", "1979", 2, 6);
    File(t, "juego", "z80");
    File(t, "juego", "tzx");
    Put("juego.z80", "no es una cinta");
    Put("juego.tzx", OldTape());
    Open("Juego");

    // The catalogue pane from the title row: no source item for 6, no year
    // for 1979, the publisher and type as the grid shows them.
    EXPECT_EQ(info->TextName->text(), "Juego");
    EXPECT_EQ(info->ComboPub->currentText(), "Ocean");
    EXPECT_EQ(info->ComboTipo->currentText(), "Arcade");
    EXPECT_EQ(info->ComboEstado->currentIndex(), -1);
    EXPECT_EQ(info->ComboEstado->count(), 6);
    EXPECT_EQ(info->ComboEstado->itemText(3), "Distribución prohibida");
    EXPECT_EQ(info->ListYear->currentIndex(), -1);
    EXPECT_EQ(info->ListYear->count(), 52);
    EXPECT_EQ(info->ComboPub->count(), 2); // the register from slot 1
    EXPECT_EQ(info->ComboLang->count(), 22);
    EXPECT_EQ(info->ComboOrigin->itemText(8), "Demo version");

    // Row 1 is opened though it isn't a tape, and can't be saved.
    EXPECT_EQ(info->TextPath->text(), Disk("juego.z80"));
    EXPECT_EQ(info->GridTZX->Rows(), 0);
    EXPECT_EQ(info->windowTitle(), "Archivo " + Disk("juego.z80") + " - versión 0.0");
    EXPECT_FALSE(info->CmdTZXSave->isEnabled());
    EXPECT_EQ(info->CmdTZXSave->toolTip(), "No es una cinta TZX");
    EXPECT_TRUE(info->TZXSaveTag());

    // A key in the year box, then the other file: asked first; No lets the change go.
    info->GridFiles->SetSelectedRow(1);
    Type(info->TextInfo[Box::Year], Qt::Key_5, "5");
    EXPECT_FALSE(info->TZXSaveTag());
    prompt.Answer(Button::No);
    info->GridFiles->SetSelectedRow(2);
    EXPECT_TRUE(info->TZXSaveTag());
    EXPECT_EQ(Shown(), Texts{question});
    prompt.shown.clear();
    EXPECT_EQ(info->windowTitle(), "Archivo " + Disk("juego.tzx") + " - versión 1.10");
    EXPECT_TRUE(info->CmdTZXSave->isEnabled());
    EXPECT_EQ(Blocks(), (Texts{"1|Bloque estandar|11|34", "2|Bloque estandar|35|81",
                               "3|Pausa/detención|82|84", "4|Inicio de grupo|85|91",
                               "5|Final de grupo|92|92", "6|Info de archivo|93|145"}));
    EXPECT_EQ(info->BoxText(Box::Title), "Juego");
    EXPECT_EQ(info->BoxText(Box::Year), "1986");
    EXPECT_EQ(info->ComboLang->currentText(), "Spanish");
    EXPECT_EQ(info->ComboOrigin->currentText(), "");

    // A file gone from the disk: the reader's box, an empty list, no save.
    QFile::remove(Disk("juego.z80"));
    info->GridFiles->SetSelectedRow(1);
    EXPECT_EQ(Shown(), Texts{Box("no existe el archivo!!!!!")});
    EXPECT_EQ(info->CmdTZXSave->toolTip(), "El archivo no existe");
    EXPECT_EQ(info->BoxText(Box::Title), "");
}

TEST_F(InfoTest, TheYearAndSourceOfTheTitleRowPickTheirItems) {
    for (const auto& [year, estado, yearIndex, estadoIndex] :
         std::vector<std::tuple<QVariant, QVariant, int, int>>{
             {"", 0, 0, 0}, {"0", 5, 0, 5}, {"2031", 2, -1, 2}, {"1980", 3, 1, 3}}) {
        Sql(db, "DELETE FROM Titles");
        OpenTape(OldTape(), year, estado);
        EXPECT_EQ(info->ListYear->currentIndex(), yearIndex) << S(year.toString());
        EXPECT_EQ(info->ComboEstado->currentIndex(), estadoIndex);
    }
}

TEST_F(InfoTest, PositionsCountTheFileFromElevenByTheLengthsInTheList) {
    OpenTape(Tape({}));
    EXPECT_EQ(info->GridTZX->Rows(), 0);
    for (int n : {1, 2, 3})
        info->Logic().Tape().Blocks().Add(0x20, "", Bytes(std::size_t(n), '\0'), n);
    info->FillGrid();
    EXPECT_EQ(Rows(info->GridTZX, {"ColRow", "ColIdTipoBloque", "ColInicio", "ColFin"}),
              (Texts{"1|32|11|11", "2|32|12|13", "3|32|14|16"}));
}

TEST_F(InfoTest, TheBlockListShowsEveryColumnAndWholeKindsBesideThePreview) {
    OpenTape(OldTape());
    info->show();
    QApplication::processEvents();
    EXPECT_EQ(info->size(), QSize(1280, 800));
    Grid* g = info->GridTZX;
    EXPECT_EQ(g->horizontalScrollBar()->maximum(), 0);
    EXPECT_LE(g->columnViewportPosition(g->ColumnIndex("ColFin") - 1) +
                  g->columnWidth(g->ColumnIndex("ColFin") - 1),
              g->viewport()->width());
    for (const char* kind : {"Parar la cinta si 48K", "Secuencia de pulsos", "Info personalizada"})
        EXPECT_LT(g->fontMetrics().horizontalAdvance(QString::fromLatin1(kind)),
                  g->columnWidth(g->ColumnIndex("ColTipoBloque") - 1))
            << kind;
    EXPECT_GE(info->FramePreview->width(), 200);
    EXPECT_EQ(info->SplitBlocks->indexOf(g), 0);
    EXPECT_EQ(info->SplitBlocks->indexOf(info->FramePreview), 1);
}

TEST_F(InfoTest, OnlyAsciiCanBeTypedIntoTheTapeBoxes) {
    OpenTape(OldTape());
    const std::string ascii =
        Box("El formato sólo admite caracteres ASCII.", "Cintal", Icon::Information);
    for (int key : {13, 8, 3, 22, 24, 32, int('a'), 127})
        EXPECT_EQ(info->TextInfo_KeyPress(Box::Title, key), key) << key;
    EXPECT_TRUE(prompt.shown.empty());
    for (int key : {128, 233, 1, 26}) {
        prompt.shown.clear();
        EXPECT_EQ(info->TextInfo_KeyPress(Box::Type, key), 0) << key;
        EXPECT_EQ(Shown(), Texts{ascii}) << key;
    }

    // Typed for real: the letter doesn't appear, the release still writes
    // the boxes and marks the tape pending. A cursor key does as much.
    prompt.shown.clear();
    auto* name = static_cast<QLineEdit*>(info->TextInfo[Box::Title]);
    name->setFocus();
    name->setCursorPosition(5);
    Type(name, Qt::Key_unknown, QStringLiteral("é"));
    EXPECT_EQ(Shown(), Texts{ascii});
    EXPECT_EQ(name->text(), "Juego");
    EXPECT_FALSE(info->TZXSaveTag());
    info->GridFiles->SetSelectedRow(1);
    Type(name, Qt::Key_Left, QString());
    EXPECT_FALSE(info->TZXSaveTag());
    Type(name, Qt::Key_X, "x");
    EXPECT_EQ(Field(&ArchiveInfo::iName), "Juegxo");

    // Enter in a one-line box presses no button: nothing is saved.
    const Bytes before = ReadFile(S(Disk("juego.tzx")));
    info->show();
    Type(name, Qt::Key_Return, "\r");
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), before));
    EXPECT_FALSE(QFile::exists(Disk("juego.tmp")));

    // The language box is no tape box: the accent brings no message.
    prompt.shown.clear();
    Type(info->ComboLang->lineEdit(), Qt::Key_unknown, QStringLiteral("é"));
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(InfoTest, LinesEndInCarriageReturnsOnTheTapeAndInPairsInTheBoxes) {
    OpenTape(OldTape());
    // Shown: every lone CR gets its LF, in the box and in the field, the
    // last line too.
    EXPECT_EQ(info->BoxText(Box::Comments), "Uno\r\nDos\r\n");
    EXPECT_EQ(Field(&ArchiveInfo::iComments), "Uno\r\nDos\r\n");
    EXPECT_EQ(static_cast<QPlainTextEdit*>(info->TextInfo[Box::Comments])->toPlainText(),
              "Uno\nDos\n");

    // Enter in the comments gives a new line, one CR in the field.
    auto* comments = static_cast<QPlainTextEdit*>(info->TextInfo[Box::Comments]);
    comments->setFocus();
    comments->moveCursor(QTextCursor::End);
    Type(comments, Qt::Key_T, "T");
    Type(comments, Qt::Key_Return, "\r");
    Type(comments, Qt::Key_R, "r");
    EXPECT_EQ(info->BoxText(Box::Comments), "Uno\r\nDos\r\nT\r\nr");
    EXPECT_EQ(Field(&ArchiveInfo::iComments), "Uno\rDos\rT\rr");
    EXPECT_TRUE(prompt.shown.empty());

    // Pairs already there are shown as they are; the author is cleaned too.
    info->SetBoxText(Box::Author, "A\r\nB");
    info->TextInfo_KeyUp();
    EXPECT_EQ(Field(&ArchiveInfo::iAuthor), "A\rB");
    info->ShowArchiveInfo();
    EXPECT_EQ(info->BoxText(Box::Author), "A\r\nB");
    EXPECT_EQ(Field(&ArchiveInfo::iAuthor), "A\r\nB");
}

TEST_F(InfoTest, GuardarInfoRewritesTheTapeItsFileRowAndTheFileGrid) {
    const Bytes old = OldTape();
    const qint64 f = OpenTape(old);

    info->SetBoxText(Box::Title, "Juego Nuevo");
    info->SetBoxText(Box::Protection, "");
    info->TextInfo_KeyUp();
    info->ComboOrigin->setEditText("Type-In");
    info->ComboOrigin_LostFocus();
    info->ComboLang->setEditText("English");
    info->ComboLang_LostFocus();
    info->CmdTZXSave_Click();

    EXPECT_EQ(Shown(), Texts{Box("Formato de archivo actualizado a la versión 1.13", "",
                                 Icon::Exclamation)});
    // The archive block first, rebuilt; every other block byte for byte.
    const Bytes archive = Archive({{0, "Juego Nuevo"},
                                   {1, "Dinamic"},
                                   {3, "1986"},
                                   {4, "English"},
                                   {8, "Type-In"},
                                   {255, "Uno\rDos\r"}});
    const Bytes expected = Tape({archive, Std(RomHeader(0, "juego")), Std(RomData(40)), Pause(1000),
                                 Group("Nivel"), B({0x22})},
                                1, 13);
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), expected));
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tmp"))), old));
    EXPECT_EQ(info->windowTitle(), "Archivo " + Disk("juego.tzx") + " - versión 1.13");
    EXPECT_EQ(Blocks().front(), "1|Info de archivo|11|" + std::to_string(10 + archive.size()));
    EXPECT_TRUE(info->TZXSaveTag());

    // The row: origin, language cut to three, the schema kept where it was
    // emptied; the file list shows the row as the main window's would.
    EXPECT_EQ(
        Sql(db, "SELECT Origin, IdLang, LoadSchema, FileSize FROM tFiles WHERE FileId = ?", {f}),
        (std::vector<QVariantList>{{"Type-In", "Eng", "Normal", qint64(expected.size())}}));
    EXPECT_EQ(S(FileCell("ColOrigin")), "Type-In");
    EXPECT_EQ(info->GridFiles->CellIcon(1, info->GridFiles->ColumnIndex("ColOrigin")),
              frm.FormatIcon.ItemIndex("OT"));
    EXPECT_EQ(S(FileCell("ColLanguage")), "ENG");
    EXPECT_EQ(S(FileCell("ColLoadSchema")), "Normal");
    EXPECT_EQ(FileCell("ColSize"), QLocale().toString(qint64(expected.size())) + "  ");

    // Closing refills the main window's files and saves the title as it stands.
    EXPECT_TRUE(info->Form_Unload());
    EXPECT_EQ(frm.GridFiles->CellText(1, frm.GridFiles->ColumnIndex("ColOrigin")), "Type-In");
    EXPECT_EQ(Sql(db, "SELECT Name, IdPub, Year, Estado FROM Titles"),
              (std::vector<QVariantList>{{"Juego", 1, "1986", 4}}));
}

TEST_F(InfoTest, ClosingSavesTheTitleWithThePublisherKnownAddedOrRefused) {
    // Known in another case: no question, the text stays as typed.
    OpenTape(OldTape(), "1985", 2);
    info->TextName->setText("Juego \"2\"");
    info->ComboPub->setEditText("ocean");
    info->ListYear->setCurrentIndex(1987 - 1980 + 1);
    info->ComboEstado->setCurrentIndex(5);
    EXPECT_TRUE(info->Form_Unload());
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(Sql(db, "SELECT Name, IdPub, Year, Estado FROM Titles"),
              (std::vector<QVariantList>{{"Juego '2'", 2, "1987", 5}}));
    EXPECT_EQ(S(TitleCell("ColName")), "Juego '2'");
    EXPECT_EQ(S(TitleCell("ColPublisher")), "ocean");
    EXPECT_EQ(S(TitleCell("ColPubId")), "2");
    EXPECT_EQ(S(TitleCell("ColYear")), "1987");
    EXPECT_EQ(S(TitleCell("ColEstado")), "5");
    EXPECT_EQ(frm.GridTitles->CellIcon(frm.GridTitles->SelectedRow(),
                                       frm.GridTitles->ColumnIndex("ColEstado")),
              5);

    // Unknown, and added: the register grows, the box takes the stored name.
    Open("Juego '2'");
    info->ComboPub->setEditText("Topo Soft");
    prompt.Answer(Button::Yes);
    EXPECT_TRUE(info->Form_Unload());
    EXPECT_EQ(Shown(), Texts{agree});
    EXPECT_EQ(Sql(db, "SELECT IdPub, PublisherName FROM Publishers WHERE IdPub = 3"),
              (std::vector<QVariantList>{{3, "Topo Soft"}}));
    EXPECT_EQ(Sql(db, "SELECT IdPub FROM Titles"), (std::vector<QVariantList>{{3}}));
    EXPECT_EQ(S(TitleCell("ColPublisher")), "Topo Soft");

    // Unknown and refused, with the year list emptied: the title keeps its
    // publisher, and neither year nor source is written, while the grid
    // shows both choices.
    prompt.shown.clear();
    Open("Juego '2'");
    info->ComboPub->setEditText("Nadie");
    info->ListYear->setCurrentIndex(0);
    info->ComboEstado->setCurrentIndex(1);
    prompt.Answer(Button::No);
    EXPECT_TRUE(info->Form_Unload());
    EXPECT_EQ(Shown(), Texts{agree});
    EXPECT_EQ(Sql(db, "SELECT Name, IdPub, Year, Estado FROM Titles"),
              (std::vector<QVariantList>{{"Juego '2'", 3, "1987", 5}}));
    EXPECT_EQ(S(info->ComboPub->currentText()), "Topo Soft");
    EXPECT_EQ(S(TitleCell("ColPublisher")), "Topo Soft");
    EXPECT_EQ(S(TitleCell("ColYear")), "");
    EXPECT_EQ(S(TitleCell("ColEstado")), "1");

    // A source without an item keeps what the store holds.
    Sql(db, "UPDATE Titles SET Estado = 6");
    Open("Juego '2'");
    info->ListYear->setCurrentIndex(2);
    EXPECT_TRUE(info->Form_Unload());
    EXPECT_EQ(Sql(db, "SELECT Year, Estado FROM Titles"), (std::vector<QVariantList>{{"1981", 6}}));
}

TEST_F(InfoTest, ClosingWithAPendingTapeAsksAndCancelKeepsTheWindow) {
    const Bytes tape = Tape({Std(RomHeader(0, "juego")), Archive({{0, "Juego"}})}, 1, 13);
    // A copy by arrow, a language chosen or a block removal is as much an
    // edit as a key; a copy that changes nothing isn't.
    OpenTape(tape);
    info->CommandATZX_Click(Box::Title);
    info->ComboLang->setEditText("");
    info->ComboLang_LostFocus();
    EXPECT_TRUE(info->TZXSaveTag());
    for (const std::function<void()>& edit :
         std::vector<std::function<void()>>{[&] { info->CommandATZX_Click(Box::Type); },
                                            [&] {
                                                info->ComboLang->setEditText("German");
                                                info->ComboLang_LostFocus();
                                            },
                                            [&] {
                                                info->GridTZX->SetSelectedRow(1);
                                                info->Command3_Click();
                                            }}) {
        Open("Juego");
        edit();
        EXPECT_FALSE(info->TZXSaveTag());
        prompt.Answer(Button::No);
        EXPECT_TRUE(info->Form_Unload());
    }
    EXPECT_EQ(Shown(), (Texts{question, question, question}));
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), tape));
    prompt.shown.clear();

    Open("Juego");
    info->SetBoxText(Box::Title, "Otro");
    info->TextInfo_KeyUp();
    prompt.Answer(Button::Cancel);
    EXPECT_FALSE(info->Form_Unload());
    EXPECT_EQ(Shown(), Texts{question});
    EXPECT_EQ(info->BoxText(Box::Title), "Otro");
    EXPECT_FALSE(info->TZXSaveTag());
    prompt.Answer(Button::No);
    EXPECT_TRUE(info->Form_Unload());
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), tape));

    prompt.shown.clear();
    Open("Juego");
    info->SetBoxText(Box::Title, "Otro");
    info->TextInfo_KeyUp();
    prompt.Answer(Button::Yes);
    EXPECT_TRUE(info->Form_Unload());
    EXPECT_EQ(Shown(), Texts{question});
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))),
                          Tape({Archive({{0, "Otro"}}), Std(RomHeader(0, "juego"))}, 1, 13)));
}

TEST_F(InfoTest, ANewerVersionRefusedKeepsTheFileAndStoresWhatItHolds) {
    const Bytes tape = Tape({Archive({{0, "Juego"}, {4, "French"}}), Pause(10)}, 1, 21);
    const qint64 f = OpenTape(tape);
    EXPECT_EQ(Shown(), Texts{Box("El archivo TZX indica una versión 1.21. Esta aplicación soporta "
                                 "hasta la revisión 1.20 del formato TZX, por lo que el archivo "
                                 "puede no ser compatible",
                                 "Versión incompatible", Icon::Critical)});
    prompt.shown.clear();
    info->SetBoxText(Box::Title, "Cambiado");
    info->TextInfo_KeyUp();
    prompt.Answer(Button::No);
    info->CmdTZXSave_Click();
    EXPECT_EQ(Shown(), Texts{Box("La versión del archivo es superior a la versión soportada. Si "
                                 "guarda los cambios puede perderse información. ¿Desea "
                                 "continuar?",
                                 "", Icon::Critical, Buttons::YesNo)});
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), tape));
    EXPECT_FALSE(QFile::exists(Disk("juego.tmp")));
    EXPECT_EQ(Sql(db, "SELECT IdLang, Origin, FileSize FROM tFiles WHERE FileId = ?", {f}),
              (std::vector<QVariantList>{{"Fre", "", qint64(tape.size())}}));
    // The edit stays, on screen and in memory, and is still pending.
    EXPECT_EQ(info->BoxText(Box::Title), "Cambiado");
    EXPECT_EQ(Field(&ArchiveInfo::iName), "Cambiado");
    EXPECT_FALSE(info->TZXSaveTag());
    prompt.shown.clear();
    prompt.Answer(Button::Cancel);
    EXPECT_FALSE(info->Form_Unload());
    EXPECT_EQ(Shown(), Texts{question});
}

TEST_F(InfoTest, LongTextsAndAFileRowGoneAreToldBeforeAndAfterSaving) {
    const Bytes tape = Tape({Pause(10)}, 1, 13);
    const qint64 f = OpenTape(tape);
    info->SetBoxText(Box::Author, QString(300, 'a'));
    info->TextInfo_KeyUp();
    const std::string warning =
        Box("El campo Autor tiene más de 255 caracteres; se guardarán los 255 primeros.", "Cintal",
            Icon::Exclamation, Buttons::OkCancel);
    prompt.Answer(Button::Cancel);
    info->CmdTZXSave_Click();
    EXPECT_EQ(Shown(), Texts{warning});
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), tape));
    // Yes on closing, then Cancelar at the warning: the window stays with its edits.
    prompt.Answer(Button::Yes);
    prompt.Answer(Button::Cancel);
    EXPECT_FALSE(info->Form_Unload());
    EXPECT_EQ(Shown(), (Texts{warning, question, warning}));
    EXPECT_EQ(info->BoxText(Box::Author), QString(300, 'a'));
    EXPECT_FALSE(info->TZXSaveTag());

    prompt.shown.clear();
    Sql(db, "DELETE FROM tFiles WHERE FileId = ?", {f});
    info->CmdTZXSave_Click();
    EXPECT_EQ(Shown(), (Texts{warning, Box("El archivo ya no está en el catálogo", "Cintal",
                                           Icon::Information)}));
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))),
                          Tape({Archive({{2, std::string(255, 'a')}}), Pause(10)}, 1, 13)));
}

TEST_F(InfoTest, TextsTheUserDidNotTouchAreWrittenAsTheyWereRead) {
    // Ten lines: 250 bytes on the tape, 260 characters in the box with its pairs.
    std::string comments;
    for (char c = 'a'; c < 'k'; ++c)
        comments += std::string(24, c) + "\r";
    const Bytes tape =
        Tape({Archive({{0, "Juego"}, {2, "Ana\r\nLuis"}, {255, comments}}), Pause(10)}, 1, 13);
    OpenTape(tape);
    EXPECT_EQ(info->BoxText(Box::Comments).size(), 260);
    info->CmdTZXSave_Click();
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), tape));

    // Typing elsewhere leaves the author's pair alone; the comments take
    // characters up to 255 bytes as the tape counts them.
    Type(info->TextInfo[Box::Title], Qt::Key_End, QString());
    auto* box = static_cast<QPlainTextEdit*>(info->TextInfo[Box::Comments]);
    box->setFocus();
    box->moveCursor(QTextCursor::End);
    for (int i = 0; i < 6; ++i)
        Type(box, Qt::Key_X, "x");
    info->CmdTZXSave_Click();
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_TRUE(SameBytes(
        ReadFile(S(Disk("juego.tzx"))),
        Tape({Archive({{0, "Juego"}, {2, "Ana\r\nLuis"}, {255, comments + "xxxxx"}}), Pause(10)}, 1,
             13)));
}

TEST_F(InfoTest, AnotherFileWhileTheTapeIsPendingAsksFirst) {
    const qint64 t = TitleWithId("Juego");
    const qint64 a = File(t, "juego", "tzx");
    const qint64 b = File(t, "copia", "tzx");
    Put("juego.tzx", Tape({Archive({{0, "Juego"}}), Pause(10)}, 1, 13));
    Put("copia.tzx", Tape({Pause(20)}, 1, 13));
    Open("Juego");
    auto rowOf = [&](const char* name) {
        for (int r = 1; r <= info->GridFiles->Rows(); ++r)
            if (info->GridFiles->CellText(r, info->GridFiles->ColumnIndex("ColFileName")) == name)
                return r;
        return 0;
    };
    info->GridFiles->SetSelectedRow(rowOf("juego.tzx"));
    info->SetBoxText(Box::Title, "Nuevo");
    info->TextInfo_KeyUp();

    // Cancelar: the tape and its row stay.
    prompt.Answer(Button::Cancel);
    info->GridFiles->SetSelectedRow(rowOf("copia.tzx"));
    EXPECT_EQ(info->GridFiles->SelectedRow(), rowOf("juego.tzx"));
    EXPECT_EQ(info->TextPath->text(), Disk("juego.tzx"));
    EXPECT_EQ(info->BoxText(Box::Title), "Nuevo");
    EXPECT_FALSE(info->TZXSaveTag());

    // Sí: the open tape and its own row are saved, then the other opens.
    prompt.Answer(Button::Yes);
    info->GridFiles->SetSelectedRow(rowOf("copia.tzx"));
    EXPECT_EQ(Shown(), (Texts{question, question}));
    const Bytes saved = Tape({Archive({{0, "Nuevo"}}), Pause(10)}, 1, 13);
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.tzx"))), saved));
    EXPECT_EQ(Sql(db, "SELECT FileId, FileSize FROM tFiles ORDER BY FileId"),
              (std::vector<QVariantList>{{a, qint64(saved.size())}, {b, 7}}));
    EXPECT_EQ(info->TextPath->text(), Disk("copia.tzx"));
    EXPECT_TRUE(info->TZXSaveTag());
}

TEST_F(InfoTest, TheMainWindowShowsTheTitleAsTheInspectorLeftIt) {
    const qint64 t = TitleWithId("Juego", "1986");
    File(t, "juego", "tzx");
    Put("juego.tzx", OldTape());
    SelectTitle("Juego");
    frm.RunModal = [](QDialog& window) {
        auto& shown = static_cast<Info&>(window);
        shown.TextName->setText("Juego Dos");
        shown.ListYear->setCurrentIndex(1990 - 1980 + 1);
        EXPECT_TRUE(shown.Form_Unload());
    };
    frm.CmdModify_Click();
    EXPECT_EQ(S(TitleCell("ColName")), "Juego Dos");
    EXPECT_EQ(S(TitleCell("ColYear")), "1990");
    EXPECT_EQ(S(frm.LabelNombre->text()), "Juego Dos");
    EXPECT_EQ(S(frm.LabelYear->text()), "1990");
    EXPECT_EQ(S(frm.ComboRegistro->currentText()), "Juego Dos");
}

TEST_F(InfoTest, FilesThatAreNotWholeTapesAreNeverWritten) {
    const qint64 t = TitleWithId("Juego");
    File(t, "juego", "z80");
    File(t, "cortada", "tzx");
    Put("juego.z80", "Z80 snapshot bytes");
    const Bytes cut = Tape({Pause(10), B({0x60, 0x10, 0, 0})}, 1, 13);
    Put("cortada.tzx", cut);
    Open("Juego");
    info->SetBoxText(Box::Title, "Nombre");
    info->TextInfo_KeyUp();
    info->CmdTZXSave_Click(); // the window's guard is bypassed: the engine refuses
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("juego.z80"))), "Z80 snapshot bytes"));
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].icon, Icon::Critical);

    prompt.Answer(Button::No);
    info->GridFiles->SetSelectedRow(2);
    EXPECT_FALSE(info->CmdTZXSave->isEnabled());
    EXPECT_EQ(S(info->CmdTZXSave->toolTip()),
              "La cinta no se leyó entera: bloque desconocido 0x60");
    info->CmdTZXSave_Click();
    EXPECT_TRUE(SameBytes(ReadFile(S(Disk("cortada.tzx"))), cut));
    EXPECT_EQ(Sql(db, "SELECT count(*) FROM tFiles WHERE Origin = 'Original'")[0][0], 2);
}

TEST_F(InfoTest, BlockCommandsChangeTheListInMemoryAndTheSelectionFollows) {
    OpenTape(Tape({Pause(1), Group("G"), Pause(2), B({0x22})}, 1, 13));
    const std::string special = Box("comprobar si es especial");
    Grid* g = info->GridTZX;
    auto kinds = [&] { return Rows(g, {"ColRow", "ColDescr", "ColInicio"}); };

    // At the ends nothing moves and nothing is said.
    g->SetSelectedRow(1);
    info->CommandSube_Click();
    g->SetSelectedRow(4);
    info->CommandBaja_Click();
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_TRUE(info->TZXSaveTag());

    g->SetSelectedRow(1);
    info->CommandBaja_Click();
    info->CommandBaja_Click();
    EXPECT_EQ(g->SelectedRow(), 3);
    EXPECT_EQ(kinds(), (Texts{"1|G|11", "2|Pausa de 2 mseg.|14", "3|Pausa de 1 mseg.|17",
                              "4|      ................... |20"}));
    info->CommandSube_Click();
    EXPECT_EQ(g->SelectedRow(), 2);
    EXPECT_EQ(Shown(), (Texts{special, special, special}));

    // Removing a group start warns and takes that block alone; no selection
    // removes nothing.
    prompt.shown.clear();
    g->SetSelectedRow(1);
    info->Command3_Click();
    EXPECT_EQ(Shown(), Texts{Box("va a eliminar un bloque de tipo \"Inicio de grupo\". Debe "
                                 "eliminar también el correspondiente bloque \"Final de grupo\"")});
    EXPECT_EQ(g->Rows(), 3);
    g->ClearSelection();
    info->Command3_Click();
    EXPECT_EQ(g->Rows(), 3);
    // The moves and the removal wait to be saved like a typed text.
    EXPECT_FALSE(info->TZXSaveTag());

    // Adding: the chosen file lands before the selected block.
    prompt.shown.clear();
    const QString scr = Disk("pantalla.scr");
    test::WriteFile(S(scr), Filler(6912));
    QString offered;
    info->ChooseFile = [&](const QString&, const QString& filter) {
        offered = filter;
        return scr;
    };
    g->SetSelectedRow(2);
    info->AddBlock_Click(Attachment::Screen);
    EXPECT_EQ(offered, "Pantalla (*.scr)");
    EXPECT_EQ(g->Rows(), 4);
    EXPECT_EQ(S(g->CellText(2, g->ColumnIndex("ColTipoBloque"))), "Info personalizada");
    EXPECT_EQ(info->Logic().Tape().Blocks().Item(2)->Data(),
              Custom("Spectrum Screen ", B({0, 0}) + Filler(6912)));

    // Cancel adds nothing; a name the engine wouldn't take is refused aloud.
    info->ChooseFile = [](const QString&, const QString&) { return QString(); };
    info->AddBlock_Click(Attachment::Picture);
    const QString upper = Disk("PANTALLA.SCR");
    test::WriteFile(S(upper), Filler(10));
    info->ChooseFile = [&](const QString&, const QString&) { return upper; };
    info->AddBlock_Click(Attachment::Screen);
    info->ChooseFile = [&](const QString&, const QString&) { return Disk("no-esta.jpg"); };
    info->AddBlock_Click(Attachment::Picture);
    EXPECT_EQ(g->Rows(), 4);
    EXPECT_EQ(
        Shown(),
        (Texts{Box("No se puede añadir " + S(upper) +
                       ": sólo se admiten archivos gif, jpg, jpeg, scr, zed y txt, con la "
                       "extensión en minúsculas",
                   "Cintal", Icon::Exclamation),
               Box("No se puede añadir " + S(Disk("no-esta.jpg")) + ": no se puede leer el archivo",
                   "Cintal", Icon::Exclamation)}));
}

TEST_F(InfoTest, ArrowsCopyOneFieldBetweenThePanes) {
    OpenTape(
        Tape({Archive({{0, "Cinta"}, {1, "Ocean"}, {3, "1984"}, {5, "Arcade"}, {255, "a\rb"}})}, 1,
             13),
        "1990");

    for (auto index : {Box::Title, Box::Publisher, Box::Year, Box::Type})
        info->CommandaDB_Click(index);
    EXPECT_EQ(info->TextName->text(), "Cinta");
    EXPECT_EQ(info->ComboPub->currentText(), "Ocean");
    EXPECT_EQ(info->ListYear->currentText(), "1984");
    EXPECT_EQ(info->ComboTipo->currentText(), "Arcade");
    info->SetBoxText(Box::Year, "1970");
    info->CommandaDB_Click(Box::Year);
    EXPECT_EQ(Shown(), Texts{Box("El año 1970 no está en la lista", "Cintal", Icon::Information)});
    EXPECT_EQ(info->ListYear->currentText(), "1984");

    info->TextName->setText("Nombre");
    info->ComboPub->setEditText("Dinamic");
    info->ListYear->setCurrentIndex(1);
    info->ComboTipo->setEditText("Puzzle");
    for (auto index : {Box::Title, Box::Publisher, Box::Year, Box::Type})
        info->CommandATZX_Click(index);
    EXPECT_EQ(Field(&ArchiveInfo::iName), "Nombre");
    EXPECT_EQ(Field(&ArchiveInfo::iPublisher), "Dinamic");
    EXPECT_EQ(Field(&ArchiveInfo::iYear), "1980");
    EXPECT_EQ(Field(&ArchiveInfo::iType), "Puzzle");
    // The copy keeps the boxes' line ends, and waits to be saved.
    EXPECT_EQ(Field(&ArchiveInfo::iComments), "a\r\nb");
    EXPECT_FALSE(info->TZXSaveTag());
}

TEST_F(InfoTest, ThePreviewFollowsTheBlockAndExtraerSavesItsContent) {
    OpenTape(Tape({Std(RomHeader(3, "Pantalla")), Std(RomData(6912)), Pause(10), Std(RomData(20))},
                  1, 13));
    EXPECT_FALSE(info->CommandExtraer->isEnabled());
    info->GridTZX->SetSelectedRow(2);
    EXPECT_EQ(S(info->LabelContenido->text()), "Pantalla, 6912 bytes, suma errónea");
    EXPECT_EQ(info->PreviewStack->currentWidget(), info->ScrPreview);
    EXPECT_FALSE(info->ScrPreview->Image().isNull());
    EXPECT_TRUE(info->CommandExtraer->isEnabled());
    info->GridTZX->SetSelectedRow(3);
    EXPECT_FALSE(info->CommandExtraer->isEnabled());
    EXPECT_EQ(info->LabelContenido->text(), "");
    info->GridTZX->SetSelectedRow(4);
    EXPECT_EQ(info->PreviewStack->currentWidget(), info->TextPreview);
    EXPECT_EQ(S(info->TextPreview->toPlainText().section('\n', 0, 0)),
              "0000  00 25 4A 6F 94 B9 DE 03 28 4D 72 97 BC E1 06 2B  .%Jo....(Mr....+");

    // Extraer proposes "<tape>-<block>.<ext>" beside the tape and never
    // replaces a file without asking.
    QString offered;
    info->ChooseSaveFile = [&](const QString& proposed) {
        offered = proposed;
        return proposed;
    };
    info->GridTZX->SetSelectedRow(2);
    info->CommandExtraer_Click();
    EXPECT_EQ(offered, Disk("juego-2.scr"));
    EXPECT_EQ(ReadFile(S(offered)), Filler(6912));
    EXPECT_EQ(Shown(),
              Texts{Box("Bloque 2 guardado en " + S(offered), "Extraer", Icon::Information)});
    prompt.shown.clear();
    test::WriteFile(S(offered), "otra cosa");
    prompt.Answer(Button::No);
    info->CommandExtraer_Click();
    EXPECT_EQ(ReadFile(S(offered)), "otra cosa");
    prompt.Answer(Button::Yes);
    info->CommandExtraer_Click();
    EXPECT_EQ(ReadFile(S(offered)), Filler(6912));
    const std::string ask = Box("Ya existe " + S(offered) + ". ¿Desea reemplazarlo?", "Extraer",
                                Icon::Exclamation, Buttons::YesNo);
    EXPECT_EQ(
        Shown(),
        (Texts{ask, ask, Box("Bloque 2 guardado en " + S(offered), "Extraer", Icon::Information)}));
}

} // namespace
} // namespace cintal::test
