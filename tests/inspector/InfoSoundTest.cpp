// The sound of the open tape from the inspector: the WAV beside the tape,
// never over a file without asking, and playing where there is no sound.

#include "WindowFixture.h"
#include "inspector/Info.h"
#include "inspector/TapeSound.h"

#include <QDir>
#include <QLabel>

namespace cintal::test {
namespace {

class InfoSoundTest : public WindowTest {
protected:
    // The inspector open on "juego.tzx", the one file of its title.
    void Open(const Bytes& tape) {
        Title("Juego", "1986", 1, "Arcade", 1, 4);
        Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt, Origin, "
                "IdLang, LoadSchema, FileSize) VALUES (1, 'juego', 'tzx', 1, 1, 'Original', 'spa', "
                "'Normal', 7)");
        tapePath = S(Disk("juego.tzx"));
        test::WriteFile(tapePath, tape);
        SelectTitle("Juego");
        info = std::make_unique<Info>(frm.GridTitles, frm.GridFiles);
        info->Form_Load();
    }

    std::string tapePath;
    std::unique_ptr<Info> info;
};

TEST_F(InfoSoundTest, ExportarWavWritesBesideTheTapeAndPlayingNeedsASoundOutput) {
    Open(Tape({raw::PureTone(3500, 1000), raw::Pause(1000)}));
    TapeSound& sound = *info->Sound;
    QString offered;
    sound.ChooseSaveFile = [&](const QString& proposed) {
        offered = proposed;
        return proposed;
    };
    sound.CommandWav->click();
    const std::string wav = tapePath.substr(0, tapePath.size() - 3) + "wav";
    EXPECT_EQ(S(offered), wav);
    // Two seconds at 44,100 samples of 2 bytes.
    EXPECT_EQ(ReadFile(wav).size(), 44u + 4 * 44100);
    const std::string saved =
        Box("Sonido de la cinta guardado en " + wav, "Exportar WAV", Icon::Information);
    const std::string ask = Box("Ya existe " + wav + ". ¿Desea reemplazarlo?", "Exportar WAV",
                                Icon::Exclamation, Buttons::YesNo);
    test::WriteFile(wav, "mio");
    prompt.Answer(Button::No);
    sound.CommandWav->click();
    EXPECT_EQ(ReadFile(wav), "mio");
    prompt.Answer(Button::Yes);
    sound.CommandWav->click();
    EXPECT_EQ(ReadFile(wav).size(), 44u + 4 * 44100);
    EXPECT_EQ(Shown(), (Texts{saved, ask, ask, saved}));

    Forget();
    sound.Player.HasOutput = [] { return false; };
    sound.CommandPlay->click();
    EXPECT_EQ(Shown(), Texts{Box("No hay ninguna salida de sonido en este equipo.", "Reproducir",
                                 Icon::Exclamation)});
    EXPECT_EQ(S(sound.CommandPlay->text()), "Reproducir");
    EXPECT_FALSE(sound.Player.Playing());

    // While it plays, only the block sounding is marked, and the clock runs.
    Grid& list = *info->GridTZX;
    const QColor plain = list.palette().color(QPalette::Base), marked(255, 236, 160);
    emit sound.Player.Progress(0, 1000, 4000);
    emit sound.Player.Progress(1, 2500, 4000);
    EXPECT_EQ(list.CellBackColor(1, 4), plain);
    EXPECT_EQ(list.CellBackColor(2, 4), marked);
    EXPECT_EQ(S(sound.LabelTime->text()), "0:02 / 0:04");
    emit sound.Player.Finished();
    EXPECT_EQ(list.CellBackColor(2, 4), plain);
    EXPECT_EQ(S(sound.LabelTime->text()), "");
}

} // namespace
} // namespace cintal::test
