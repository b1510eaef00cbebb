// The options window and the emulator launch: what lands in the settings,
// what the window shows, and what a double click on a file starts.

#include "../catalogue/CatalogueFixture.h"
#include "catalogue/Settings.h"
#include "maintenance/frmConfig.h"
#include "platform/Shell.h"
#include "tape/Prompt.h"
#include "views/Principal.h"

#include <QFile>

namespace cintal::test {
namespace {

class ConfigTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Shell::Set(&shell);
    }
    void TearDown() override {
        Shell::Set(nullptr);
        CatalogueTest::TearDown();
    }
    // An executable file in the scratch folder.
    QString Program(const QString& name, bool executable = true) {
        const QString path = dir.filePath(name);
        WriteFile(path, "#!/bin/sh\n");
        if (executable)
            QFile(path).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }
    static QString Get(const QString& key, const QString& def = "<nada>") {
        return GetSetting("Emulador", key, def);
    }
    std::vector<std::string> Entries(QListWidget* list) {
        std::vector<std::string> out;
        for (int i = 0; i < list->count(); ++i)
            out.push_back(S(list->item(i)->text()));
        return out;
    }

    RecordingShell shell;
    ScriptedPrompt prompt;
    PromptScope scope{prompt};
};

TEST_F(ConfigTest, LoadingShowsTheStoredChoicesAndNoInstaladoForMissingPaths) {
    const QString spin = Program("ZXSpin");
    SaveSetting("Emulador", "SpinPath", spin);
    SaveSetting("Emulador", "RealSpectrumPath", "/no/existe/realspec");
    SaveSetting("Emulador", "Fmt2", "Spin");
    // The two spellings of VBSpec's key are one value.
    SaveSetting("Emulador", "vbspecPath", spin);
    frmConfig w;
    EXPECT_EQ(S(w.windowTitle()), "Form1");
    EXPECT_EQ(Entries(w.List1), (std::vector<std::string>{"Es.pectrum", "Spectaculator", "Spin",
                                                          "VBSpecem", "RealSectrum"}));
    EXPECT_EQ(Entries(w.List2), (std::vector<std::string>{"No instalado", "No instalado", S(spin),
                                                          S(spin), "No instalado"}));
    EXPECT_EQ(S(Get("VBSpecPath")), S(spin));
    // A stored path that is gone keeps its setting.
    EXPECT_EQ(S(Get("RealSpectrumPath")), "/no/existe/realspec");
    EXPECT_EQ(S(w.Combo2->currentText()), "");
    EXPECT_EQ(S(w.Combo1[2]->currentText()), "Spin");
    EXPECT_EQ(S(w.Combo1[0]->currentText()), "Por defecto");
    EXPECT_EQ(w.Combo1[7]->count(), 6);
    EXPECT_EQ(S(w.CmdLimpiaFiles->text()), "Borra archivos inexistentes");
}

TEST_F(ConfigTest, ChoicesStartAtTheStoredPathAndStoreOnlyExistingFiles) {
    const QString spin = Program("ZXSpin");
    SaveSetting("Emulador", "SpinPath", spin);
    frmConfig w;
    QStringList asked;
    QString answer = "espectrum.exe"; // a cancelled dialog gives the bare name
    w.CommonDialog1 = [&](const QString& start, const QString& name, const QString& filter) {
        asked << start + "|" + name + "|" + filter;
        return answer;
    };
    w.List2_DblClick(0);
    EXPECT_EQ(S(Get("Es.pectrumPath")), "<nada>");
    EXPECT_EQ(S(w.List2->item(0)->text()), "No instalado");

    answer = Program("espectrum");
    w.List2_DblClick(0);
    EXPECT_EQ(S(Get("Es.pectrumPath")), S(answer));
    EXPECT_EQ(S(w.List2->item(0)->text()), S(answer));
    w.List2_DblClick(0);
    EXPECT_EQ(asked, (QStringList{"No instalado|espectrum.exe|Ejecutable (*)",
                                  "No instalado|espectrum.exe|Ejecutable (*)",
                                  answer + "|espectrum.exe|Ejecutable (*)"}));

    // The default and the emulator of each format.
    w.Combo2->setCurrentText("RealSpectrum");
    w.Combo2_Click();
    EXPECT_EQ(S(Get("DefaultEmul")), "RealSpectrum");
    EXPECT_EQ(S(Get("DefaultEmulPath")), "No instalado");
    w.Combo2->setCurrentText("Spin");
    w.Combo2_Click();
    EXPECT_EQ(S(Get("DefaultEmulPath")), S(spin));
    EXPECT_EQ(S(Comunes::EmulPath), S(spin));

    w.Combo1[3]->setCurrentText("Spectaculator");
    w.Combo1_Click(3);
    EXPECT_EQ(S(Get("Fmt3")), "Spectaculator");
    frmConfig again;
    EXPECT_EQ(S(again.Combo1[3]->currentText()), "Spectaculator");
    EXPECT_EQ(S(again.Combo2->currentText()), "Spin");
}

TEST_F(ConfigTest, OpeningAFileStartsTheEmulatorOfItsFormatElseTheDefaultElseTheAssociation) {
    const QString spin = Program("ZXSpin"), spec = Program("Spectaculator");
    const QString notRunnable = Program("realspec", false);
    SaveSetting("Emulador", "SpinPath", spin);
    SaveSetting("Emulador", "SpectaculatorPath", spec);
    SaveSetting("Emulador", "RealSpectrumPath", notRunnable);

    // Nothing chosen: the association.
    EXPECT_TRUE(Emulators::OpenFile("/c/juego uno.tzx"));
    EXPECT_EQ(shell.calls, QStringList{"/c/juego uno.tzx"});
    EXPECT_TRUE(shell.starts.isEmpty());

    Emulators::SetDefault("Spectaculator");
    Emulators::SetForFormat(2, "Spin");
    Emulators::SetForFormat(1, "RealSpectrum");
    Emulators::OpenFile("/c/a b.Z80");
    Emulators::OpenFile("/c/c.tzx");
    Emulators::OpenFile("/c/d.tap"); // its emulator can't run: the default
    Emulators::OpenFile("/c/e.txt");
    EXPECT_EQ(shell.starts, (QStringList{spin + "|/c/a b.Z80", spec + "|/c/c.tzx",
                                         spec + "|/c/d.tap", spec + "|/c/e.txt"}));

    // A start that fails is told, then the association is tried.
    shell.calls.clear();
    shell.startResult = false;
    shell.startReason = "sin permiso";
    Emulators::OpenFile("/c/f.sna");
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "No se puede iniciar " + S(spec) + ": sin permiso");
    EXPECT_EQ(shell.calls, QStringList{"/c/f.sna"});

    // The default's executable gone: the association, without a word.
    prompt.shown.clear();
    shell.starts.clear();
    shell.calls.clear();
    QFile::remove(spec);
    Emulators::OpenFile("/c/g.tzx");
    EXPECT_TRUE(shell.starts.isEmpty());
    EXPECT_EQ(shell.calls, QStringList{"/c/g.tzx"});
    EXPECT_TRUE(prompt.shown.empty());
}

// Opciones from the main window, and its purge button over a real catalogue.
TEST_F(ConfigTest, OpcionesOpensTheWindowWhosePurgeAsksFirst) {
    Create();
    Path(1, dir.path());
    Title("Juego", "1985", 0, "", 1, 0);
    Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, 'ya', 'tzx', "
            "1), (1, 'no', 'tzx', 1)");
    WriteFile(dir.filePath("ya.tzx"), "x");
    Principal frm;
    ASSERT_TRUE(frm.Form_Load(db));
    prompt.shown.clear();
    bool opened = false;
    frm.RunModal = [&](QDialog& d) {
        opened = true;
        auto& w = static_cast<frmConfig&>(d);
        EXPECT_EQ(S(w.windowTitle()), "Form1");
        prompt.Answer(Button::Ok);
        prompt.Answer(Button::Yes);
        w.CmdLimpiaFiles->click();
    };
    frm.Command7->trigger();
    EXPECT_TRUE(opened);
    std::vector<std::string> texts;
    for (const Message& m : prompt.shown)
        texts.push_back(m.text);
    EXPECT_EQ(texts, (std::vector<std::string>{
                         "esto borrará las referencias a archivos inexistentes",
                         "Hay 1 referencias a archivos que no están en el disco, de 2. ¿Borrarlas?",
                         "acabado: 1 referencias borradas"}));
    EXPECT_EQ(Sql(db, "SELECT FileName FROM tFiles")[0][0].toString(), "ya");
    EXPECT_EQ(Sql(db, "SELECT count(*) FROM tFiles")[0][0].toInt(), 1);
}

} // namespace
} // namespace cintal::test
